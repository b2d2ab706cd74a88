#include "platform/xml.h"

#include "platform/ascii.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/xml/deeppath.h"
#include "platform/posix/xml/plainpath.h"
#include "platform/posix/xml/usualxml.h"
#include "platform/posix/xml/wellformed.h"
#include "platform/status.h"
#include "platform/wide.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <sys/stat.h>

namespace tarnwell
{

struct XmlPath::Compiled
{
    std::optional<posix::PlainPath> plain;
    std::optional<posix::DeepPath> deep;
    pugi::xpath_query query;
};

XmlPath::XmlPath(const char* expression)
    : compiled_(std::make_unique<Compiled>(Compiled{posix::PlainPath::From(expression),
                                                    posix::DeepPath::From(expression),
                                                    pugi::xpath_query(expression)}))
{
}

XmlPath::~XmlPath() = default;

namespace posix
{
namespace
{

// The tree's names and values lie in the bytes that it was read from.
struct Document
{
    std::string bytes;
    pugi::xml_document tree;
};

// A node is an address inside its document.
pugi::xml_node NodeOf(const XmlNode& node)
{
    return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node.get()));
}

XmlNode NodeIn(const XmlNode& document, const pugi::xml_node& node)
{
    return {document, node.internal_object()};
}

// The value of the attribute or text that is asked for first; null if there is none.
const char* FirstIn(const pugi::xml_node& node, const XmlPath::Compiled& question)
{
    if (question.plain)
        return question.plain->FirstIn(node);
    if (question.deep)
        return question.deep->FirstIn(node);
    const pugi::xpath_node found = question.query.evaluate_node(node);
    if (found.attribute())
        return found.attribute().value();
    return IsText(found.node()) ? found.node().value() : nullptr;
}

// What is left to read in a plain file, so that memory for it is taken once; else 0.
std::size_t ExpectedSize(HANDLE file)
{
    struct stat facts = {};
    const bool known = fstat(DescriptorOf(file), &facts) == 0 && facts.st_size > 0;
    return known ? static_cast<std::size_t>(facts.st_size) : 0;
}

HRESULT ReadBytes(HANDLE file, std::string& bytes)
{
    constexpr std::size_t block = 1 << 14;
    constexpr std::size_t most = std::numeric_limits<DWORD>::max() / 2;
    bytes.resize(std::max(ExpectedSize(file) + 1, block));
    std::size_t filled = 0;
    for (DWORD count = 1; count > 0; filled += count)
    {
        if (filled == bytes.size())
            bytes.resize(filled * 2);
        const auto room = static_cast<DWORD>(std::min(bytes.size() - filled, most));
        if (!ReadFile(file, bytes.data() + filled, room, &count, nullptr))
            return StatusFromLastError();
    }
    bytes.resize(filled);
    return S_OK;
}

HRESULT FromUtf8(std::string_view bytes, std::u16string& text)
{
    text.clear();
    if (bytes.empty())
        return S_OK;
    if (bytes.size() > std::numeric_limits<int>::max())
        return E_OUTOFMEMORY;
    // Never more units than bytes.
    const int size = static_cast<int>(bytes.size());
    text.resize(bytes.size());
    if (WidenAscii(bytes, text.data()) == bytes.size())
        return S_OK;
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, Wide(text.data()), size);
    text.resize(static_cast<std::size_t>(units));
    return units > 0 ? S_OK : StatusFromLastError();
}

// The same document with U+FFFD in place of what is no UTF-8. Nothing if that changes nothing, or
// can't be done.
std::optional<std::string> InUtf8(std::string_view bytes)
{
    std::u16string text;
    if (FAILED(FromUtf8(bytes, text)))
        return std::nullopt;
    std::optional<std::string> repaired = EncodeName(text);
    return repaired != bytes ? repaired : std::nullopt;
}

// Takes the parts, which lie in `bytes` in their order, out of it.
void Erase(const std::vector<std::string_view>& parts, std::string& bytes)
{
    if (parts.empty())
        return;
    char* end = bytes.data() + (parts.front().data() - bytes.data());
    for (std::size_t i = 0; i < parts.size(); ++i)
    {
        const char* const next = parts[i].data() + parts[i].size();
        const char* const stop =
            i + 1 < parts.size() ? parts[i + 1].data() : bytes.data() + bytes.size();
        end = std::copy(next, stop, end);
    }
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    bytes.shrink_to_fit();
}

bool IsUsualWithout(const XmlUnasked* unasked, std::string& bytes)
{
    if (unasked == nullptr)
        return IsUsualXml(bytes);
    std::vector<std::string_view> parts;
    const bool isUsual = IsUsualXml(bytes, *unasked, parts);
    if (isUsual)
        Erase(parts, bytes);
    return isUsual;
}

bool MakeWellFormed(const XmlUnasked* unasked, std::string& bytes)
{
    if (IsUsualWithout(unasked, bytes) || IsWellFormed(bytes))
        return true;
    std::optional<std::string> repaired = InUtf8(bytes);
    if (!repaired || !IsWellFormed(*repaired))
        return false;
    bytes = std::move(*repaired);
    return true;
}

bool Parse(const XmlUnasked* unasked, Document& document)
{
    constexpr unsigned options =
        pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_wconv_attribute;
    return MakeWellFormed(unasked, document.bytes) &&
           document.tree.load_buffer_inplace(document.bytes.data(), document.bytes.size(), options,
                                             pugi::encoding_utf8);
}

} // namespace
} // namespace posix
} // namespace tarnwell

using namespace tarnwell;
using namespace tarnwell::posix;

extern "C" HRESULT LoadXml(HANDLE file, const XmlUnasked* unasked, XmlNode& document)
{
    const auto loaded = std::make_shared<Document>();
    const HRESULT status = ReadBytes(file, loaded->bytes);
    if (FAILED(status))
        return status;
    if (!Parse(unasked, *loaded))
        return E_FAIL;
    document = NodeIn(loaded, loaded->tree);
    return S_OK;
}

extern "C" HRESULT ReadXmlText(const XmlNode& node, const XmlPath& path, std::u16string& text)
{
    text.clear();
    const char* const value = FirstIn(NodeOf(node), path.Ready());
    return value == nullptr ? S_FALSE : FromUtf8(value, text);
}

extern "C" HRESULT SelectXmlNodes(const XmlNode& node, const XmlPath& path, XmlNodes& nodes)
{
    pugi::xpath_node_set found = path.Ready().query.evaluate_node_set(NodeOf(node));
    found.sort();
    nodes.clear();
    nodes.reserve(found.size());
    for (const pugi::xpath_node& each : found)
        nodes.push_back(NodeIn(node, each.node()));
    return S_OK;
}
