// The library's module is the test program itself.
void* hInstance = nullptr;
