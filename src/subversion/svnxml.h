// Reading the XML that the Subversion client prints while it still prints it. Starts nothing, and
// takes any bytes.
//
// It is the plain XML that this client writes: no document type, no comments, no sections of
// characters. Anything else isn't read, and so the document isn't complete.
#pragma once

#include "runner/feed.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwell
{

// An element with all that is in it, in the client's bytes. Of its own text and its children the
// order isn't kept.
struct SvnElement
{
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;
    std::vector<SvnElement> children;

    // The value of an attribute, and the first child of a name. Null without one.
    const std::string* Attribute(std::string_view wanted) const;
    const SvnElement* Child(std::string_view wanted) const;
    // The text of a child; null without one.
    const std::string* ChildText(std::string_view wanted) const;
};

// Gives the elements of one name, each as soon as its end has come. What is around them is read and
// dropped.
class SvnXmlReader
{
public:
    // Elements of more bytes than these are nobody's.
    static constexpr std::size_t mostBytes = mostRecordBytes;

    explicit SvnXmlReader(std::string_view wanted, std::size_t most = mostBytes)
        : wanted_(wanted), most_(most)
    {
    }

    void Feed(std::string_view bytes)
    {
        // Behind what is no XML nothing is read, however much comes.
        if (!isBad_)
            feed_.Add(bytes);
    }

    // The next one, if it has come as a whole and all before it is XML.
    std::optional<SvnElement> Next();

    // When there is no next one: whether a whole document has come, and nothing behind it.
    bool IsComplete() const
    {
        return !isBad_ && hasRoot_ && open_.empty() && feed_.IsEmpty();
    }

private:
    // Takes a tag, with the text in front of it. False if it isn't there yet, or is none.
    bool ReadOne();
    bool ReadPrologue();
    bool ReadTag(std::string_view token);
    bool ReadStart(std::string_view tag);
    bool ReadEnd(std::string_view name);
    bool IsKept() const;
    bool Fail();

    const std::string wanted_;
    const std::size_t most_;    // bytes
    std::size_t keptBytes_ = 0; // of the wanted element, as far as it was read
    ::tarnwell::Feed feed_;
    std::size_t searched_ = 0; // how far the end of the next token was looked for
    char quote_ = '\0';        // the mark of the value that stands there; NUL between values
    bool inTag_ = false;
    bool hasPrologue_ = false;
    bool hasRoot_ = false;
    bool isBad_ = false;
    std::vector<SvnElement> open_; // from the root on
    std::size_t kept_ = 0;         // which of them is wanted, from 1 on; 0: none
    std::optional<SvnElement> found_;
};

} // namespace tarnwell
