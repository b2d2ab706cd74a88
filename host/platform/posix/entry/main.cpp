#include "program.h"

#include <tarnwell/text.h>

int main(int count, char** arguments)
{
    return tarnwell::host::RunProgram([=] {
        std::vector<std::u16string> texts;
        for (int i = 1; i < count; ++i)
            texts.push_back(tarnwell::DecodeName(arguments[i]));
        return texts;
    });
}
