# Settings for every target of this project.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs find their libraries beside them, on Windows and everywhere else.
set(KORVANEJSON_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}" CACHE PATH
  "Where programs and libraries are built; the packages for Debian can be made of those in another build tree")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${KORVANEJSON_OUTPUT_DIRECTORY}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${KORVANEJSON_OUTPUT_DIRECTORY}/bin")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${KORVANEJSON_OUTPUT_DIRECTORY}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# An installation in the system's own folders is not moved, and the system finds its libraries.
set(KORVANEJSON_SYSTEM_PREFIX OFF)
if(NOT WIN32 AND CMAKE_INSTALL_PREFIX MATCHES "^/usr/?$")
  set(KORVANEJSON_SYSTEM_PREFIX ON)
endif()

# Elsewhere installed programs and libraries look for their libraries relative to themselves.
if(NOT WIN32 AND NOT KORVANEJSON_SYSTEM_PREFIX)
  file(RELATIVE_PATH _korvanejson_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/${_korvanejson_libraries}")
endif()

if(WIN32)
  # The suite's libraries have plain names: KorvaneJson.dll, without "lib" in front.
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
endif()

if(MSVC)
  # Constant conditions (4127) are how this code tells one platform's wide characters from another's. Exported classes
  # have members and bases of the C++ runtime (4251, 4275), which libraries and hosts share.
  set(_korvanejson_warnings /W4 /wd4127 /wd4251 /wd4275 /permissive- /utf-8 /Zc:__cplusplus /bigobj)
  set(_korvanejson_werror /WX)
else()
  set(_korvanejson_warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  set(_korvanejson_werror -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # gcc 12 sees overlapping copies in std::string's own operator+ where there are none.
    list(APPEND _korvanejson_warnings -Wno-restrict)
  endif()
endif()

# The SONAMEs end in the version for which an interface stays compatible: the minor version while the major one is 0,
# the major version later.
set(KORVANEJSON_SOVERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
  string(APPEND KORVANEJSON_SOVERSION .${PROJECT_VERSION_MINOR})
endif()

# Warnings and sanitizers for a target of this project.
function(korvanejson_configure target)
  # For C++ only: the compiler of Windows resources does not know these options.
  target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${_korvanejson_warnings}>")
  if(CMAKE_UNITY_BUILD)
    # What has the name of something in another source shadows nothing, and to GCC every source is a header.
    set(wrong -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${wrong}>")
  endif()
  if(KORVANEJSON_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${_korvanejson_werror}>")
  endif()
  if(KORVANEJSON_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${KORVANEJSON_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${KORVANEJSON_SANITIZE})
  endif()
  file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  if(KORVANEJSON_BUILD_FUZZ AND NOT folder MATCHES "^(tests|fuzz)")
    # Without this fuzzers would not see which ways through the libraries their inputs take.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
  endif()
  if(MSVC)
    # Using functions of the C standard is not a mistake.
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
  endif()
endfunction()

# Installs a library, as part of the targets with the namespace, and headers into a folder of their own.
# On Debian each of the components libraries, development and program becomes a package.
function(korvanejson_install target namespace folder)
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${KORVANEJSON_SOVERSION})
  install(TARGETS ${target} EXPORT ${namespace}Targets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT libraries
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT development)
  list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  set_property(GLOBAL APPEND PROPERTY KORVANEJSON_INSTALLED_HEADERS ${ARGN})
endfunction()

# A shared library of the platform:
# korvanejson_platform_library(<target> DEFINE <macro> [FOLDER <name>] SOURCES <files>... [HEADERS <files>...])
# <macro> is defined while the library itself is compiled (its header then exports instead of imports).
# Headers are in the library's source folder and are included by their plain names, as in the suite. With FOLDER the
# library is installed, and its HEADERS into the folder of that name.
function(korvanejson_platform_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DEFINE;FOLDER" "SOURCES;HEADERS")
  add_library(${target} SHARED ${arg_SOURCES})
  target_compile_definitions(${target} PRIVATE ${arg_DEFINE})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  korvanejson_configure(${target})
  if(arg_FOLDER)
    target_include_directories(${target} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/${arg_FOLDER}>)
    if(arg_FOLDER STREQUAL libjson)
      set(namespace libjson)
    else()
      set(namespace Korvane)
    endif()
    korvanejson_install(${target} ${namespace} ${arg_FOLDER} ${arg_HEADERS})
  endif()
endfunction()

# Compiles and links a target against the platform libraries that the product's interface and sources name.
function(korvanejson_use_platform target)
  target_link_libraries(${target} PUBLIC Korvane::Korvane Korvane::orsutl libjson::libjson)
  if(WIN32)
    # The warning of an unload, which only Windows has.
    target_link_libraries(${target} PRIVATE Korvane::PimuUtil)
  endif()
endfunction()

# Exports only what is in the version script (ELF) or marked for export (Windows). Otherwise instantiations of templates
# would be exported too.
function(korvanejson_export_only target version_script)
  if(NOT WIN32)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${version_script}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${version_script}")
  endif()
endfunction()

# Keeps a library loaded until the process ends, even if somebody closes it. On Windows its entry point does that.
function(korvanejson_never_unload target)
  if(NOT WIN32)
    target_link_options(${target} PRIVATE LINKER:-z,nodelete)
  endif()
endfunction()

# The manifest that makes UTF-8 the code page of a Windows program; nothing elsewhere.
function(korvanejson_utf8_code_page target)
  if(MSVC)
    # Its linker makes a manifest for every program, and merges this one into it.
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/utf8-code-page.manifest")
  elseif(WIN32)
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/utf8-code-page.rc")
  endif()
endfunction()
