# Documentation where Debian's users look for it: in one folder per package, compressed where that is usual.

set(_prepared "${PROJECT_BINARY_DIR}/debian")
set(_documents "${CMAKE_INSTALL_DATADIR}/doc")

# korvanejson_compressed(<file> <name>): the file as <name>.gz in the build tree, with the same bytes each time.
function(korvanejson_compressed file name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  file(MAKE_DIRECTORY "${_prepared}")
  execute_process(COMMAND "${KORVANEJSON_GZIP}" -9n
    INPUT_FILE "${file}" OUTPUT_FILE "${_prepared}/${name}.gz" COMMAND_ERROR_IS_FATAL ANY)
endfunction()
korvanejson_compressed("${PROJECT_SOURCE_DIR}/cmake/debian/changelog" changelog.Debian)
korvanejson_compressed("${PROJECT_SOURCE_DIR}/CHANGELOG.md" changelog)
korvanejson_compressed("${PROJECT_SOURCE_DIR}/docs/korvane-json.1" korvane-json.1)

# The licence, as a paragraph of the copyright file.
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" _licence)
if(NOT _licence MATCHES "^MIT License\n\nCopyright \\(c\\) ([^\n]+)\n\n(.+)\n$")
  message(FATAL_ERROR "LICENSE is not what cmake/debian/copyright.in says of it")
endif()
set(KORVANEJSON_COPYRIGHT "${CMAKE_MATCH_1}")
string(REPLACE "\n" "\n " KORVANEJSON_LICENCE " ${CMAKE_MATCH_2}")
string(REPLACE "\n \n" "\n .\n" KORVANEJSON_LICENCE "${KORVANEJSON_LICENCE}")
configure_file(cmake/debian/copyright.in "${_prepared}/copyright" @ONLY)

# In a Debian package the licence and the changelog have other names.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS LICENSE README.md)
file(READ README.md _readme)
string(REPLACE "](LICENSE)" "](copyright)" _readme "${_readme}")
string(REPLACE "](CHANGELOG.md)" "](changelog.gz)" _readme "${_readme}")
file(CONFIGURE OUTPUT "${_prepared}/README.md" CONTENT "@_readme@" @ONLY)

function(korvanejson_debian_documentation component)
  string(TOUPPER ${component} upper)
  set(folder "${_documents}/${KORVANEJSON_DEBIAN_${upper}_NAME}")
  install(FILES "${_prepared}/copyright" "${_prepared}/changelog.Debian.gz" "${_prepared}/changelog.gz"
    DESTINATION "${folder}" COMPONENT ${component})
  if(component STREQUAL libraries)
    return()
  endif()
  install(FILES "${_prepared}/README.md" DESTINATION "${folder}" COMPONENT ${component})
  install(DIRECTORY docs DESTINATION "${folder}" COMPONENT ${component} FILES_MATCHING PATTERN "*.md" PATTERN "*.json"
    PATTERN "*.svg" PATTERN "*.png")
  if(component STREQUAL development)
    install(DIRECTORY examples/program DESTINATION "${folder}/examples" COMPONENT ${component})
    install(FILES examples/server.py DESTINATION "${folder}/examples" COMPONENT ${component})
  else()
    install(DIRECTORY examples DESTINATION "${folder}" COMPONENT ${component} PATTERN program EXCLUDE)
  endif()
endfunction()
foreach(_component IN LISTS CPACK_COMPONENTS_ALL)
  korvanejson_debian_documentation(${_component})
endforeach()

if(KORVANEJSON_BUILD_PROGRAM)
  install(FILES "${_prepared}/korvane-json.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT program)
  install(FILES ${_cli11_licence} DESTINATION "${_documents}/korvane-json/licences" COMPONENT program RENAME CLI11.txt)
  install(FILES ${_three_licence} DESTINATION "${_documents}/korvane-json/licences" COMPONENT program
    RENAME three.js.txt)
  install(FILES ${_toml_licence} DESTINATION "${_documents}/korvane-json/licences" COMPONENT program
    RENAME tomlplusplus.txt)
endif()
