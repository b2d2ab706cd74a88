// Any bytes as what the platform gives of a file's streams: headers, names, data. The walk finds
// what a plain reading of the same bytes finds, and never reads or writes past an end.
#include "local/datastreams.h"
#include "local/findrecord.h"
#include "platform/backup.h"
#include "support/target.h"

#include <tarnwell/classes.h>
#include <tarnwell/items.h>

#include <algorithm>
#include <cstring>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::size_t headerSize = 20;
constexpr std::size_t longestName = 522;
constexpr std::u16string_view leaf = u"file.txt";

// The bytes of the present input that the walk hasn't come to yet, and whether it has ended.
std::string_view rest;
int ends = 0;

BOOL CALLBACK ReadBytes(HANDLE, BYTE* buffer, DWORD size, DWORD* read, BOOL abort, BOOL, LPVOID*)
{
    if (abort)
    {
        ++ends;
        return 1;
    }
    *read = static_cast<DWORD>(std::min<std::size_t>(size, rest.size()));
    std::memcpy(buffer, rest.data(), *read);
    rest.remove_prefix(*read);
    return 1;
}

BOOL CALLBACK SkipBytes(HANDLE, DWORD low, DWORD high, DWORD*, DWORD*, LPVOID*)
{
    const std::uint64_t distance = (std::uint64_t{high} << 32) | low;
    if (distance > rest.size())
        return 0;
    rest.remove_prefix(static_cast<std::size_t>(distance));
    return 1;
}

struct Found
{
    std::u16string name;
    std::uint64_t size;

    friend bool operator==(const Found&, const Found&) = default;
};

std::uint64_t NumberAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= std::uint64_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    return number;
}

// A half unit at the end stands for its low byte.
std::u16string NameIn(std::string_view bytes)
{
    std::u16string name;
    for (std::size_t at = 0; at < bytes.size(); at += 2)
    {
        const std::size_t size = std::min<std::size_t>(2, bytes.size() - at);
        name += static_cast<char16_t>(NumberAt(bytes, at, size));
    }
    name.resize(std::min(name.size(), name.find(u'\0')));
    const std::size_t colon = name.rfind(u':');
    return colon == 0 ? name : name.substr(0, colon);
}

std::vector<Found> PlainReading(std::string_view bytes)
{
    std::vector<Found> found;
    while (bytes.size() >= headerSize)
    {
        const std::uint64_t id = NumberAt(bytes, 0, 4);
        const std::uint64_t size = NumberAt(bytes, 8, 8);
        const std::uint64_t nameSize = NumberAt(bytes, 16, 4);
        bytes.remove_prefix(headerSize);
        if (nameSize > longestName || nameSize > bytes.size())
            break;
        const std::u16string name =
            std::u16string(leaf) + NameIn(bytes.substr(0, static_cast<std::size_t>(nameSize)));
        if (id == 4)
            found.push_back({name.substr(0, MAX_PATH - 1), size});
        bytes.remove_prefix(static_cast<std::size_t>(nameSize));
        if (size > bytes.size())
            break;
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
    return found;
}

} // namespace

void Try(std::string_view bytes)
{
    static const BackupCalls calls{&ReadBytes, &SkipBytes};
    backupCalls = &calls;
    rest = bytes;
    ends = 0;
    WIN32_FIND_DATAW record{};
    SetNames(record, leaf);
    std::vector<WIN32_FIND_DATAW> list;
    const HRESULT status =
        EnumerateDataStreams(u"/dev/null", record, list, {CLSID_Win32Folder, IID_IFolder});
    Expect(status == S_OK, "what is wrong in the bytes is no failure");
    Expect(ends == 1, "a walk is ended once");

    std::vector<Found> found;
    for (const WIN32_FIND_DATAW& stream : list)
    {
        found.push_back({std::u16string(NameOf(stream)),
                         (std::uint64_t{stream.nFileSizeHigh} << 32) | stream.nFileSizeLow});
    }
    Expect(found == PlainReading(bytes), "the walk finds what is there");
}

} // namespace tarnwell::fuzz
