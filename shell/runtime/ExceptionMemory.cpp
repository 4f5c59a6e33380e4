// Frees the memory that the C++ runtime inside the library reserves for exceptions thrown when
// memory has run out: 72,704 bytes for each loading of the library, which the runtime never frees.
namespace __gnu_cxx {
// GCC's own, for memory checkers at the end of a program. Nothing may be thrown afterwards.
void __freeres();
}  // namespace __gnu_cxx

namespace {

struct ExceptionMemory {
    ~ExceptionMemory() { __gnu_cxx::__freeres(); }
};

// Constructed first and therefore destroyed last, since other destructors may throw.
__attribute__((init_priority(101))) const ExceptionMemory exceptionMemory;

}  // namespace
