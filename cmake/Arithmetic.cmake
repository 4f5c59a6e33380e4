# Floating-point arithmetic exactly as written, and the same on both platforms: no contraction into
# fused multiply-adds, no reordering; baseline x86-64 except in files with flags of their own.
add_compile_options(-ffp-contract=off -fno-fast-math)
