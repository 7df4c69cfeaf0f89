# GoogleTest, and how its tests are run.

if(NOT KORVANEJSON_BUILD_TESTS)
  return()
endif()

if(CMAKE_CROSSCOMPILING)
  # There is no package with GoogleTest for the cross compiler: it is compiled from the packaged sources.
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

# On Windows programs need the compiler's runtime beside them.
include(CompilerRuntime)
if(KORVANEJSON_RUNTIME_LIBRARIES)
  file(COPY ${KORVANEJSON_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()

if(CMAKE_CROSSCOMPILING AND KORVANEJSON_WINE_PREFIX AND NOT EXISTS "${KORVANEJSON_WINE_PREFIX}/system.reg")
  # Making a new prefix takes seconds: longer than the discovery of tests waits.
  get_filename_component(prefix_parent "${KORVANEJSON_WINE_PREFIX}" DIRECTORY)
  file(MAKE_DIRECTORY "${prefix_parent}")
  execute_process(COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} wineboot -i
    OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE wineboot_status)
  if(NOT wineboot_status EQUAL 0)
    message(FATAL_ERROR "Wine could not make its prefix in ${KORVANEJSON_WINE_PREFIX}: wineboot ended with "
      "${wineboot_status}. Is the package wine64 installed?")
  endif()
endif()

# Under the thread sanitizer only these programs are built and run.
add_custom_target(thread-tests)

# The runtime of clang's thread sanitizer finds no room in memory if the kernel randomizes addresses widely. Programs
# are started without that randomization where the machine allows it.
set(_korvanejson_test_launcher)
if(KORVANEJSON_SANITIZE MATCHES "thread")
  find_program(KORVANEJSON_SETARCH setarch)
  if(KORVANEJSON_SETARCH)
    execute_process(COMMAND ${KORVANEJSON_SETARCH} --addr-no-randomize true
      RESULT_VARIABLE setarch_status OUTPUT_QUIET ERROR_QUIET)
    if(setarch_status EQUAL 0)
      set(_korvanejson_test_launcher ${KORVANEJSON_SETARCH} --addr-no-randomize)
    endif()
  endif()
endif()

if(CMAKE_CROSSCOMPILING)
  set(_korvanejson_test_launcher "${PROJECT_SOURCE_DIR}/cmake/start-under-wine" ${CMAKE_CROSSCOMPILING_EMULATOR})
endif()

# What all programs of tests are compiled with.
function(_korvanejson_test_options target)
  korvanejson_configure(${target})
  if(NOT MSVC)
    # What is tested is optimised; the tests themselves compile in half the time when they are not.
    target_compile_options(${target} PRIVATE -O0)
  endif()
  if(KORVANEJSON_SANITIZE MATCHES "undefined")
    # The libraries are what is looked at. Addresses are watched everywhere, or mistakes would go unnoticed there.
    target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
  endif()
endfunction()

# A GoogleTest program and its tests:
# korvanejson_test(<program> SOURCES <files>... [LIBRARIES <targets>...] [INSIDE [EXCHANGE]] [ANSI] [DOCUMENTS]
#   [THREADS])
# INSIDE links the tests with the objects of the library instead of the library itself, so that they can use what it
# does not export; with EXCHANGE those of KorvaneExchange as well. ANSI leaves the code page of Windows at the system's
# own instead of UTF-8. DOCUMENTS lets the tests save the documents that they make (support/Documents.h), and the test
# documents.schema then checks these. THREADS gives the tests the label threads: the preset linux-tsan runs them.
function(korvanejson_test target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "INSIDE;EXCHANGE;ANSI;DOCUMENTS;THREADS" "" "SOURCES;LIBRARIES")
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  _korvanejson_test_options(${target})
  if(WIN32)
    # The macros of this header are not for the sources behind it.
    file(GLOB_RECURSE sources "*.cpp")
    foreach(source IN LISTS sources)
      file(STRINGS "${source}" includes REGEX "^#include <windows\\.h>")
      if(includes)
        set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
      endif()
    endforeach()
  endif()
  if(arg_INSIDE)
    target_sources(${target} PRIVATE
      $<TARGET_OBJECTS:KorvaneJsonObjects> $<TARGET_OBJECTS:KorvaneJsonConverters>)
    if(arg_EXCHANGE)
      target_sources(${target} PRIVATE $<TARGET_OBJECTS:KorvaneExchangeObjects>)
      target_compile_definitions(${target} PRIVATE KORVANEEXCHANGE_BUILD)
    endif()
    target_compile_definitions(${target} PRIVATE KORVANEJSON_BUILD)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/include")
    if(WIN32)
      target_link_libraries(${target} PRIVATE Korvane::PimuUtil)
    endif()
  endif()
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
  set(labels)
  if(arg_THREADS)
    add_dependencies(thread-tests ${target})
    list(APPEND labels LABELS threads)
  endif()
  if(_korvanejson_test_launcher)
    set_target_properties(${target} PROPERTIES CROSSCOMPILING_EMULATOR "${_korvanejson_test_launcher}")
  endif()
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 120
    WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
    PROPERTIES ${fixtures} ${labels})
endfunction()
