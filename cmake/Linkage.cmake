# Hidden visibility: libraries export only what their export lists name. The product depends only on
# system libraries.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(WIN32)
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  add_link_options(-static)
else()
  # Every address is bound when the program or library is loaded, and read-only from then on.
  add_link_options(-Wl,-z,relro,-z,now)
endif()

# zkr_exports(TARGET): the library exports only what exports.def (Windows) or exports.map (Linux) in
# its folder names, and links the C++ runtime statically.
function(zkr_exports target)
  if(WIN32)
    target_sources(${target} PRIVATE exports.def)
  else()
    set(exports ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
  endif()
  zkr_own_runtime(${target})
endfunction()

# zkr_own_runtime(TARGET): the library contains its own C++ runtime, which leaks nothing when the
# library is unloaded.
function(zkr_own_runtime target)
  set(runtime ${CMAKE_SOURCE_DIR}/shell/runtime)
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  if(WIN32)
    target_sources(${target} PRIVATE ${runtime}/ExceptionMemory.cpp ${runtime}/Win32Threads.cpp)
    target_link_options(${target} PRIVATE -s)
    return()
  endif()
  target_sources(${target} PRIVATE ${runtime}/ResidentLibraries.cpp)
  if(NOT ZKR_SANITIZE)
    target_sources(${target} PRIVATE ${runtime}/ExceptionMemory.cpp)
    # Hidden symbols keep the runtime separate from the host's. Garbage collection drops its unused
    # sections, some of which would need a newer C library.
    target_link_options(${target} PRIVATE -s -Wl,-z,defs -static-libstdc++ -static-libgcc
      -Wl,--exclude-libs,libstdc++.a:libgcc.a:libgcc_eh.a -Wl,--gc-sections)
  endif()
endfunction()
