// Any bytes as the XML that the Subversion client prints, whole and in pieces: what is taken is
// XML to the strictest of parsers, with the same in it.
#include "subversion/svnxml.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <expat.h>
#include <memory>
#include <string>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

struct Read
{
    std::vector<SvnElement> elements;
    bool isComplete = false;
};

Read ReadIn(std::string_view bytes, std::size_t piece, std::string_view name)
{
    SvnXmlReader reader(name);
    Read read;
    while (!bytes.empty())
    {
        reader.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (std::optional<SvnElement> element = reader.Next())
            read.elements.push_back(std::move(*element));
    }
    read.isComplete = reader.IsComplete();
    return read;
}

bool Same(const SvnElement& left, const SvnElement& right)
{
    return left.name == right.name && left.attributes == right.attributes &&
           left.text == right.text &&
           std::equal(left.children.begin(), left.children.end(), right.children.begin(),
                      right.children.end(), Same);
}

// The other parser's elements, with those that are open at the end.
struct Findings
{
    std::vector<SvnElement> open{SvnElement()};
};

Findings& In(void* data)
{
    return *static_cast<Findings*>(data);
}

void XMLCALL Begin(void* data, const char* name, const char** attributes)
{
    SvnElement& element = In(data).open.emplace_back();
    element.name = name;
    for (; *attributes != nullptr; attributes += 2)
        element.attributes.emplace_back(attributes[0], attributes[1]);
}

void XMLCALL End(void* data, const char*)
{
    std::vector<SvnElement>& open = In(data).open;
    SvnElement element = std::move(open.back());
    open.pop_back();
    open.back().children.push_back(std::move(element));
}

void XMLCALL Take(void* data, const char* bytes, int size)
{
    In(data).open.back().text.append(bytes, static_cast<std::size_t>(size));
}

void Collect(const SvnElement& element, std::string_view name, std::vector<SvnElement>& found)
{
    for (const SvnElement& child : element.children)
    {
        if (child.name == name)
            found.push_back(child);
        else
            Collect(child, name, found);
    }
}

// Characters that there are in old repositories, and in no XML.
bool HasForbiddenCharacters(std::string_view bytes)
{
    const std::u16string text = DecodeName(bytes);
    return std::any_of(text.begin(), text.end(), [](char16_t unit) {
        const bool isControl = unit < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\r';
        const bool isByte = unit >= 0xDC80 && unit <= 0xDCFF;
        return isControl || isByte || unit >= 0xFFFE;
    });
}

} // namespace

void Try(std::string_view bytes)
{
    const Read whole = ReadIn(bytes, bytes.size(), "entry");
    for (const std::size_t piece : {1U, 7U})
    {
        const Read pieces = ReadIn(bytes, piece, "entry");
        Expect(whole.isComplete == pieces.isComplete &&
                   std::equal(whole.elements.begin(), whole.elements.end(), pieces.elements.begin(),
                              pieces.elements.end(), Same),
               "pieces are read as the whole is");
    }
    // A text whose surrogates are no characters also looks like one of bytes that are none.
    if (!whole.isComplete || HasForbiddenCharacters(bytes))
        return;
    Findings found;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate("UTF-8"), &XML_ParserFree);
    XML_SetUserData(parser.get(), &found);
    XML_SetElementHandler(parser.get(), &Begin, &End);
    XML_SetCharacterDataHandler(parser.get(), &Take);
    Expect(XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) ==
               XML_STATUS_OK,
           "what is complete is XML");
    std::vector<SvnElement> expected;
    Collect(found.open[0], "entry", expected);
    Expect(std::equal(whole.elements.begin(), whole.elements.end(), expected.begin(),
                      expected.end(), Same),
           "it is the same in both");
}

} // namespace tarnwell::fuzz
