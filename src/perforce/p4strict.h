// Questions to the Perforce client whose answers don't depend on anybody's settings, and what its
// failures mean.
#pragma once

#include "frame/hostuser.h"
#include "perforce/p4item.h"
#include "perforce/p4marshal.h"
#include "runner/runningclient.h"
#include "runner/strictclient.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

extern const ClientRow strictP4;

// Whom the client asks, and as whom. The password is in the client's environment, where nobody but
// the user sees it.
struct P4Login
{
    std::u16string options; // in front of the command
    std::vector<std::u16string> variables;
};

// What the address says, or the host if it is to be asked. Throws for a server that would have the
// client run a program.
P4Login P4LoginOf(const HostUIUser& host, const P4Item& item);

// What `words` of the client mean. `generic` is the client's own class of failures; 0 if it told
// none.
StrictFailure P4FailureOf(std::u16string_view words, std::uint64_t generic);

// Whether they say that the credentials were refused.
bool IsP4LoginFailure(std::u16string_view words);

// Who asks, and for what.
struct P4Asker
{
    const HostUIUser& host;
    const P4Item& item;
    const P4Login& login;
};

// A run of the client, and its answer.
class P4Question
{
public:
    // `command` with its options; `path` goes to the client's input, so that nothing in it is
    // anything but a name.
    P4Question(const P4Asker& asker, std::u16string_view command, std::string_view path,
               Patience& patience);

    // Sees as much of a record as has come. False if nothing more is wanted.
    using Watcher = std::function<bool(const P4Record& begun)>;

    // The next record that is no complaint; nothing at the end, and where `watch` wants no more.
    // Throws where the client has failed, which is known only at the end.
    std::optional<P4Record> Next(const Watcher& watch = {});
    // The same, where a failure is nothing, too; but for what isn't the client's own.
    std::optional<P4Record> NextOrNone();

    // At the end: what it complained of without failing, as that there is no such file.
    const std::string& Warning() const
    {
        return warning_;
    }

private:
    std::optional<P4Record> Read(const Watcher& watch = {});
    void Note(const P4Record& complaint);
    void Finish();
    [[noreturn]] void Fail(const std::u16string& words, std::uint64_t generic, int exitCode) const;

    const P4Asker asker_;
    Patience& patience_;
    std::unique_ptr<RunningClient> client_;
    P4RecordParser parser_;
    std::string warning_;
    std::string failure_;
    std::uint64_t generic_ = 0;
    bool hasFailed_ = false;
    bool isEnough_ = false;
};

// The text of what the client printed.
std::u16string P4Text(std::string_view bytes);

[[noreturn]] void ThrowP4Failure(const StrictFailure& failure, const std::u16string& insert,
                                 const std::u16string& words = {});

} // namespace tarnwell
