# GoogleTest and what its tests run under.

if(NOT KORVANEJSON_BUILD_TESTS)
  return()
endif()

if(CMAKE_CROSSCOMPILING)
  # No package holds GoogleTest for the cross compiler: it is compiled from the packaged sources.
  set(INSTALL_GTEST OFF)
  set(BUILD_GMOCK OFF)
  add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
  if(NOT TARGET GTest::gtest_main)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# Programs run beside the compiler's runtime on Windows.
if(MINGW)
  foreach(runtime libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
      OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    file(COPY "${path}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}" FOLLOW_SYMLINK_CHAIN)
  endforeach()
endif()

if(CMAKE_CROSSCOMPILING AND KORVANEJSON_WINE_PREFIX AND NOT EXISTS "${KORVANEJSON_WINE_PREFIX}/system.reg")
  # A cold prefix takes seconds to make: longer than the discovery of tests waits.
  get_filename_component(prefix_parent "${KORVANEJSON_WINE_PREFIX}" DIRECTORY)
  file(MAKE_DIRECTORY "${prefix_parent}")
  execute_process(COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} wineboot -i
    OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE wineboot_status)
  if(NOT wineboot_status EQUAL 0)
    message(FATAL_ERROR "Wine could not make its prefix in ${KORVANEJSON_WINE_PREFIX}: wineboot ended with "
      "${wineboot_status}. Is the package wine64 installed?")
  endif()
endif()

# A GoogleTest program and its tests:
# korvanejson_test(<program> SOURCES <files>... [LIBRARIES <targets>...] [ANSI] [DOCUMENTS])
# ANSI leaves the code page of Windows at the system's own instead of UTF-8. DOCUMENTS lets the tests keep the
# documents that they make (support/Documents.h), which the test documents.schema then checks.
function(korvanejson_test target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "ANSI;DOCUMENTS" "" "SOURCES;LIBRARIES")
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  korvanejson_configure(${target})
  if(NOT arg_ANSI)
    korvanejson_utf8_code_page(${target})
  endif()
  set(fixtures)
  if(CMAKE_CROSSCOMPILING)
    list(APPEND fixtures FIXTURES_REQUIRED wine)
  endif()
  if(arg_DOCUMENTS)
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/Documents.cpp")
    target_compile_definitions(${target} PRIVATE
      "KORVANEJSON_DOCUMENTS=\"${PROJECT_BINARY_DIR}/documents/${target}\"")
    list(APPEND fixtures FIXTURES_SETUP documents DEPENDS documents.empty)
  endif()
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 120
    WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
    PROPERTIES TIMEOUT 300 ${fixtures})
endfunction()
