# Floating-point arithmetic exactly as written, and the same on both platforms: no contraction into
# fused multiply-adds, no reordering; baseline x86-64 except in files with flags of their own.
add_compile_options(-ffp-contract=off -fno-fast-math)

# zkr_vector_options(AVX2_FILE AVX512_FILE): kernels for registers that not every x86-64 processor
# has; selected at run time. For Windows the compiler aligns the stack to 16 bytes only but spills
# wide registers with aligned moves: the assembler turns those into unaligned ones.
function(zkr_vector_options avx2 avx512)
  set(unaligned_moves $<$<BOOL:${WIN32}>:-Wa,-muse-unaligned-vector-move>)
  set_source_files_properties(${avx2} PROPERTIES
    COMPILE_OPTIONS "-mavx2;${unaligned_moves}" SKIP_PRECOMPILE_HEADERS ON)
  set_source_files_properties(${avx512} PROPERTIES
    COMPILE_OPTIONS
      "-mavx512f;-mavx512dq;-mavx512vl;-mprefer-vector-width=512;${unaligned_moves}"
    SKIP_PRECOMPILE_HEADERS ON)
endfunction()
