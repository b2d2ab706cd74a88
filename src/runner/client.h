// Running a version-control system's command-line client: hidden, with no input, its error stream
// drained, and waited for without a time limit.
#pragma once

#include "frame/handle.h"
#include "resources/messages.h"
#include "runner/decoding.h"
#include "runner/thread.h"

#include <functional>
#include <memory>
#include <string>

namespace tarnwell
{

// In what the clients differ.
struct ClientRow
{
    const char16_t* source;      // the file system's name in positions of failures
    const char16_t* hiddenNames; // variables with this beginning are kept from it; null: inherits
    DWORD creationFlags;
    Decoding decoding;
    MessageId notFound;        // no such program
    MessageId communication;   // any other failure to run it
    MessageId reportedFailure; // it wrote to its error stream
};

// Makes the reader of a pipe's read end, which stays the caller's.
using ReaderMaker = std::function<std::shared_ptr<Thread>(HANDLE readEnd)>;

struct ClientCall
{
    std::u16string program;
    std::u16string arguments; // the rest of the command line, in its final form
    const std::u16string* workingFolder = nullptr; // null: the host's
    // Where standard output goes: an inheritable file, or a pipe to what `outputReader` makes.
    HANDLE outputFile = nullptr;
    ReaderMaker outputReader;
};

struct ClientOutcome
{
    int exitCode = 1;      // what the system tells, where it does
    std::u16string errors; // all of the error stream
};

// Throws only if the client can't be started, or memory is too short for its error text.
ClientOutcome RunClient(const ClientRow& row, const ClientCall& call);

// Throws a message of the row's, for a platform call around the client that has failed.
[[noreturn]] void ThrowClientFailure(const ClientRow& row, MessageId message, DWORD error);

// Any text on the error stream is a failure, a warning included, and nothing else is: exit codes
// are not looked at.
void ThrowReportedErrors(const ClientRow& row, const std::u16string& address,
                         const std::u16string& errors);

} // namespace tarnwell
