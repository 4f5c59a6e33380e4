# Sanitizers for every object, the SDK's included, with frame pointers for readable stacks.
if(ZKR_SANITIZE)
  add_compile_options(
    "$<$<COMPILE_LANGUAGE:CXX>:-fsanitize=${ZKR_SANITIZE}>"
    $<$<COMPILE_LANGUAGE:CXX>:-fno-omit-frame-pointer>
    $<$<COMPILE_LANGUAGE:CXX>:-fno-sanitize-recover=all>
    $<$<COMPILE_LANGUAGE:CXX>:-ftrivial-auto-var-init=pattern>)
  add_link_options(-fsanitize=${ZKR_SANITIZE})
endif()
