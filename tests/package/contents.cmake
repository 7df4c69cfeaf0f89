# What the unpacked package in PREFIX holds: all files that users need, nothing that tells of the machine that made
# it, libraries under the names that the policy gives them, a host that works, and documentation that is true.

if(PACKAGE STREQUAL ZIP)
  set(documents "${PREFIX}")
else()
  set(documents "${PREFIX}/share/doc/korvanejson")
endif()
set(libraries KorvaneJson Korvane orsutl PimuUtil)

# What must be there.
set(needed
  include/korvanejson/CaeRest.h
  include/korvanejson/Export.h
  include/korvanejson/JsonSerializer.h
  include/korvanejson/Module.h
  include/korvane/CAEObject.h
  include/korvane/EmbeddedModel.h
  include/libjson/libjson.h
  include/orsutl/OuString.h
  include/pimuutil/PimuUtil.h
  lib/cmake/KorvaneJson/KorvaneJsonConfig.cmake
  lib/cmake/KorvaneJson/KorvaneJsonConfigVersion.cmake
  lib/pkgconfig/korvanejson.pc)
if(PACKAGE STREQUAL ZIP)
  list(APPEND needed README-Windows.txt bin/korvane-json.exe bin/libjson.dll lib/liblibjson.dll.a
    bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
    lib/cmake/KorvaneJson/utf8-code-page.manifest)
  foreach(library IN LISTS libraries)
    list(APPEND needed bin/${library}.dll lib/lib${library}.dll.a)
  endforeach()
else()
  list(APPEND needed bin/korvane-json share/man/man1/korvane-json.1)
endif()
foreach(file IN LISTS needed)
  if(NOT EXISTS "${PREFIX}/${file}")
    message(SEND_ERROR "The package has no ${file}")
  endif()
endforeach()
foreach(file LICENSE README.md CHANGELOG.md docs/document.md docs/document.schema.json docs/embedding.md
    examples/README.md examples/server-document.json examples/program/CMakeLists.txt
    "examples/bracket-project/04-Kühlkörper/Kühlkörper_stationär.inp")
  if(NOT EXISTS "${documents}/${file}")
    message(SEND_ERROR "The documentation has no ${file}")
  endif()
endforeach()

# Links between its texts lead somewhere, but for those to what only a checkout has.
file(GLOB_RECURSE texts "${documents}/*.md")
foreach(text IN LISTS texts)
  get_filename_component(folder "${text}" DIRECTORY)
  file(READ "${text}" content)
  # Without the brackets, which would keep a list together.
  string(REPLACE "](" "\nlink:" content "${content}")
  string(REGEX MATCHALL "\nlink:[^)#: \n]+" links "${content}")
  list(TRANSFORM links REPLACE "^\nlink:" "")
  foreach(link IN LISTS links)
    if(NOT EXISTS "${folder}/${link}")
      message(SEND_ERROR "${text} links to ${link}, which the package does not have")
    endif()
  endforeach()
endforeach()

# Nothing knows where it was built, and nothing of the tests is in it.
file(GLOB_RECURSE files LIST_DIRECTORIES false "${PREFIX}/*")
foreach(file IN LISTS files)
  if(file MATCHES "Recording|/test-|gtest|gmock")
    message(SEND_ERROR "The package has ${file}, which belongs to the tests")
  endif()
  foreach(folder "${BUILD}" "${SOURCE}/")
    file(STRINGS "${file}" lines REGEX "${folder}" LIMIT_COUNT 1)
    if(lines)
      message(SEND_ERROR "${file} holds a path of the build machine: ${lines}")
    endif()
  endforeach()
endforeach()

# The names under which libraries ask for each other.
if(NOT PACKAGE STREQUAL ZIP)
  list(TRANSFORM libraries PREPEND lib OUTPUT_VARIABLE names)
  foreach(name libjson ${names})
    get_filename_component(target "${PREFIX}/lib/${name}.so" REALPATH)
    get_filename_component(target "${target}" NAME)
    if(NOT target STREQUAL ${name}.so.${VERSION})
      message(SEND_ERROR "${name}.so is ${target} instead of ${name}.so.${VERSION}")
    endif()
    run(${READELF} --dynamic "${PREFIX}/lib/${name}.so")
    if(NOT output MATCHES "SONAME[^\n]*\\[${name}\\.so\\.${interface}\\]")
      message(SEND_ERROR "The SONAME of ${name} is not ${name}.so.${interface}:\n${output}")
    endif()
    if(NOT EXISTS "${PREFIX}/lib/${name}.so.${interface}")
      message(SEND_ERROR "The package has no ${name}.so.${interface}")
    endif()
  endforeach()
endif()

# The host runs from where it was unpacked, far from the build tree, and does what it did there.
file(MAKE_DIRECTORY "${WORK}/elsewhere")
function(document_of host)
  run(${CMAKE_COMMAND} -E chdir "${WORK}/elsewhere" ${EMULATOR} "${host}" export "${documents}/examples/bracket-project")
  set(output "${output}" PARENT_SCOPE)
endfunction()
document_of("${HOST}")
set(built "${output}")
if(PACKAGE STREQUAL ZIP)
  document_of("${PREFIX}/bin/korvane-json.exe")
else()
  document_of("${PREFIX}/bin/korvane-json")
endif()
if(NOT output STREQUAL built OR NOT output MATCHES "^{\"id\":\"1\",\"name\":\"bracket-project\"")
  message(SEND_ERROR "The packaged host writes\n${output}\ninstead of\n${built}")
endif()

# The first program, which the package has as a project and the README shows with its output.
build_outside("${documents}/examples/program" "${WORK}/program")
if(PACKAGE STREQUAL ZIP)
  # Wine's way to have a folder in PATH.
  run(${CMAKE_COMMAND} -E env "WINEPATH=${PREFIX}/bin" ${EMULATOR} "${WORK}/program/program.exe")
else()
  run("${WORK}/program/program")
endif()
string(REPLACE "\r\n" "\n" output "${output}")
file(READ "${documents}/README.md" readme)
file(READ "${documents}/examples/program/main.cpp" program)
foreach(block "\n```cpp\n${program}```\n" "\n```json\n${output}\n```\n")
  string(FIND "${readme}" "${block}" position)
  if(position EQUAL -1)
    message(SEND_ERROR "README.md does not show this:${block}")
  endif()
endforeach()

if(PACKAGE STREQUAL ZIP)
  include("${CMAKE_CURRENT_LIST_DIR}/windows.cmake")
endif()
