# What holds for every kind of package. SOURCE and BUILD are the folders of the sources and of the build tree, VERSION is
# the version of the libraries.

# What the names of libraries end in for as long as their interface lasts.
string(REGEX REPLACE "^(0\\.[0-9]+|[1-9][0-9]*).*$" "\\1" interface "${VERSION}")

function(expect_files folder)
  foreach(file IN LISTS ARGN)
    if(NOT EXISTS "${folder}/${file}")
      message(SEND_ERROR "${folder} has no ${file}")
    endif()
  endforeach()
endfunction()

# The manual page says where the documentation is.
function(expect_documentation_in_page page folder)
  file(READ "${page}" text)
  string(REPLACE "\\-" "-" text "${text}")
  string(FIND "${text}" "\n.I ${folder}\n" position)
  if(position EQUAL -1)
    message(SEND_ERROR "${page} does not say that the documentation is in ${folder}")
  endif()
endfunction()

# Links between the texts of a folder lead somewhere.
function(expect_working_links documents)
  file(GLOB_RECURSE texts "${documents}/*.md")
  foreach(text IN LISTS texts)
    get_filename_component(folder "${text}" DIRECTORY)
    file(READ "${text}" content)
    # Without the brackets, which would keep a list together.
    string(REPLACE "](" "\nlink:" content "${content}")
    # In programs the same characters are followed by parameters, not by a path alone.
    string(REGEX MATCHALL "\nlink:[^)#: \n]+[)#]" links "${content}")
    list(TRANSFORM links REPLACE "^\nlink:(.*)[)#]$" "\\1")
    foreach(link IN LISTS links)
      if(NOT EXISTS "${folder}/${link}")
        message(SEND_ERROR "${text} links to ${link}, which the package does not have")
      endif()
    endforeach()
  endforeach()
endfunction()

# Nothing in a folder knows where it was built, and nothing of the tests is in it.
function(expect_nothing_of_the_build folder)
  file(GLOB_RECURSE files LIST_DIRECTORIES false "${folder}/*")
  # What comes from the compiler was not built here, and its own paths may look like the tree's.
  list(FILTER files EXCLUDE REGEX "/licences/|/lib(stdc\\+\\+|gcc_s|winpthread)[^/]*\\.dll$")
  if(NOT files)
    message(SEND_ERROR "${folder} is empty")
  endif()
  foreach(file IN LISTS files)
    if(file MATCHES "Recording|/test-|gtest|gmock")
      message(SEND_ERROR "The package has ${file}, which belongs to the tests")
    endif()
    if(IS_SYMLINK "${file}")
      continue()
    endif()
    foreach(place "${BUILD}" "${SOURCE}/")
      file(STRINGS "${file}" lines REGEX "${place}" LIMIT_COUNT 1)
      if(lines)
        message(SEND_ERROR "${file} holds a path of the build machine: ${lines}")
      endif()
    endforeach()
  endforeach()
endfunction()

# The names under which libraries in the folder `runtime` ask for each other, and those in the folder `links` under
# which they are linked.
function(expect_library_names runtime links)
  foreach(name libjson libKorvaneJson libKorvaneExchange libKorvane liborsutl libPimuUtil)
    run(${READELF} --dynamic "${runtime}/${name}.so.${VERSION}")
    if(NOT output MATCHES "SONAME[^\n]*\\[${name}\\.so\\.${interface}\\]")
      message(SEND_ERROR "The SONAME of ${name} is not ${name}.so.${interface}:\n${output}")
    endif()
    get_filename_component(target "${runtime}/${name}.so.${interface}" REALPATH)
    if(NOT target STREQUAL "${runtime}/${name}.so.${VERSION}")
      message(SEND_ERROR "${name}.so.${interface} is ${target} instead of ${name}.so.${VERSION}")
    endif()
    file(READ_SYMLINK "${links}/${name}.so" target)
    if(NOT target STREQUAL ${name}.so.${interface})
      message(SEND_ERROR "${name}.so is a link to ${target} instead of ${name}.so.${interface}")
    endif()
  endforeach()
endfunction()

# The README in a folder shows the first program, which is in its examples, and what the program prints.
function(expect_first_program documents output)
  string(REPLACE "\r\n" "\n" output "${output}")
  file(READ "${documents}/README.md" readme)
  file(READ "${documents}/examples/program/main.cpp" program)
  foreach(block "\n```cpp\n${program}```\n" "\n```json\n${output}\n```\n")
    string(FIND "${readme}" "${block}" position)
    if(position EQUAL -1)
      message(SEND_ERROR "README.md does not show this:${block}")
    endif()
  endforeach()
endfunction()

# Sets `commands` to the lines of a text that are commands and match a pattern.
function(commands_of text pattern)
  file(STRINGS "${text}" lines REGEX "^    +${pattern}")
  list(TRANSFORM lines STRIP)
  if(NOT lines)
    message(FATAL_ERROR "${text} has no command ${pattern}")
  endif()
  set(commands "${lines}" PARENT_SCOPE)
endfunction()
