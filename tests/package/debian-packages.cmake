# The three packages for Debian in PACKAGES: what their control files say, what they hold, and what lintian says of them.

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/checks.cmake")

run(dpkg --print-architecture)
set(architecture ${output})
run(dpkg-architecture --query DEB_HOST_MULTIARCH)
set(libraries_folder usr/lib/${output})
set(libraries libkorvanejson${interface})
set(development libkorvanejson-dev)
set(program korvane-json)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(GLOB packages RELATIVE "${PACKAGES}" "${PACKAGES}/*.deb")
list(SORT packages)
if(NOT packages MATCHES "^[^_]+_(${VERSION}-[0-9a-z.+~]+)_")
  message(FATAL_ERROR "The packages have not the version ${VERSION}: ${packages}")
endif()
set(version "${CMAKE_MATCH_1}")
set(expected ${program} ${development} ${libraries})
list(TRANSFORM expected APPEND _${version}_${architecture}.deb)
if(NOT packages STREQUAL expected)
  message(FATAL_ERROR "The packages are ${packages} instead of ${expected}")
endif()

# Sets `output` to a field.
function(field package name)
  run(dpkg-deb --field "${PACKAGES}/${package}_${version}_${architecture}.deb" ${name})
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_field package name pattern)
  field(${package} ${name})
  if(NOT output MATCHES "${pattern}")
    message(SEND_ERROR "${name} of ${package} is \"${output}\", which does not match \"${pattern}\"")
  endif()
endfunction()

# The control files of a package, and nothing else: no maintainer scripts.
function(expect_control_files package)
  file(GLOB files RELATIVE "${WORK}/${package}/DEBIAN" "${WORK}/${package}/DEBIAN/*")
  list(SORT files)
  if(NOT files STREQUAL "${ARGN}")
    message(SEND_ERROR "The control files of ${package} are ${files} instead of ${ARGN}")
  endif()
endfunction()

set(summaries)
foreach(package IN LISTS libraries development program)
  run(dpkg-deb --raw-extract "${PACKAGES}/${package}_${version}_${architecture}.deb" "${WORK}/${package}")
  expect_field(${package} Source "^korvanejson$")
  expect_field(${package} Maintainer "^[^<]+ <[^>]+@[^>]+>$")
  expect_field(${package} Homepage "^https://")
  expect_field(${package} Description "^[A-Z][^\n]+\n [A-Z]")
  field(${package} Description)
  string(REGEX MATCH "^[^\n]+" summary "${output}")
  list(APPEND summaries "${summary}")
endforeach()
list(REMOVE_DUPLICATES summaries)
list(LENGTH summaries count)
if(NOT count EQUAL 3)
  message(SEND_ERROR "The summaries are not three different ones: ${summaries}")
endif()

# Every library from another package that something in here asks for.
set(of_compiler libc6 libgcc-s1 "libstdc\\+\\+6")
foreach(library IN LISTS of_compiler)
  expect_field(${libraries} Depends "(^|, )${library} \\(>= [0-9.]+\\)(,|$)")
endforeach()
foreach(library IN LISTS of_compiler ITEMS libsqlite3-0 libudunits2-0)
  expect_field(${program} Depends "(^|, )${library} \\(>= [0-9.]+\\)(,|$)")
endforeach()
expect_field(${program} Depends "(^|, )${libraries} \\(>= ${version}\\)(,|$)")
# Headers fit no other libraries than those that they were made with.
expect_field(${development} Depends "^${libraries} \\(= ${version}\\)$")
expect_field(${libraries} Section "^libs$")
expect_field(${development} Section "^libdevel$")
expect_field(${program} Section "^science$")
expect_field(${libraries} Multi-Arch "^same$")
expect_field(${development} Multi-Arch "^same$")
expect_field(${program} Multi-Arch "^no$")

expect_control_files(${libraries} control md5sums shlibs triggers)
expect_control_files(${development} control md5sums)
expect_control_files(${program} control md5sums)
file(STRINGS "${WORK}/${libraries}/DEBIAN/triggers" triggers REGEX "^[^#]")
if(NOT triggers STREQUAL "activate-noawait ldconfig")
  message(SEND_ERROR "The triggers of ${libraries} are ${triggers}")
endif()
file(STRINGS "${WORK}/${libraries}/DEBIAN/shlibs" shlibs)
list(SORT shlibs)
set(expected libKorvane libKorvaneExchange libKorvaneJson libPimuUtil libjson liborsutl)
list(TRANSFORM expected APPEND " ${interface} ${libraries} (>= ${version})")
if(NOT shlibs STREQUAL expected)
  message(SEND_ERROR "Programs that link the libraries depend on ${shlibs} instead of ${expected}")
endif()

# What the packages hold. The libraries' has nothing that a second version beside it would have too.
file(GLOB_RECURSE files RELATIVE "${WORK}/${libraries}" "${WORK}/${libraries}/usr/*")
list(FILTER files EXCLUDE REGEX "^${libraries_folder}/lib[A-Za-z]+\\.so\\.[0-9.]+$")
list(FILTER files EXCLUDE REGEX "^usr/share/doc/${libraries}/")
if(files)
  message(SEND_ERROR "${libraries} holds more than libraries: ${files}")
endif()
expect_library_names("${WORK}/${libraries}/${libraries_folder}" "${WORK}/${development}/${libraries_folder}")
expect_files("${WORK}/${development}/usr/include"
  korvanejson/CaeRest.h korvanejson/Export.h korvanejson/JsonSerializer.h korvanejson/Module.h
  korvaneexchange/WriteDocument.h
  korvane/CAEObject.h korvane/EmbeddedModel.h libjson/libjson.h orsutl/OuString.h pimuutil/PimuUtil.h)
expect_files("${WORK}/${development}/${libraries_folder}"
  cmake/KorvaneJson/KorvaneJsonConfig.cmake cmake/KorvaneJson/KorvaneJsonConfigVersion.cmake pkgconfig/korvanejson.pc
  pkgconfig/korvaneexchange.pc)
expect_files("${WORK}/${program}" usr/bin/korvane-json usr/share/man/man1/korvane-json.1.gz
  usr/share/bash-completion/completions/korvane-json usr/share/zsh/vendor-completions/_korvane-json
  usr/share/fish/vendor_completions.d/korvane-json.fish)

# The system knows where its libraries are, and looks for them nowhere else.
file(GLOB libraries_files "${WORK}/${libraries}/${libraries_folder}/*.so.${VERSION}")
foreach(file IN LISTS libraries_files ITEMS "${WORK}/${program}/usr/bin/korvane-json")
  run(${READELF} --dynamic "${file}")
  if(output MATCHES "R(UN)?PATH")
    message(SEND_ERROR "${file} looks for libraries in folders of its own:\n${output}")
  endif()
endforeach()

# Documentation.
function(expect_compressed package file source)
  run(gzip --decompress --stdout "${WORK}/${package}/usr/share/${file}")
  file(READ "${source}" text)
  string(STRIP "${text}" text)
  if(NOT output STREQUAL text)
    message(SEND_ERROR "${file} of ${package} is not ${source}")
  endif()
endfunction()
file(STRINGS "${SOURCE}/LICENSE" licence REGEX "[^ ]")
list(POP_FRONT licence)
foreach(package IN LISTS libraries development program)
  set(documents "${WORK}/${package}/usr/share/doc/${package}")
  expect_files("${documents}" copyright)
  file(STRINGS "${documents}/copyright" copyright)
  foreach(line IN LISTS licence)
    string(REPLACE "Copyright (c)" "Copyright:" line "${line}")
    if(NOT "${line}" IN_LIST copyright AND NOT " ${line}" IN_LIST copyright)
      message(SEND_ERROR "The copyright file of ${package} lacks the line \"${line}\" of the licence")
    endif()
  endforeach()
  expect_compressed(${package} doc/${package}/changelog.gz "${SOURCE}/CHANGELOG.md")
  run(dpkg-parsechangelog --file "${documents}/changelog.Debian.gz" --show-field Version)
  if(NOT output STREQUAL version)
    message(SEND_ERROR "The changelog of ${package} ends with ${output} instead of ${version}")
  endif()
  expect_working_links("${documents}")
  expect_nothing_of_the_build("${WORK}/${package}")
endforeach()
expect_compressed(${program} man/man1/korvane-json.1.gz "${SOURCE}/docs/korvane-json.1")
expect_documentation_in_page("${SOURCE}/docs/korvane-json.1" /usr/share/doc/${program})
expect_files("${WORK}/${development}/usr/share/doc/${development}"
  README.md docs/embedding.md docs/document.md docs/answer.schema.json docs/import.schema.json
  examples/program/CMakeLists.txt examples/server.py)
expect_files("${WORK}/${program}/usr/share/doc/${program}"
  README.md docs/document.md docs/document.schema.json docs/answer.schema.json docs/import.schema.json
  examples/README.md examples/server-document.json examples/server.py
  licences/CLI11.txt licences/tomlplusplus.txt
  "examples/bracket-project/04-Kühlkörper/Kühlkörper_stationär.inp")

list(TRANSFORM packages PREPEND "${PACKAGES}/")
execute_process(COMMAND lintian --allow-root --fail-on error,warning ${packages}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(SEND_ERROR "lintian ended with ${status}:\n${output}")
endif()
