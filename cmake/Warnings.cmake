# Warnings for our own code; the SDK's headers are system headers, which give none.
add_library(zkr_warnings INTERFACE)
target_compile_options(zkr_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wdouble-promotion -Wno-unknown-pragmas)
if(ZKR_WARNINGS_AS_ERRORS)
  target_compile_options(zkr_warnings INTERFACE -Werror)
endif()

# zkr_library(NAME SOURCES... LINK...): one static library for one folder, headers beside the code.
# Includes name the folder; which folder may include which, scripts/check_sources.sh knows.
function(zkr_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE zkr_warnings)
endfunction()
