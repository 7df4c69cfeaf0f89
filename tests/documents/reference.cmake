# Runs DOXYGEN with CONFIGURATION, in the folder WORK: the reference must come out without a warning, with a page for
# all that a host calls, and everything in the library's own HEADERS must have a comment.

# Runs Doxygen with these lines behind the configuration's own.
function(run_doxygen name)
  list(JOIN ARGN "\n" lines)
  file(WRITE "${WORK}/${name}.Doxyfile"
    "@INCLUDE = \"${CONFIGURATION}\"\nOUTPUT_DIRECTORY = \"${WORK}/${name}\"\n${lines}\n")
  execute_process(COMMAND "${DOXYGEN}" "${WORK}/${name}.Doxyfile"
    OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE status)
  if(NOT status EQUAL 0 OR NOT said STREQUAL "")
    message(SEND_ERROR "Doxygen (${name}) ended with ${status}:\n${said}")
  endif()
endfunction()

# expect_page(<file> <text>...)
function(expect_page file)
  set(page "${WORK}/reference/${file}")
  if(NOT EXISTS "${page}")
    message(SEND_ERROR "The reference has no ${file}")
    return()
  endif()
  file(READ "${page}" text)
  foreach(expected IN LISTS ARGN)
    string(FIND "${text}" "${expected}" position)
    if(position EQUAL -1)
      message(SEND_ERROR "${file} does not say \"${expected}\"")
    endif()
  endforeach()
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/reference" "${WORK}/comments")
run_doxygen(reference)
run_doxygen(comments "EXTRACT_ALL = NO" "INPUT = \"${HEADERS}\"" "EXCLUDE_PATTERNS = */Export.h")

expect_page(index.html "classJsonSerializer.html" "namespacecaerest_1_1json.html" "classJSONNode.html")
expect_page(classJsonSerializer.html "SetExportMode" "GetJson" "GetJsonString"
  "The document as a node of its own: changing it changes nothing else.")
expect_page(namespacecaerest_1_1json.html "DeserializeJsonToObject" "ApplyJsonResponseOnObject")
expect_page(namespacecaerest_1_1json_1_1util.html "ParseNode")
expect_page(Module_8h.html "KorvaneJsonInitialize" "KorvaneJsonTerminate" "KorvaneJson_get_module_info"
  "__localFnToKeepKorvaneJsonDllLoaded" "KORVANEJSON_MODULE_VERSION")
expect_page(namespacekorvane_1_1exchange.html "WriteDocument" "ParseDocument" "ReadDocument" "ToUtf8" "FromUtf8"
  "calls with different modes may run at once")
expect_page(classkorvane_1_1exchange_1_1DocumentError.html "Line" "Column" "Offset" "Reason")
expect_page(classJSONNode.html "write_formatted")
expect_page(namespacelibjson.html "set_text_units" "\\uDC80")
expect_page(classOuString.html "GetAnsiBuffer" "%hs")
expect_page(classCAEProject.html "getCAEObject")
expect_page(namespacekorvane.html "CreateProject" "RestoreObject")
