# Installs the packages for Debian in PACKAGES in a throw-away Debian, unpacked from ROOT, as its users do, and tries them
# there: the program, and the first program of the README, which is built with what the packages hold.

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/checks.cmake")

if(NOT EXISTS "${ROOT}")
  message(FATAL_ERROR "There is no ${ROOT}, the Debian in which the packages are tried: ./dev build linux makes it")
endif()
set(root "${WORK}/root")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${root}")
run(id -u)
if(output EQUAL 0)
  set(tar tar)
  set(enter chroot)
else()
  # Only root makes devices; others see those of the machine.
  set(tar tar "--exclude=./dev/*")
  set(enter unshare --map-root-user --mount sh -c [[mount --rbind /dev "$0/dev" && exec chroot "$0" "$@"]])
endif()
run(${tar} --extract --file "${ROOT}" --directory "${root}")

# Runs a script of the shell in the throw-away Debian; what it prints is in `output`.
function(inside script)
  # One argument, not a list of them.
  string(REPLACE ";" "\\;" script "${script}")
  run(${enter} "${root}" env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/tmp
    DEBIAN_FRONTEND=noninteractive sh -euc "${script}")
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(COPY "${PACKAGES}/" DESTINATION "${root}/packages" FILES_MATCHING PATTERN *.deb)
set(cached "ldconfig -p | grep -cE 'lib(KorvaneJson|KorvaneExchange|Korvane|orsutl|PimuUtil|json)[.]so[.]${interface} ' || true")
set(installed "dpkg-query --show --showformat '\${db:Status-Abbrev} \${Package}\\n' '*korvane*'")
inside("find /usr /etc | sort; ${cached}")
set(before "${output}")

# Development files alone are of no use, and are not installed.
inside("! dpkg --install /packages/libkorvanejson-dev_*.deb 2>&1; ${installed}")
if(NOT output MATCHES "libkorvanejson-dev[^ ]* depends on libkorvanejson${interface} \\(= ${VERSION}-"
    OR NOT output MATCHES "\niU +libkorvanejson-dev\n")
  message(SEND_ERROR "libkorvanejson-dev was installed alone:\n${output}")
endif()
inside("dpkg --install /packages/*.deb >/tmp/log 2>&1 || { cat /tmp/log; exit 1; }; ${installed}")
string(REGEX REPLACE "[ \n]+" " " output "${output}")
if(NOT output STREQUAL "ii korvane-json ii libkorvanejson-dev ii libkorvanejson${interface}")
  message(SEND_ERROR "These packages are installed: ${output}")
endif()
inside("dpkg --audit; dpkg --verify korvane-json libkorvanejson-dev libkorvanejson${interface}")
if(output)
  message(SEND_ERROR "dpkg finds fault with what is installed:\n${output}")
endif()
inside("${cached}")
if(NOT output EQUAL 6)
  message(SEND_ERROR "The linker knows ${output} of the six libraries")
endif()

# The program, with project files and without. The owners of files have other names outside.
set(project /usr/share/doc/korvane-json/examples/bracket-project)
set(creator "\"createdBy\":\"[^\"]*\"")
run("${HOST}" export "${root}${project}")
string(REGEX REPLACE "${creator}" "" expected "${output}")
inside("korvane-json export ${project}")
string(REGEX REPLACE "${creator}" "" output "${output}")
if(NOT output STREQUAL expected OR NOT output MATCHES "^{\"id\":\"1\",\"name\":\"bracket-project\"")
  message(SEND_ERROR "The installed program writes\n${output}\ninstead of\n${expected}")
endif()
inside("korvane-json new ${project} /tmp/bracket.kvp && korvane-json compare ${project} /tmp/bracket.kvp")

# The first program, with CMake and with pkg-config as the README has it.
set(documents /usr/share/doc/libkorvanejson-dev)
inside("cmake -S ${documents}/examples/program -B /tmp/program >/tmp/log; cmake --build /tmp/program >/tmp/log
  /tmp/program/program")
expect_first_program("${root}${documents}" "${output}")
set(printed "${output}")
commands_of("${root}${documents}/README.md" "g\\+\\+ .*pkg-config --cflags --libs korvanejson\\)$")
inside("cd /tmp; cp ${documents}/examples/program/main.cpp program.cpp; ${commands}; ./a.out")
if(NOT output STREQUAL printed)
  message(SEND_ERROR "The program built with pkg-config printed\n${output}\ninstead of\n${printed}")
endif()
inside("pkg-config --cflags --libs korvanejson korvaneexchange")
if(output MATCHES "-L|-I/usr/include( |$)")
  message(SEND_ERROR "pkg-config names folders that the compiler looks into by itself: ${output}")
endif()

# Everything that was installed can be removed.
inside("dpkg --purge korvane-json libkorvanejson-dev libkorvanejson${interface} >/tmp/log; find /usr /etc | sort; ${cached}")
if(NOT output STREQUAL before)
  file(WRITE "${WORK}/before" "${before}\n")
  file(WRITE "${WORK}/after" "${output}\n")
  execute_process(COMMAND diff "${WORK}/before" "${WORK}/after" OUTPUT_VARIABLE difference)
  message(SEND_ERROR "The packages leave something behind:\n${difference}")
endif()
file(REMOVE_RECURSE "${root}")
