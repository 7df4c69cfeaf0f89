# SQLite 3, which the program uses for project files and the server's database: the target SQLite::SQLite3, with the
# version KORVANEJSON_SQLITE_VERSION.
#
# It is built from the folder KORVANEJSON_SQLITE_SOURCE if one is given, as in the preset windows. Otherwise an
# installed package is used.

set(KORVANEJSON_SQLITE_SOURCE "" CACHE PATH
  "A folder with SQLite's sqlite3.c and sqlite3.h, to build SQLite from instead of an installed one")

# The first version whose schema table is called sqlite_schema.
set(_sqlite_oldest 3.33)

if(NOT KORVANEJSON_SQLITE_SOURCE)
  find_package(SQLite3 ${_sqlite_oldest} QUIET GLOBAL)
  if(NOT SQLite3_FOUND)
    message(FATAL_ERROR "korvane-json needs SQLite ${_sqlite_oldest} or later, which was not found. Install it (Debian: "
      "libsqlite3-dev), or set KORVANEJSON_SQLITE_SOURCE to a folder with SQLite's sqlite3.c and sqlite3.h, or set "
      "KORVANEJSON_BUILD_PROGRAM to OFF to build the library without the program.")
  endif()
  set(KORVANEJSON_SQLITE_VERSION "${SQLite3_VERSION}")
  return()
endif()

foreach(_file sqlite3.c sqlite3.h)
  if(NOT EXISTS "${KORVANEJSON_SQLITE_SOURCE}/${_file}")
    message(FATAL_ERROR "korvane-json needs SQLite, and ${KORVANEJSON_SQLITE_SOURCE} has no ${_file}. On Linux "
      "'./dev sqlite' puts SQLite's source into build/sqlite, where the preset windows expects it. "
      "KORVANEJSON_SQLITE_SOURCE is the folder with sqlite3.c and sqlite3.h. Without the program, with "
      "KORVANEJSON_BUILD_PROGRAM set to OFF, the library needs no SQLite.")
  endif()
endforeach()
file(STRINGS "${KORVANEJSON_SQLITE_SOURCE}/sqlite3.h" KORVANEJSON_SQLITE_VERSION REGEX "^#define SQLITE_VERSION +\"")
string(REGEX REPLACE "^.*\"(.*)\".*$" "\\1" KORVANEJSON_SQLITE_VERSION "${KORVANEJSON_SQLITE_VERSION}")
if(NOT KORVANEJSON_SQLITE_VERSION VERSION_GREATER_EQUAL _sqlite_oldest)
  message(FATAL_ERROR "korvane-json needs SQLite ${_sqlite_oldest} or later, and the folder KORVANEJSON_SQLITE_SOURCE "
    "${KORVANEJSON_SQLITE_SOURCE} holds SQLite ${KORVANEJSON_SQLITE_VERSION}.")
endif()

enable_language(C)
add_library(korvane-json-sqlite STATIC "${KORVANEJSON_SQLITE_SOURCE}/sqlite3.c")
target_include_directories(korvane-json-sqlite SYSTEM INTERFACE "${KORVANEJSON_SQLITE_SOURCE}")
# A database that is opened must not be able to load code.
target_compile_definitions(korvane-json-sqlite PRIVATE SQLITE_OMIT_LOAD_EXTENSION)
if(NOT WIN32)
  find_package(Threads REQUIRED)
  target_link_libraries(korvane-json-sqlite PRIVATE Threads::Threads)
endif()
add_library(SQLite::SQLite3 ALIAS korvane-json-sqlite)
