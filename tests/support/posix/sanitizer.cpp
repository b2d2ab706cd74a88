#include "support/posix/sanitizer.h"

// Each is there where its sanitizer is.
extern "C" [[gnu::weak]] void __asan_init();
extern "C" [[gnu::weak]] void __tsan_init();

namespace tarnwell::test
{

bool HasSanitizer()
{
    return __asan_init != nullptr || __tsan_init != nullptr;
}

} // namespace tarnwell::test
