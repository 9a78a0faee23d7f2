# The layers of the program. Every folder under src/ is a library that sees its own headers and those of the libraries
# named after USES, nothing else: headers are included by their bare names, so an include of a higher layer is not found.
#
#   vorlant_library(NAME [USES lib...] [QT module...] SOURCES file...)
function(vorlant_library name)
  cmake_parse_arguments(ARG "" "" "USES;QT;SOURCES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  list(TRANSFORM ARG_QT PREPEND Qt6::)
  target_link_libraries(${name} PUBLIC ${ARG_USES} ${ARG_QT})
endfunction()
