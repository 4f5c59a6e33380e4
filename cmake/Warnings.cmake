# Warnings for our own code; the SDK's headers are system headers, which give none. A constructor's
# parameter may have the name of the member that it sets: -Wshadow=local allows that. The build under
# Clang leaves out what GCC's warnings of the same name do not report.
add_library(zkr_warnings INTERFACE)
target_compile_options(zkr_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wno-unknown-pragmas
  $<$<CXX_COMPILER_ID:GNU>:-Wdouble-promotion>
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  $<$<CXX_COMPILER_ID:Clang>:-Wno-missing-braces>)
if(ZKR_WARNINGS_AS_ERRORS)
  target_compile_options(zkr_warnings INTERFACE -Werror)
endif()

# zkr_library(NAME SOURCES... LINK... [OWN_HEADERS]): one static library for one folder, headers
# beside the code. Includes name the folder; scripts/check_includes.py knows which folder may include
# which. With OWN_HEADERS the caller chooses what is precompiled.
function(zkr_library name)
  cmake_parse_arguments(arg "OWN_HEADERS" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE zkr_warnings)
  if(ZKR_PRECOMPILED_HEADERS AND NOT arg_OWN_HEADERS)
    target_precompile_headers(${name} REUSE_FROM zkr_headers)
  endif()
endfunction()
