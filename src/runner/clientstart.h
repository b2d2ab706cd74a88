// What every run of a client begins and ends with.
#pragma once

#include "frame/handle.h"
#include "runner/client.h"

namespace tarnwell
{

struct Pipe
{
    OsHandle read;
    OsHandle write;
};

// A pipe of which only the client's end is inheritable. The other never is, not even for a moment:
// a client that held the other end of its own input, or of another client's, would never see it
// end.
Pipe MakePipe(const ClientRow& row, OsHandle Pipe::*clientEnd);

// A started process, with its first thread's handle.
struct ClientProcess
{
    OsHandle process;
    OsHandle thread;

    // `preset` where the system doesn't tell.
    int ExitCode(int preset) const;
};

// The handles become its standard ones. `group` is one of CreateClientGroup, or none: then the
// client isn't in one.
struct ClientStreams
{
    HANDLE input;
    HANDLE output;
    HANDLE errors;
};
ClientProcess StartClient(const ClientRow& row, const ClientCall& call,
                          const ClientStreams& streams, const OsHandle& group = OsHandle());

// A client that was ended before it had printed all looks like one that had less to say.
void ThrowIfCrashed(const ClientRow& row, HANDLE process);

} // namespace tarnwell
