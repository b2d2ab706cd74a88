// Runs of the program beside the tests (platform/child) in the place of a client. For tests of the
// module's inside.
#pragma once

#include "runner/bufferedreader.h"
#include "runner/client.h"
#include "runner/outputfile.h"
#include "support/childprogram.h"
#include "support/thrown.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnwell::test
{

inline constexpr ClientRow childClient{
    .source = u"childclient",
    .hiddenNames = nullptr,
    .decoding = Decoding::Utf8,
    .notFound = MessageId::GitClientNotFound,
    .communication = MessageId::GitCommunicationFailed,
    .reportedFailure = MessageId::GitAccessFailed,
};

inline std::shared_ptr<OsHandle> NewOutputFile()
{
    return MakeOutputFile(u"test://address", childClient.source);
}

// The program with these arguments, in its final form, and the output in that file.
inline ClientCall CallOfChild(const std::u16string& arguments, const OsHandle& output)
{
    ClientCall call;
    call.program = ChildProgram().u16string();
    call.arguments = arguments;
    call.outputFile = output.Get();
    return call;
}

// The same, where nobody wants the output.
inline ClientOutcome RunChildClient(const std::u16string& arguments,
                                    const ClientRow& row = childClient)
{
    return RunClient(row, CallOfChild(arguments, *NewOutputFile()));
}

inline std::u16string Printed(const OsHandle& output)
{
    EXPECT_TRUE(Rewind(output));
    return BufferedReader(output.Get(), Decoding::Utf8).ReadAll();
}

} // namespace tarnwell::test
