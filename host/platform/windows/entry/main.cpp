#include "program.h"

#include "platform/windows/units.h"

int wmain(int count, wchar_t** arguments)
{
    return tarnwell::host::RunProgram([=] {
        std::vector<std::u16string> texts;
        for (int i = 1; i < count; ++i)
            texts.push_back(tarnwell::host::FromWide(arguments[i]));
        return texts;
    });
}
