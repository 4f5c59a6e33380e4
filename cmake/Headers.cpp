// The source file of the precompiled headers.
