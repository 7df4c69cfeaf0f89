# The libraries under the product: the platform libraries of this tree, or the suite's own.

# korvanejson_choice(<variable> <default> <other> <help>)
function(korvanejson_choice variable default other help)
  set(${variable} ${default} CACHE STRING "${help}")
  set_property(CACHE ${variable} PROPERTY STRINGS ${default} ${other})
  if(NOT ${variable} STREQUAL default AND NOT ${variable} STREQUAL other)
    message(FATAL_ERROR "${variable} is \"${${variable}}\"; it can be ${default} or ${other}")
  endif()
endfunction()
korvanejson_choice(KORVANEJSON_PLATFORM embedded suite
  "The object model, utility and console libraries: embedded, or the suite's under KORVANEJSON_SUITE_ROOT")
korvanejson_choice(KORVANEJSON_LIBJSON embedded system
  "libjson: embedded, or an installed one")

# Packages that are found are used in every folder, and projects that use the library find them in the same way.
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
set(KORVANEJSON_EXPORTED_NAMESPACES)
set(KORVANEJSON_FOUND_PACKAGES)
if(KORVANEJSON_LIBJSON STREQUAL "embedded")
  list(APPEND KORVANEJSON_EXPORTED_NAMESPACES libjson)
else()
  find_package(libjson REQUIRED)
  list(APPEND KORVANEJSON_FOUND_PACKAGES libjson)
endif()
if(KORVANEJSON_PLATFORM STREQUAL "embedded")
  list(APPEND KORVANEJSON_EXPORTED_NAMESPACES Korvane)
else()
  find_package(KorvaneSuite REQUIRED)
  list(APPEND KORVANEJSON_FOUND_PACKAGES KorvaneSuite)
  foreach(part PROGRAM TESTS BENCH FUZZ)
    if(KORVANEJSON_BUILD_${part})
      message(FATAL_ERROR
        "KORVANEJSON_BUILD_${part} needs the embedded object model: switch it off with KORVANEJSON_PLATFORM=suite")
    endif()
  endforeach()
endif()
list(APPEND KORVANEJSON_EXPORTED_NAMESPACES KorvaneJson)
