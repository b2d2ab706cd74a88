// Running the program that stands beside the tests (child/).
#pragma once

#include "frame/handle.h"
#include "support/childprogram.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

// In quotes, as a command line must have it for the program to see just this.
std::u16string Quoted(const std::u16string& argument);
// The program with these arguments.
std::u16string ChildCommand(const std::vector<std::u16string>& arguments);

// The texts that a child printed.
std::vector<std::string> Texts(const std::string& printed);

struct Pipe
{
    OsHandle read;
    OsHandle write;
};

// Of which a child can inherit the end for it, and never the other.
Pipe PipeToChild();
Pipe PipeFromChild();
// To the end.
std::string ReadPipe(const OsHandle& pipe);

struct StartOptions
{
    std::optional<std::u16string> folder = {};
    // Ends in an empty text; the host's if not given.
    std::optional<std::u16string> environment = {};
};

// A child with its three pipes.
class Child
{
public:
    explicit Child(std::u16string commandLine, const StartOptions& options = {});

    // ERROR_SUCCESS if it runs.
    DWORD StartError() const
    {
        return startError_;
    }
    HANDLE Process() const
    {
        return process_.Get();
    }
    HANDLE Thread() const
    {
        return thread_.Get();
    }

    void CloseInput();
    // Both to their ends; the error text is taken while the output is.
    void Collect();
    const std::string& Output() const
    {
        return output_;
    }
    const std::string& ErrorText() const
    {
        return errorText_;
    }
    // Nothing if it isn't to be had.
    std::optional<DWORD> WaitForExitCode() const;

private:
    Pipe inputPipe_ = PipeToChild();
    Pipe outputPipe_ = PipeFromChild();
    Pipe errorPipe_ = PipeFromChild();
    DWORD startError_;
    OsHandle process_;
    OsHandle thread_;
    std::string output_;
    std::string errorText_;
};

struct Ended
{
    DWORD startError;
    std::optional<DWORD> exitCode;
    std::string output;
    std::string errorText;
};

// From its start to its end, without input.
Ended RunLine(const std::u16string& commandLine, const StartOptions& options = {});
Ended RunChild(const std::vector<std::u16string>& arguments, const StartOptions& options = {});

} // namespace tarnwell::test
