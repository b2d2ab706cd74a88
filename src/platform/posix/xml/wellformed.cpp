// The library that answers questions about documents accepts much that isn't XML. This one is
// strict and answers no questions.
#include "platform/posix/xml/wellformed.h"

#include <algorithm>
#include <cstddef>
#include <expat.h>
#include <memory>
#include <new>
#include <strings.h>
#include <type_traits>

namespace tarnwell::posix
{
namespace
{

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

void XMLCALL RefuseType(void* parser, const char*, const char*, const char*, int)
{
    XML_StopParser(static_cast<XML_Parser>(parser), XML_FALSE);
}

void XMLCALL CheckDeclaration(void* parser, const char* version, const char* encoding, int)
{
    const std::string_view given = version == nullptr ? "1.0" : version;
    const bool isUtf8 = encoding == nullptr || strcasecmp(encoding, "UTF-8") == 0;
    if (given != "1.0" || !isUtf8)
        XML_StopParser(static_cast<XML_Parser>(parser), XML_FALSE);
}

Parser MakeParser()
{
    // Stands between a namespace and a name where this library reports both as one word. A
    // namespace that holds the separator is refused, unless it is one of the characters that
    // addresses are made of.
    constexpr char separator = ':';
    Parser parser(XML_ParserCreateNS("UTF-8", separator), &XML_ParserFree);
    if (!parser)
        throw std::bad_alloc();
    XML_UseParserAsHandlerArg(parser.get());
    XML_SetStartDoctypeDeclHandler(parser.get(), &RefuseType);
    XML_SetXmlDeclHandler(parser.get(), &CheckDeclaration);
    return parser;
}

} // namespace

bool IsWellFormed(std::string_view document)
{
    constexpr std::size_t most = std::size_t{1} << 30;
    const Parser parser = MakeParser();
    bool isLast = false;
    while (!isLast)
    {
        const std::string_view piece = document.substr(0, most);
        document.remove_prefix(piece.size());
        isLast = document.empty();
        if (XML_Parse(parser.get(), piece.data(), static_cast<int>(piece.size()), isLast) !=
            XML_STATUS_OK)
        {
            if (XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY)
                throw std::bad_alloc();
            return false;
        }
    }
    return true;
}

} // namespace tarnwell::posix
