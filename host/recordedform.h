// A content as a repository has it, whatever a system makes of it in a work tree.
#pragma once

#include "content.h"

#include <span>
#include <string>
#include <utility>

namespace tarnwell::host
{

// What the system converts.
struct Conversions
{
    bool keywords = false;
    bool lineEnds = false;

    explicit operator bool() const
    {
        return keywords || lineEnds;
    }
};

// Reads a content in the form that both a repository's and a work tree's have: "$Id: a.c 5 ann $"
// as "$Id$", and every end of a line as a line feed.
class RecordedForm
{
public:
    RecordedForm(Reader reader, const Conversions& conversions)
        : reader_(std::move(reader)), conversions_(conversions)
    {
    }

    // As those of Reader.
    std::span<const char> Next();

private:
    void Take(char byte);
    void TakeOfLine(char byte);

    Reader reader_;
    const Conversions conversions_;
    std::string block_;     // what was given last
    std::string ready_;     // what comes next
    std::string candidate_; // what may be a keyword, from its "$" on
    bool isBehindReturn_ = false;
};

} // namespace tarnwell::host
