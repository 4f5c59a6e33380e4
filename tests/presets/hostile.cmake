# Damaged images, and the store under concurrent access and failures.
find_package(Threads REQUIRED)
zkr_test(corruption_test SOURCES CorruptionTest.cpp LINK zkr_params)
# Optimised and without sanitizers, since the reference reader runs some hundred thousand times. The
# code under test is in libraries and keeps its sanitizers.
set_source_files_properties(CorruptionTest.cpp PROPERTIES
  COMPILE_OPTIONS "-O2;-fno-sanitize=all" SKIP_PRECOMPILE_HEADERS ON)

set(system $<IF:$<BOOL:${WIN32}>,Win32,Posix>)
zkr_test(store_test SOURCES StoreTest.cpp Store${system}Test.cpp
  LINK zkr_params Threads::Threads)
