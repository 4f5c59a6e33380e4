# The arithmetic is exactly what the source says, and the same for both platforms: no contraction
# into fused multiply-adds, no reordering, baseline x86-64 unless a single file asks for more.
add_compile_options(-ffp-contract=off -fno-fast-math)
