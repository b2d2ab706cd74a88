#include "subversion/svnparser.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "subversion/svnuri.h"
#include "subversion/svnvalues.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// The parser gives S_FALSE for a missing node, which is a failure here.
void ThrowIfNotRead(HRESULT status)
{
    if (status == S_OK)
        return;
    const HRESULT failure = FAILED(status) ? status : E_FAIL;
    throw ComException(failure,
                       FormatMessageWithStatus(MessageId::SubversionCommunicationFailed, failure),
                       At(svnSource));
}

std::u16string ReadNodeText(const XmlNode& node, const XmlPath& path)
{
    std::u16string text;
    ThrowIfNotRead(ReadXmlText(node, path, text));
    return text;
}

// Texts that are looked at one after another, in the same memory.
class NodeTexts
{
public:
    // Valid until the next one is read.
    const std::u16string& Read(const XmlNode& node, const XmlPath& path)
    {
        ThrowIfNotRead(ReadXmlText(node, path, text_));
        return text_;
    }

private:
    std::u16string text_;
};

std::u16string ReadOptionalMessage(const XmlNode& node)
{
    static const XmlPath path("./msg/text()");
    std::u16string text;
    const HRESULT status = ReadXmlText(node, path, text);
    if (FAILED(status))
        ThrowIfNotRead(status);
    return text;
}

XmlNodes SelectAll(const XmlNode& document, const XmlPath& path)
{
    XmlNodes nodes;
    const HRESULT status = SelectXmlNodes(document, path, nodes);
    if (FAILED(status))
        ThrowIfNotRead(status);
    return nodes;
}

// Where an item's facts stand, as seen from the node that is asked.
struct ItemPaths
{
    XmlPath kind;
    XmlPath revision;
    XmlPath date;
    XmlPath size;
};

// Whatever isn't a file is a folder. Every file is read-only.
std::shared_ptr<FSItem> ReadItem(const XmlNode& node, const ItemPaths& paths, bool withSize,
                                 NodeTexts& texts)
{
    auto item = std::make_shared<FSItem>();
    item->isDirectory = texts.Read(node, paths.kind) != u"file";
    item->isReadOnly = !item->isDirectory;
    item->revision = ParseSvnNumber<std::uint32_t>(texts.Read(node, paths.revision));
    item->modifiedTime = ParseSvnDate(texts.Read(node, paths.date));
    if (withSize && !item->isDirectory)
        item->size = ParseSvnNumber<std::uint64_t>(texts.Read(node, paths.size));
    return item;
}

// The form that an address has in this module: with "svn" in front if it begins as one of `others`.
// All other addresses look the same to the client.
std::u16string OwnForm(std::u16string address, std::initializer_list<std::u16string_view> others)
{
    if (std::any_of(others.begin(), others.end(),
                    [&](std::u16string_view other) { return address.starts_with(other); }))
        address.insert(0, u"svn");
    return address;
}

const XmlPath& ListedPath()
{
    static const XmlPath path("//lists/list/@path");
    return path;
}

XmlNode Load(HANDLE file, const XmlUnasked* unasked)
{
    XmlNode document;
    const HRESULT status = LoadXml(file, unasked, document);
    if (FAILED(status))
        ThrowIfNotRead(status);
    return document;
}

} // namespace

XmlNode LoadSvnXml(HANDLE file)
{
    return Load(file, nullptr);
}

XmlNode LoadSvnLog(HANDLE file)
{
    // Most of a log, as a rule.
    constexpr XmlUnasked changedPaths{"logentry", "paths"};
    return Load(file, &changedPaths);
}

FSItems ParseListOutput(const XmlNode& document)
{
    static const XmlPath entries("//lists/list/entry");
    static const XmlPath name("./name/text()");
    static const ItemPaths paths{XmlPath("./@kind"), XmlPath("./commit/@revision"),
                                 XmlPath("./commit/date/text()"), XmlPath("./size/text()")};
    const std::u16string base =
        OwnForm(ReadNodeText(document, ListedPath()), {u"http:", u"https:", u"file:"}) + u"/";
    constexpr std::size_t revisionRoom = 16; // for what is put behind it afterwards
    NodeTexts texts;
    FSItems items;
    for (const XmlNode& entry : SelectAll(document, entries))
    {
        std::shared_ptr<FSItem> item = ReadItem(entry, paths, true, texts);
        const std::u16string& leaf = texts.Read(entry, name);
        item->text.reserve(base.size() + leaf.size() + revisionRoom);
        item->text += base;
        item->text += leaf;
        items.push_back(std::move(item));
    }
    return items;
}

std::shared_ptr<FSItem> ParseListItemOutput(const XmlNode& document)
{
    static const ItemPaths paths{XmlPath("//lists/list/entry/@kind"),
                                 XmlPath("//lists/list/entry/commit/@revision"),
                                 XmlPath("//lists/list/entry/commit/date/text()"),
                                 XmlPath("//lists/list/entry/size/text()")};
    std::u16string target = ReadNodeText(document, ListedPath());
    NodeTexts texts;
    std::shared_ptr<FSItem> item = ReadItem(document, paths, true, texts);
    item->text = std::move(target);
    return item;
}

std::shared_ptr<FSItem> ParseInfoOutput(const XmlNode& document)
{
    static const XmlPath url("//info/entry/url/text()");
    static const ItemPaths paths{XmlPath("//info/entry/@kind"),
                                 XmlPath("//info/entry/commit/@revision"),
                                 XmlPath("//info/entry/commit/date/text()"), XmlPath("./@none")};
    std::u16string address =
        OwnForm(ReadNodeText(document, url), {u"file://", u"http://", u"https://"});
    NodeTexts texts;
    std::shared_ptr<FSItem> item = ReadItem(document, paths, false, texts);
    item->text = std::move(address);
    return item;
}

std::vector<RevisionRecord> ParseLogOutput(const Uri& uri, const XmlNode& document)
{
    static const XmlPath entries("//log/logentry");
    static const XmlPath revision("./@revision");
    static const XmlPath author("./author/text()");
    static const XmlPath date("./date/text()");
    const std::u16string base = uri.Clone()->GetText() + u"@";
    std::vector<RevisionRecord> records;
    for (const XmlNode& entry : SelectAll(document, entries))
    {
        RevisionRecord record;
        record.id = ReadNodeText(entry, revision);
        record.author = ReadNodeText(entry, author);
        record.modifiedTime = ParseSvnDate(ReadNodeText(entry, date));
        record.revisionTime = record.modifiedTime;
        record.description = TrimmedOfWhiteSpace(ReadOptionalMessage(entry));
        record.uri = base + record.id;
        records.push_back(std::move(record));
    }
    return records;
}

} // namespace tarnwell
