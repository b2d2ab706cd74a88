#include "client/pairs.h"

#include "client/table.h"
#include "support/costs.h"
#include "support/files.h"

#include <tarnwell/client/filesystem.hpp>

#include <cstdio>
#include <stdexcept>

namespace tarnwell::bench
{

namespace
{

void Require(bool holds, const char* failure)
{
    if (!holds)
        throw std::runtime_error(failure);
}

// Whether the pair is within its limit.
bool Measure(const Pair& pair)
{
    // These find the caches cold, and aren't counted.
    pair.module();
    pair.bare();
    Costs module;
    Costs bare;
    // Who comes first changes, so that neither is always the one behind the other.
    for (int round = 0; round < pair.rounds; ++round)
    {
        if (round % 2 == 0)
            module.Add(pair.module);
        bare.Add(pair.bare);
        if (round % 2 == 1)
            module.Add(pair.module);
    }
    const Spread ratio = RatioOf(module.time, bare.time);
    const bool isWithin = ratio.middle <= pair.factor;
    PrintRow({pair.name, module.time.size(), InMilliseconds(MedianOf(module.time)),
              InMilliseconds(MedianOf(bare.time)), Shown(ratio),
              Shown(RatioOf(module.processor, bare.processor)), Shown(pair.factor), isWithin});
    return isWithin;
}

} // namespace

ComPtr<IFileSystem> MakeFileSystem(const GUID& classId)
{
    static const client::Module module;
    return module.Create(classId, nullptr).Get();
}

Pair Reading(std::string name, int rounds, double factor, const ComPtr<IFileSystem>& system,
             const std::string& address, std::uint64_t size, const BareRun& bare)
{
    return {std::move(name), rounds, factor,
            [=, wide = Widened(address)] {
                Require(ReadThrough(system.Get(), wide) == size, "the module reads another size");
            },
            [=] {
                Require(RunBare(bare) == size, "the client writes another size");
            }};
}

Pair ListingRevisions(std::string name, int rounds, double factor,
                      const ComPtr<IFileSystem>& system, const std::string& address,
                      std::uint32_t count, const BareRun& bare)
{
    return {std::move(name), rounds, factor,
            [=, wide = Widened(address)] {
                ComPtr<IRevisions> revisions;
                std::uint32_t found = 0;
                system.As<IFileSystemRevisions>()->GetRevisions(wide.c_str(), 0, revisions.Out());
                revisions->GetCount(&found);
                Require(found == count, "the module lists another number of revisions");
            },
            [=] {
                Require(RunBare(bare) > 0, "the client lists nothing");
            }};
}

int Measure(const std::vector<Pair>& pairs)
{
    int result = 0;
    for (const Pair& pair : pairs)
        result |= Measure(pair) ? 0 : 1;
    return result;
}

} // namespace tarnwell::bench
