// Any bytes as XML: what the strictest of parsers refuses is refused, and what it finds is found.
#include "platform/xml.h"
#include "platform/wide.h"
#include "support/output.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <cctype>
#include <expat.h>
#include <memory>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::size_t mostAttributes = 3;

struct Element
{
    std::vector<std::u16string> attributes;
    std::u16string text;
    // Nothing but characters are in it.
    bool isPlain = true;
};

struct Findings
{
    XML_Parser parser = nullptr;
    // In the order in which they begin.
    std::vector<Element> elements;
    std::vector<std::size_t> open;
    bool isRefused = false;

    void Refuse()
    {
        isRefused = true;
        XML_StopParser(parser, XML_FALSE);
    }
    void Interrupt()
    {
        if (!open.empty())
            elements[open.back()].isPlain = false;
    }
};

Findings& In(void* data)
{
    return *static_cast<Findings*>(data);
}

void XMLCALL Begin(void* data, const char*, const char** attributes)
{
    Findings& found = In(data);
    found.Interrupt();
    found.open.push_back(found.elements.size());
    Element& element = found.elements.emplace_back();
    for (; *attributes != nullptr; attributes += 2)
        element.attributes.push_back(DecodeName(attributes[1]));
}

void XMLCALL End(void* data, const char*)
{
    In(data).open.pop_back();
}

void XMLCALL Take(void* data, const char* bytes, int size)
{
    Findings& found = In(data);
    found.elements[found.open.back()].text +=
        DecodeName(std::string_view(bytes, static_cast<std::size_t>(size)));
}

// What the parser finds; nothing if it refuses.
std::vector<Element> FindAll(std::string_view bytes)
{
    Findings found;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS("UTF-8", ':'), &XML_ParserFree);
    found.parser = parser.get();
    XML_SetUserData(found.parser, &found);
    XML_SetElementHandler(found.parser, &Begin, &End);
    XML_SetCharacterDataHandler(found.parser, &Take);
    XML_SetCommentHandler(found.parser, [](void* data, const char*) { In(data).Interrupt(); });
    XML_SetProcessingInstructionHandler(
        found.parser, [](void* data, const char*, const char*) { In(data).Interrupt(); });
    XML_SetCdataSectionHandler(
        found.parser, [](void* data) { In(data).Interrupt(); }, [](void*) {});
    XML_SetDoctypeDeclHandler(
        found.parser,
        [](void* data, const char*, const char*, const char*, int) { In(data).Refuse(); },
        [](void*) {});
    XML_SetXmlDeclHandler(
        found.parser, [](void* data, const char* version, const char* encoding, int) {
            const std::string_view name = encoding == nullptr ? "utf-8" : encoding;
            constexpr std::string_view utf8 = "utf-8";
            const bool isUtf8 =
                std::equal(name.begin(), name.end(), utf8.begin(), utf8.end(),
                           [](char a, char b) { return std::tolower(a) == std::tolower(b); });
            if ((version != nullptr && std::string_view(version) != "1.0") || !isUtf8)
                In(data).Refuse();
        });
    const bool isDone = XML_Parse(found.parser, bytes.data(), static_cast<int>(bytes.size()),
                                  XML_TRUE) == XML_STATUS_OK;
    if (!isDone || found.isRefused)
        found.elements.clear();
    return std::move(found.elements);
}

XmlNodes AllElements(const XmlNode& document)
{
    static const XmlPath all("//*");
    XmlNodes nodes;
    Expect(SelectXmlNodes(document, all, nodes) == S_OK, "a question is answered");
    return nodes;
}

std::string InUtf8(std::string_view bytes)
{
    std::u16string units(bytes.size(), u'\0');
    const int count = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()),
                                          Wide(units.data()), static_cast<int>(units.size()));
    units.resize(static_cast<std::size_t>(count));
    return EncodeName(units).value_or("");
}

void CheckAttributes(const XmlNode& node, const Element& element)
{
    static const XmlPath paths[mostAttributes] = {XmlPath("./@*[1]"), XmlPath("./@*[2]"),
                                                  XmlPath("./@*[3]")};
    for (std::size_t i = 0; i < mostAttributes; ++i)
    {
        std::u16string text;
        const HRESULT status = ReadXmlText(node, paths[i], text);
        const bool isThere = i < element.attributes.size();
        Expect(status == (isThere ? S_OK : S_FALSE), "there are as many attributes");
        Expect(!isThere || text == element.attributes[i], "an attribute has its value");
    }
}

void CheckText(const XmlNode& node, const Element& element)
{
    static const XmlPath path("./text()");
    const bool isBlank = element.text.find_first_not_of(u" \t\r\n") == std::u16string::npos;
    std::u16string text;
    if (element.isPlain && !isBlank)
        Expect(ReadXmlText(node, path, text) == S_OK && text == element.text,
               "an element has its text");
}

} // namespace

void Try(std::string_view bytes)
{
    XmlNode document;
    const bool isTaken = LoadXml(OutputOf(bytes), nullptr, document) == S_OK;
    const XmlNodes nodes = isTaken ? AllElements(document) : XmlNodes();
    // What is no UTF-8 is replaced here, and refused there.
    const std::string text = InUtf8(bytes);
    const std::vector<Element> elements = FindAll(text);
    Expect(isTaken == !elements.empty(), "what is taken has an element");
    Expect(nodes.size() == elements.size(), "what one takes, and no more, the other takes");
    for (std::size_t i = 0; i < elements.size(); ++i)
    {
        CheckAttributes(nodes[i], elements[i]);
        CheckText(nodes[i], elements[i]);
    }
}

} // namespace tarnwell::fuzz
