// The linker finds these pointers before it looks for the system's own in its libraries.
#include "unit/fakeinternet.h"

#define CALL(name, result, parameters, arguments)                                                  \
    static result WINAPI Fake##name parameters                                                     \
    {                                                                                              \
        return tarnwell::test::FakeInternet::Active()->name arguments;                             \
    }                                                                                              \
    extern "C"                                                                                     \
    {                                                                                              \
        extern const auto __imp_##name = &Fake##name;                                              \
    }
#include "unit/internetcalls.inc"
