# A program that is linked with the flags of pkg-config, and libraries outside the system's folders: in PREFIX, where the
# texts in `documents` say /opt/korvanejson. It starts only in one of the ways that the texts describe.

set(work "${WORK}/pkg-config")
set(program "${documents}/examples/program/main.cpp")
set(linked_plainly "g\\+\\+ .*pkg-config --cflags --libs korvanejson\\)$")
set(linked_with_folder "g\\+\\+ .*--libs korvanejson\\) -Wl,-rpath,")

# Runs lines of the shell in a folder of their own; `status`, `output` and `errors` are their results.
function(try)
  list(JOIN ARGN "\n" script)
  string(REPLACE "/opt/korvanejson" "${PREFIX}" script "${script}")
  file(REMOVE_RECURSE "${work}")
  file(COPY "${program}" DESTINATION "${work}/bin")
  file(COPY_FILE "${program}" "${work}/bin/program.cpp")
  file(COPY_FILE "${program}" "${work}/bin/host.cpp")
  execute_process(COMMAND env --unset=LD_LIBRARY_PATH --unset=PKG_CONFIG_PATH sh -euc "${script}"
    WORKING_DIRECTORY "${work}/bin" RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  foreach(result status output errors)
    set(${result} "${${result}}" PARENT_SCOPE)
  endforeach()
endfunction()

function(expect_start how)
  try(${ARGN})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${how}, the program ended with ${status}\n${output}\n${errors}")
  endif()
  string(STRIP "${output}" output)
  expect_first_program("${documents}" "${output}")
endfunction()

function(expect_missing_library how)
  try(${ARGN})
  if(status EQUAL 0 OR NOT errors MATCHES "libKorvane[A-Za-z]*\\.so[.0-9]*: cannot open shared object file")
    message(FATAL_ERROR "${how}, the program ended with ${status}\n${output}\n${errors}")
  endif()
endfunction()

commands_of("${documents}/README.md" "export PKG_CONFIG_PATH=")
set(find_package "${commands}")
commands_of("${documents}/README.md" "${linked_plainly}")
set(plainly ${find_package} "${commands}")
expect_missing_library("Without the folder of the libraries" ${plainly} ./a.out)
foreach(text README.md docs/embedding.md)
  commands_of("${documents}/${text}" "export LD_LIBRARY_PATH=")
  expect_start("With LD_LIBRARY_PATH as in ${text}" ${plainly} ${commands} ./a.out)
  commands_of("${documents}/${text}" "${linked_with_folder}")
  expect_start("Linked as in ${text}" ${find_package} ${commands} ./a.out)
endforeach()
# A host of KorvaneExchange.
commands_of("${documents}/docs/embedding.md" "g\\+\\+ .*--libs korvaneexchange\\) -Wl,-rpath,")
set(first_program "${program}")
set(program "${CMAKE_CURRENT_LIST_DIR}/outside/exchange.cpp")
try(${find_package} ${commands} ./a.out)
string(STRIP "${output}" output)
expect_document("korvaneexchange.pc as in docs/embedding.md")
set(program "${first_program}")
expect_start("Given away with the libraries" "${plainly} -Wl,-rpath,'$ORIGIN/../lib'" "cp -a ${PREFIX}/lib .." ./a.out)

# The same for one that CMake installs.
set(installing
  "cp -r ${documents}/examples/program ."
  "echo 'install(TARGETS program)' >>program/CMakeLists.txt"
  "cmake -S program -B build -G '${GENERATOR}' -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_INSTALL_PREFIX=${work}/installed >log"
  "cmake --build build >log")
set(started "cmake --install build >log" "${work}/installed/bin/program")
expect_missing_library("Installed by CMake" ${installing} ${started})
expect_start("Installed by CMake with the folder of the libraries"
  ${installing} "cmake -DCMAKE_INSTALL_RPATH_USE_LINK_PATH=ON build >log" "cmake --build build >log" ${started})

# A library that is loaded by its path finds the libraries that it needs.
try("python3 -c '__import__(\"ctypes\").CDLL(\"${PREFIX}/lib/libKorvaneJson.so\").KorvaneJsonInitialize()'")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "Loading the library by its path ended with ${status}\n${errors}")
endif()
