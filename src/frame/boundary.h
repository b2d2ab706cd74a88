// The boundary between the host and the logic: the one place where exceptions become statuses.
//
// Every interface method that can do more than copy a number runs its body through one of these,
// so no method has a handler of its own and nothing but a status leaves the module.
//
// There are two ways to fail. The file systems of addresses, and all that runs a client or speaks
// to a server, throw a ComException, and the boundary publishes it: its text ends in a position in
// the source. The local file system and the revisions test each status and publish it where they
// are (publish.h): those texts have no position, and each tells of its own operation.
#pragma once

#include "frame/publish.h"

#include <utility>

namespace tarnwell
{

// How a null out pointer is refused: with E_POINTER alone, or with message 106 published, too.
enum class NullPointer
{
    Bare,
    Published
};

// Inside a handler: the status of the exception in flight. A ComException is published; short
// memory is E_OUTOFMEMORY and anything else E_UNEXPECTED, both bare.
HRESULT StatusOfException(const Reporter& reporter) noexcept;

HRESULT RefuseNull(const Reporter& reporter, NullPointer null) noexcept;

// Runs `body`, which returns a status.
template <class Body> HRESULT AtBoundary(const Reporter& reporter, Body&& body) noexcept
{
    try
    {
        return std::forward<Body>(body)();
    }
    catch (...)
    {
        return StatusOfException(reporter);
    }
}

// The same for a method with an out value, which is checked and cleared first.
template <class Out, class Body>
HRESULT AtBoundary(const Reporter& reporter, NullPointer null, Out* out, Body&& body) noexcept
{
    if (out == nullptr)
        return RefuseNull(reporter, null);
    *out = Out{};
    return AtBoundary(reporter, std::forward<Body>(body));
}

} // namespace tarnwell
