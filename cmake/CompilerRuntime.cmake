# The shared runtime of the compiler, for the programs and packages that need it beside them:
# KORVANEJSON_RUNTIME_LIBRARIES holds its files, none where the system has a runtime of its own.
# They are copies in the build tree, without the symbols and debug information, which are nine tenths of the originals.

include_guard()
set(KORVANEJSON_RUNTIME_LIBRARIES)
if(MINGW)
  get_filename_component(_compiler_folder "${CMAKE_CXX_COMPILER}" DIRECTORY)
  set(_runtime_folder "${PROJECT_BINARY_DIR}/compiler-runtime")
  file(MAKE_DIRECTORY "${_runtime_folder}")
  foreach(_library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_library}
      OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${_path}")
      # The compiler prints only the name if its libraries are in its own folder, as they are on Windows.
      set(_path "${_compiler_folder}/${_library}")
    endif()
    file(REAL_PATH "${_path}" _path)
    if(NOT EXISTS "${_path}")
      message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${_library}: it must be a compiler with POSIX threads and "
        "SEH exceptions")
    endif()
    # Also true if there is no copy yet.
    if("${_path}" IS_NEWER_THAN "${_runtime_folder}/${_library}")
      execute_process(COMMAND ${CMAKE_STRIP} -o "${_runtime_folder}/${_library}" "${_path}"
        COMMAND_ERROR_IS_FATAL ANY)
    endif()
    list(APPEND KORVANEJSON_RUNTIME_LIBRARIES "${_runtime_folder}/${_library}")
  endforeach()
endif()
