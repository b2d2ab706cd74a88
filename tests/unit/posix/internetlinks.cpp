// The linker puts these functions before the platform's.
#include "unit/fakeinternet.h"

#define CALL(name, result, parameters, arguments)                                                  \
    extern "C" result __real_##name parameters;                                                    \
    extern "C" result __wrap_##name parameters                                                     \
    {                                                                                              \
        auto* const fake = tarnwell::test::FakeInternet::Active();                                 \
        return fake == nullptr ? __real_##name arguments : fake->name arguments;                   \
    }
#include "unit/internetcalls.inc"
