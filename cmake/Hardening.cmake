# The C library's checked forms of functions that write to buffers. They need optimised code, and the
# sanitizers have checks of their own.
if(NOT WIN32 AND NOT ZKR_SANITIZE)
  add_compile_options(
    "$<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CONFIG:Release>>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>")
endif()
