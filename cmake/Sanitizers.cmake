# Sanitizers go to every object, the SDK's included, and leave the stack readable.
if(ZKR_SANITIZE)
  add_compile_options(-fsanitize=${ZKR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
                      -ftrivial-auto-var-init=pattern)
  add_link_options(-fsanitize=${ZKR_SANITIZE})
endif()
