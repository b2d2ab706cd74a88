#include "support/perforce/commands.h"

#include <cstdlib>

void tarnwell::test::perforce::PrintBytesFromNowOn() {}

int main(int count, char** texts)
{
    const char* const folder = std::getenv("TARNWELL_DEPOT");
    return tarnwell::test::perforce::Run({texts + 1, texts + count},
                                         folder == nullptr ? "." : folder);
}
