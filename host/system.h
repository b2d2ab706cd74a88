// What the program wants from the system besides the module: one implementation in each folder
// of platform/. Text that goes in and out is UTF-16, see tarnwell/text.h.
#pragma once

#include "words.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell::host
{

// To be called before the module is loaded. Puts the process into the state that the module counts
// on; `language` ("en", "ja" or empty) chooses the language of the module's texts where the system
// lets a program choose.
void PrepareProcess(std::u16string_view language);

// The language that the module's texts will be in, once the process is prepared.
Language LanguageOfTexts();

// Standard output is bytes on every platform: nothing turns LF into CR LF.
// Both return false if the bytes can't be written.
bool WriteOutput(std::string_view bytes);
bool WriteErrors(std::string_view bytes);
bool OutputIsTerminal();
bool ErrorsAreTerminal();
// Whether that terminal obeys control sequences, as those for colours.
bool OutputObeysSequences();
bool ErrorsObeySequences();
// In columns; 0 if it is no terminal, or doesn't tell.
std::size_t OutputWidth();

// Reads up to `size` bytes of standard input; 0 at its end, nothing on failure.
std::optional<std::size_t> ReadInput(void* buffer, std::size_t size);

// The file that a text names, and the other way round.
std::filesystem::path FilePath(const std::u16string& path);
std::u16string FromPath(const std::filesystem::path& path);

// `path` from the root of the file system, without "." and ".." in it. Nothing is looked up.
std::u16string AbsolutePath(const std::u16string& path);

// While one of these lives, the first Ctrl-C doesn't end the program but sets a flag.
class InterruptWatch
{
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    static bool Interrupted();
};

// Ends the program, and runs nothing more of it: other threads may hold what that would wait for.
[[noreturn]] void EndProgram(int exitCode);

// Whether there is anybody whom a question before a deletion would reach.
bool SomebodyCanAnswer();

// What a program prints, without its error text; nothing if it fails or can't be run. It is looked
// for where the module would find it. `arguments` are for the shell.
std::optional<std::string> OutputOf(const std::string& program, const char* arguments);

} // namespace tarnwell::host
