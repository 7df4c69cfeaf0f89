# What the unpacked package in PREFIX holds: all files that users need, nothing about the machine that made
# it, libraries under the names that the policy gives them, a host that works, and documentation that is true.

if(PACKAGE STREQUAL ZIP)
  set(documents "${PREFIX}")
else()
  set(documents "${PREFIX}/share/doc/korvanejson")
endif()
set(libraries KorvaneJson KorvaneExchange Korvane orsutl PimuUtil)

# What must be there.
set(needed
  include/korvanejson/CaeRest.h
  include/korvanejson/Export.h
  include/korvanejson/JsonSerializer.h
  include/korvanejson/Module.h
  include/korvaneexchange/ApplyAnswer.h
  include/korvaneexchange/Compare.h
  include/korvaneexchange/Export.h
  include/korvaneexchange/ImportDocument.h
  include/korvaneexchange/ParseDocument.h
  include/korvaneexchange/PrintableText.h
  include/korvaneexchange/Progress.h
  include/korvaneexchange/Report.h
  include/korvaneexchange/Text.h
  include/korvaneexchange/WriteDocument.h
  include/korvane/CAEObject.h
  include/korvane/EmbeddedModel.h
  include/libjson/libjson.h
  include/orsutl/OuString.h
  include/pimuutil/PimuUtil.h
  lib/cmake/KorvaneJson/KorvaneJsonConfig.cmake
  lib/cmake/KorvaneJson/KorvaneJsonConfigVersion.cmake
  lib/pkgconfig/korvaneexchange.pc
  lib/pkgconfig/korvanejson.pc)
if(PACKAGE STREQUAL ZIP)
  list(APPEND needed README-Windows.txt licences/three.js.txt bin/korvane-json.exe bin/libjson.dll lib/liblibjson.dll.a
    bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
    lib/cmake/KorvaneJson/utf8-code-page.manifest)
  foreach(library IN LISTS libraries)
    list(APPEND needed bin/${library}.dll lib/lib${library}.dll.a)
  endforeach()
else()
  list(APPEND needed bin/korvane-json share/man/man1/korvane-json.1 share/bash-completion/completions/korvane-json
    share/zsh/site-functions/_korvane-json share/fish/vendor_completions.d/korvane-json.fish)
endif()
expect_files("${PREFIX}" ${needed})
expect_files("${documents}"
  LICENSE README.md CHANGELOG.md docs/tutorial.md docs/document.md docs/document.schema.json docs/embedding.md
  docs/building.md docs/reliability.md docs/performance.md docs/performance-export.svg docs/page.png
  docs/answer.schema.json docs/import.schema.json
  examples/README.md examples/server-document.json examples/server.py examples/program/CMakeLists.txt
  "examples/bracket-project/04-Kühlkörper/Kühlkörper_stationär.inp")
if(NOT PACKAGE STREQUAL ZIP)
  expect_files("${documents}" licences/CLI11.txt licences/three.js.txt licences/tomlplusplus.txt)
  expect_documentation_in_page("${PREFIX}/share/man/man1/korvane-json.1" share/doc/korvanejson)
endif()
if(NOT PACKAGE STREQUAL ZIP)
  # The installed scripts are those of the program.
  foreach(script bash=share/bash-completion/completions/korvane-json zsh=share/zsh/site-functions/_korvane-json
      fish=share/fish/vendor_completions.d/korvane-json.fish)
    string(REGEX MATCH "^(.*)=(.*)$" script "${script}")
    set(installed "${PREFIX}/${CMAKE_MATCH_2}")
    run("${PREFIX}/bin/korvane-json" completion ${CMAKE_MATCH_1})
    file(READ "${installed}" text)
    string(STRIP "${text}" text)
    string(STRIP "${output}" output)
    if(NOT text STREQUAL output)
      message(SEND_ERROR "${installed} is not what the program prints")
    endif()
  endforeach()
endif()
expect_working_links("${documents}")
expect_nothing_of_the_build("${PREFIX}")
if(NOT PACKAGE STREQUAL ZIP)
  expect_library_names("${PREFIX}/lib" "${PREFIX}/lib")
endif()

# The program runs in the folder where it was unpacked, and does the same as in the build tree.
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
expect_first_program("${documents}" "${output}")

if(PACKAGE STREQUAL ZIP)
  include("${CMAKE_CURRENT_LIST_DIR}/windows.cmake")
endif()
