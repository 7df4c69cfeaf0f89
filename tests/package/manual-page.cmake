# Checks the manual page PAGE with GROFF, and its commands and options against what the help of HOST lists.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${GROFF} -man -ww -z -Tutf8 "${PAGE}"
  RESULT_VARIABLE status OUTPUT_VARIABLE complaints ERROR_VARIABLE complaints)
if(NOT status EQUAL 0 OR NOT complaints STREQUAL "")
  message(SEND_ERROR "groff ended with ${status}:\n${complaints}")
endif()

file(READ "${PAGE}" page)
string(REPLACE "\\-" "-" page "${page}")
if(NOT page MATCHES "\n?\\.TH [^\n]*\"KorvaneJson ${VERSION}\"")
  message(SEND_ERROR "The page is not that of version ${VERSION}")
endif()

# The part of a text behind a line that the pattern matches, up to the next line that the end matches.
function(part_of text pattern end variable)
  if(NOT "\n${text}" MATCHES "\n${pattern}\n(.*)$")
    message(FATAL_ERROR "There is no line ${pattern} in\n${text}")
  endif()
  set(part "${CMAKE_MATCH_1}")
  string(REGEX REPLACE "\n${end}.*$" "" part "\n${part}")
  set(${variable} "${part}\n" PARENT_SCOPE)
endfunction()

# The long options in the first lines of the entries of a help text.
function(options_of_help text variable)
  string(REGEX MATCHALL "\n  (-[a-z],)?--[a-z-]+" entries "${text}")
  list(TRANSFORM entries REPLACE "^.*(--)" "\\1")
  set(${variable} "${entries}" PARENT_SCOPE)
endfunction()

# The same in the page: the line behind each .TP.
function(options_of_page text variable)
  string(REGEX MATCHALL "\n\\.TP\n[^\n]*--[a-z-]+" entries "${text}")
  list(TRANSFORM entries REPLACE "^.*(--)" "\\1")
  set(${variable} "${entries}" PARENT_SCOPE)
endfunction()

function(expect_same what page help)
  list(SORT page)
  list(SORT help)
  if(NOT page STREQUAL help)
    message(SEND_ERROR "${what}: the page has \"${page}\", the help \"${help}\"")
  endif()
endfunction()

function(help_of)
  execute_process(COMMAND "${HOST}" ${ARGN} --help RESULT_VARIABLE status OUTPUT_VARIABLE help)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${HOST} ${ARGN} --help ended with ${status}")
  endif()
  set(help "${help}" PARENT_SCOPE)
endfunction()

help_of()
options_of_help("${help}" listed)
part_of("${page}" "\\.SH OPTIONS" "\\.SH" options)
options_of_page("${options}" described)
expect_same("Options of the program" "${described}" "${listed}")
set(known ${listed})

part_of("${help}" "[CSubc]+ommands:" "[^ \n]" entries)
string(REGEX MATCHALL "\n  [a-z]+" listed_commands "${entries}")
list(TRANSFORM listed_commands STRIP)
part_of("${page}" "\\.SH COMMANDS" "\\.SH" commands)
string(REGEX MATCHALL "\n\\.SS [^\n]+" described_commands "${commands}")
list(TRANSFORM described_commands REPLACE "\n\\.SS " "")
expect_same("Commands" "${described_commands}" "${listed_commands}")

foreach(command IN LISTS listed_commands)
  help_of(${command})
  options_of_help("${help}" listed)
  # Described once, for all commands.
  list(REMOVE_ITEM listed --help)
  list(APPEND known ${listed})
  part_of("${commands}" "\\.SS ${command}" "\\.SS" part)
  options_of_page("${part}" described)
  expect_same("Options of ${command}" "${described}" "${listed}")
endforeach()

# Options and commands elsewhere in the text, examples included.
string(REGEX MATCHALL "--[a-z][a-z-]*" mentioned "${page}")
list(REMOVE_DUPLICATES mentioned)
list(REMOVE_ITEM mentioned ${known})
if(mentioned)
  message(SEND_ERROR "The page speaks of ${mentioned}, which no help lists")
endif()
string(REGEX MATCHALL "\nkorvane-json [a-z]+|\\.B korvane-json [a-z]+" mentioned "${page}")
list(TRANSFORM mentioned REPLACE "^.*korvane-json " "")
list(REMOVE_DUPLICATES mentioned)
list(REMOVE_ITEM mentioned ${listed_commands})
if(mentioned)
  message(SEND_ERROR "The page speaks of the commands ${mentioned}, which no help lists")
endif()
