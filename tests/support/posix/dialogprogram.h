// A stand-in for the desktop's dialog program, which answers without asking anybody.
#pragma once

#include "support/tempfolder.h"

#include <string>

namespace tarnwell::test
{

class DialogProgram
{
public:
    static constexpr int yes = 0;
    static constexpr int no = 1;

    // From now on a program of this name answers with `exitCode`.
    void AnswerWith(int exitCode, const std::string& name = "zenity") const;

    // What a program was asked last, an argument a line; empty if none was.
    std::string Asked() const;

    // Where the programs lie.
    const std::filesystem::path& Folder() const
    {
        return folder_.Path();
    }

    // Lets this process find the programs, and no others of the kind, with a display at hand or
    // without. For a child process: nothing is put back.
    void UseHere(bool display = true) const;

private:
    TempFolder folder_;
};

} // namespace tarnwell::test
