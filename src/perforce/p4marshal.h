// What the Perforce client prints with "-G": dictionaries, in the marshalled form of Python. Texts
// have their length in front, so that nothing in one can be taken for anything else. Starts
// nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// One dictionary. Numbers are there as decimal digits.
class P4Record
{
public:
    // Empty where there is none of that name.
    const std::string& Text(std::string_view key) const;
    // As those that are numbered: "rev" and 0 are "rev0".
    const std::string& Text(std::string_view key, std::size_t index) const;
    bool Has(std::string_view key) const;
    // What kind of record it is: "stat", "info", "error", "text" or "binary".
    const std::string& Code() const
    {
        return Text("code");
    }

    // A later value of the same name takes the place of an earlier one.
    void Set(std::string key, std::string value);

private:
    std::map<std::string, std::string, std::less<>> texts_;
};

class P4RecordParser
{
public:
    // Dictionaries of more bytes than these are nobody's.
    static constexpr std::size_t mostBytes = mostRecordBytes;

    explicit P4RecordParser(std::size_t most = mostBytes) : most_(most) {}

    void Feed(std::string_view bytes)
    {
        // Behind what is no dictionary nothing is read, however much comes.
        if (!isBroken_)
            feed_.Add(bytes);
    }

    // The next dictionary, if it has come as a whole and is one.
    std::optional<P4Record> Next();

    // What has come of the next one, where there is no next one yet.
    const P4Record& Begun() const
    {
        return record_;
    }

    // At the end, when there is no next one: whether all that came was read.
    bool IsComplete() const
    {
        return !isBroken_ && !isInside_ && feed_.IsEmpty();
    }

private:
    class Reading;
    // A name and its value go to the record; false if they haven't come as a whole, or are none.
    bool ReadPair();

    const std::size_t most_; // bytes
    std::size_t size_ = 0;   // of the record, as far as it was read
    tarnwell::Feed feed_;
    P4Record record_; // as far as it was read
    bool isInside_ = false;
    bool isBroken_ = false;
};

// The non-negative number that all of `text` is; nothing for any other text.
std::optional<std::uint64_t> P4Number(std::string_view text);

} // namespace tarnwell
