// What the Perforce client prints, made into finished items and revisions: no client and no server.
#include "frame/handle.h"
#include "perforce/p4commands.h"
#include "perforce/p4parser.h"
#include "perforce/p4uri.h"
#include "platform/wide.h"
#include "support/costs.h"
#include "support/folder.h"

#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <string>

namespace
{

using namespace tarnwell;

constexpr int rounds = 11;
constexpr std::size_t fileCount = 100'000;
constexpr std::size_t revisionCount = 10'000;

std::string FstatText()
{
    std::string text;
    for (std::size_t i = 0; i < fileCount; ++i)
    {
        const std::string number = std::to_string(i);
        text += "... depotFile //depot/project/main/src/folder/file number " + number +
                ".cpp\n... headAction edit\n... headType text\n... headTime 1243857600\n"
                "... headRev " +
                std::to_string(i % 50 + 1) + "\n... headChange " + number +
                "\n... headModTime 1243857540\n... fileSize " + number +
                "\n... digest 5D41402ABC4B2A76B9719D911017C592\n\n";
    }
    return text;
}

std::string FilelogText()
{
    std::string text = "//depot/project/main/src/folder/file.cpp\n";
    for (std::size_t i = revisionCount; i > 0; --i)
    {
        const std::string number = std::to_string(i);
        text += "... #" + number + " change " + number +
                " edit on 2009/06/01 12:00:00 by somebody@workspace (text)\n\n\tA message of usual "
                "length, and a number: " +
                number + "\n\n";
    }
    return text;
}

// A file with what the client prints, read as from the client.
class Printed
{
public:
    Printed(const std::string& path, const std::string& text)
        : path_(path.begin(), path.end()), size(text.size())
    {
        std::ofstream(path) << text;
    }

    template <class Read> auto Through(Read read) const
    {
        const OsHandle file(CreateFileW(Wide(path_), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        BufferedReader reader(file.Get(), Decoding::Widen, BareLineFeed::IsALine);
        return read(reader);
    }

private:
    std::u16string path_;

public:
    const std::size_t size; // bytes
};

// Whether it is read at `limit` megabytes a second or better.
template <class Action>
bool MeasureSpeed(const char* name, const Printed& printed, double limit, Action&& action)
{
    bench::Costs costs;
    for (int i = 0; i < rounds; ++i)
        costs.Add(action);
    const double megabytes = static_cast<double>(printed.size) / 1e6;
    const double speed = megabytes / bench::MedianOf(costs.time);
    const double processor = megabytes / bench::MedianOf(costs.processor);
    const bool isWithin = speed >= limit;
    std::printf("%-34s %6.1f MB at %6.1f MB/s, %6.1f of the processor; %.0f: %s\n", name, megabytes,
                speed, processor, limit, isWithin ? "within" : "BEYOND");
    return isWithin;
}

bool MeasureMemory(const FSItems& items, std::size_t before)
{
    constexpr double limit = 400; // bytes
    std::size_t texts = 0;
    for (const auto& item : items)
        texts += item->text.size() * sizeof(char16_t);
    const double each =
        static_cast<double>(mallinfo2().uordblks - before - texts) / static_cast<double>(fileCount);
    const bool isWithin = each <= limit;
    std::printf("%-34s %6.1f bytes beyond its text; %.0f: %s\n", "Memory of an item", each, limit,
                isWithin ? "within" : "BEYOND");
    return isWithin;
}

} // namespace

int main()
{
    const bench::TempFolder ground;
    const Printed files(ground / "fstat", FstatText());
    const Printed history(ground / "filelog", FilelogText());
    const P4Uri folder(u"p4://somebody@server:1666///depot/project/main/src/folder");
    const auto list = [&] {
        FSItems items = files.Through(ReadFstat);
        CompleteP4Files(folder, items);
        return items;
    };

    const std::size_t before = mallinfo2().uordblks;
    const FSItems items = list();
    bool isWithin = items.size() == fileCount && MeasureMemory(items, before);
    isWithin &= MeasureSpeed("100,000 files into finished items", files, 50, [&] { list(); });
    isWithin &= MeasureSpeed("10,000 revisions", history, 20, [&] {
        if (history.Through(ReadFileLog).records.size() != revisionCount)
            std::puts("BEYOND: another number of revisions");
    });
    return isWithin ? 0 : 1;
}
