// What the file server answers to the question for a volume's snapshots: their number, the number
// of those that it names here, and the size of the names in bytes, each as 32 bits with the lowest
// first; then the names in UTF-16, each terminated. No number in it leads beyond the bytes that are
// there. (On Linux only in tests, see snapshots.h.)
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// How much of an answer, in bytes, tells the size of the whole.
inline constexpr std::size_t snapshotAnswerStart = 16;

// The size in bytes of the whole answer that begins with `start`.
std::uint64_t SnapshotAnswerSize(std::span<const std::byte, snapshotAnswerStart> start);

// The names in the answer, as many as it says, and no more than there are.
std::vector<std::u16string> ReadSnapshotTokens(std::span<const std::byte> answer);

// When the snapshot of this name was taken, as a FILETIME; 0 if the name tells no time.
std::uint64_t SnapshotTimeFromToken(std::u16string_view token);

} // namespace tarnwell
