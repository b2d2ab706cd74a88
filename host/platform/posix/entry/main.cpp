#include "program.h"

#include <tarnwell/text.h>

int main(int count, char** arguments)
{
    std::vector<std::u16string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(tarnwell::DecodeName(arguments[i]));
    return tarnwell::host::RunProgram(texts);
}
