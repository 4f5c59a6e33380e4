// Frees what the C++ runtime inside the library sets aside for exceptions that are thrown when
// memory has run out: 72,704 bytes with each loading, which the runtime itself keeps for good.
namespace __gnu_cxx {
// GCC's own, for memory checkers at the end of a program. Nothing may be thrown afterwards.
void __freeres();
}  // namespace __gnu_cxx

namespace {

struct ExceptionMemory {
    ~ExceptionMemory() { __gnu_cxx::__freeres(); }
};

// Made first and therefore destroyed last: whatever else ends may still throw.
__attribute__((init_priority(101))) const ExceptionMemory exceptionMemory;

}  // namespace
