#pragma once

namespace tarnwell::test
{

// Whether this program runs with a sanitizer that has memory in its hands. Asked of the program and
// not of its compiler: the objects of one compilation are linked with a sanitizer and without.
bool HasSanitizer();

} // namespace tarnwell::test
