// How far a copy is, told to hosts that want to know.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <cstdint>
#include <optional>

namespace tarnwell
{

// Of one copy. Nothing that the host does here fails it.
class Amounts
{
public:
    // Asks the host's progress object whether it wants to know; null doesn't.
    explicit Amounts(ICopyProgress* progress);

    bool AreWanted() const
    {
        return static_cast<bool>(host_);
    }
    // In bytes. Nothing for a total that nobody knows.
    void Report(std::uint64_t done, std::optional<std::uint64_t> total) const;

private:
    ComPtr<ICopyAmounts> host_;
};

} // namespace tarnwell
