// The source file of the tests' precompiled headers.
