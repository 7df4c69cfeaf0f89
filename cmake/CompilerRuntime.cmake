# The shared runtime of the compiler, for the programs and packages that need it beside them:
# KORVANEJSON_RUNTIME_LIBRARIES holds its files, none where the system has a runtime of its own.

include_guard()
set(KORVANEJSON_RUNTIME_LIBRARIES)
if(MINGW)
  get_filename_component(_compiler_folder "${CMAKE_CXX_COMPILER}" DIRECTORY)
  foreach(_library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_library}
      OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${_path}")
      # The compiler answers with the bare name where its libraries stand beside itself, as they do on Windows.
      set(_path "${_compiler_folder}/${_library}")
    endif()
    file(REAL_PATH "${_path}" _path)
    if(NOT EXISTS "${_path}")
      message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${_library}: it must be a compiler with POSIX threads and "
        "SEH exceptions")
    endif()
    list(APPEND KORVANEJSON_RUNTIME_LIBRARIES "${_path}")
  endforeach()
endif()
