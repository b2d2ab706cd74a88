#include "system.h"

#include <windows.h>

#include <objbase.h>

#include <cstdlib>

namespace tarnwell::host
{

namespace
{

struct ConsoleState
{
    UINT characters = 0;
    DWORD output = 0;
    DWORD errors = 0;
};
ConsoleState before;

// The mode that was, 0 where there is no console.
DWORD TurnSequencesOn(DWORD stream)
{
    const HANDLE console = GetStdHandle(stream);
    DWORD mode = 0;
    if (GetConsoleMode(console, &mode))
        SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return mode;
}

void RestoreMode(DWORD stream, DWORD mode)
{
    if (mode != 0)
        SetConsoleMode(GetStdHandle(stream), mode);
}

// The console is the user's, and outlives the program.
void RestoreConsole()
{
    RestoreMode(STD_OUTPUT_HANDLE, before.output);
    RestoreMode(STD_ERROR_HANDLE, before.errors);
    if (before.characters != 0)
        SetConsoleOutputCP(before.characters);
}

} // namespace

// The language of the module's texts follows the user's display language; there is no choice.
void PrepareProcess(std::u16string_view)
{
    // The shell, which deletes for the module, wants a thread of this kind.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    before = {GetConsoleOutputCP(), TurnSequencesOn(STD_OUTPUT_HANDLE),
              TurnSequencesOn(STD_ERROR_HANDLE)};
    SetConsoleOutputCP(CP_UTF8);
    std::atexit(RestoreConsole);
}

Language LanguageOfTexts()
{
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE ? Language::Japanese
                                                                      : Language::English;
}

} // namespace tarnwell::host
