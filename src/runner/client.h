// Running a version-control system's command-line client: hidden, with no input, its error stream
// drained, and waited for without a time limit.
#pragma once

#include "resources/messages.h"
#include "runner/bufferedreader.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarnwell
{

// In what the clients differ.
struct ClientRow
{
    const char16_t* source;      // the file system's name in positions of failures
    const char16_t* hiddenNames; // variables with this beginning are kept from it; null: inherits
    Decoding decoding;           // of both streams
    BareLineFeed bareLineFeed = BareLineFeed::LooksLikeTheEnd;
    int exitCodePreset = 1;    // stands where the system doesn't tell the exit code
    MessageId notFound;        // no such program
    MessageId communication;   // any other failure to run it
    MessageId reportedFailure; // it wrote to its error stream
    HRESULT missing = S_OK;    // the status of `notFound`, where that isn't the system's
    // "NAME=VALUE": what the client has in its environment in the place of the host's of that name.
    std::span<const char16_t* const> variables = {};
};

struct ClientCall
{
    std::u16string program;
    std::u16string arguments; // the rest of the command line, in its final form
    std::optional<std::u16string> workingFolder = std::nullopt; // none: the host's
    // Where standard output goes: into an inheritable file, or through a pipe to `readOutput`,
    // which runs on a thread of the run's own. What that leaves unread is dropped.
    HANDLE outputFile = nullptr;
    OutputReader readOutput = nullptr;
    // As those of the row, for this run.
    std::vector<std::u16string> variables = {};
};

struct ClientOutcome
{
    int exitCode;
    std::u16string errors; // all of the error stream
};

// Returns when the client and the readers of its streams have ended. Throws if the client can't be
// started, or if anything but the client itself ended it, whatever it wrote before. Throws what
// `readOutput` throws, and if memory is too short for the error text.
ClientOutcome RunClient(const ClientRow& row, const ClientCall& call);

// Throws a message of the row's, for a platform call around the client that has failed.
[[noreturn]] void ThrowClientFailure(const ClientRow& row, MessageId message, DWORD error);

// Any text on the error stream is a failure, even a warning. Nothing else is: the exit code isn't
// looked at.
void ThrowReportedErrors(const ClientRow& row, const std::u16string& address,
                         const std::u16string& errors);

} // namespace tarnwell
