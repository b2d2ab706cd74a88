// Any bytes as the Subversion client's XML.
#include "frame/exception.h"
#include "subversion/svnparser.h"
#include "subversion/svnuri.h"
#include "support/output.h"
#include "support/target.h"

namespace tarnwell::fuzz
{

namespace
{

// Runs `read`, which may find something missing. There is one way to fail.
template <class Read> void Attempt(Read&& read)
{
    try
    {
        read();
    }
    catch (const ComException& failure)
    {
        Expect(static_cast<HRESULT>(failure.code) == E_FAIL, "what is missing is a plain failure");
        Expect(!failure.message.empty(), "a failure has a text");
    }
}

void CheckItem(const FSItem& item)
{
    Expect(item.isReadOnly != item.isDirectory, "files are read-only, folders aren't");
    Expect(!item.isDirectory || item.size == 0, "a folder has no size");
}

// No client prints such a listing. The first fact of a document is that of an inner list then, and
// the first item's that of the outer one.
bool HasListWithinList(const XmlNode& document)
{
    static const XmlPath inner("//lists//lists");
    XmlNodes nodes;
    Expect(SUCCEEDED(SelectXmlNodes(document, inner, nodes)), "a document can be searched");
    return !nodes.empty();
}

void CheckListing(const XmlNode& document)
{
    const FSItems items = ParseListOutput(document);
    for (const auto& item : items)
    {
        CheckItem(*item);
        Expect(item->text.find(u'/') != std::u16string::npos, "a name stands below its folder");
    }
    if (items.empty() || HasListWithinList(document))
        return;
    const auto first = ParseListItemOutput(document);
    CheckItem(*first);
    Expect(first->size == items[0]->size && first->revision == items[0]->revision &&
               first->modifiedTime == items[0]->modifiedTime,
           "the first item of a listing is the item of a listing of one");
}

// One text for all of them; for none if they can't be read.
std::u16string TextOfLog(const XmlNode& document)
{
    static const SVNUri uri(u"svn://h/r/a.txt");
    std::u16string text;
    Attempt([&] {
        for (const RevisionRecord& record : ParseLogOutput(uri, document))
            text += record.uri + u"\n" + record.author + u"\n" + record.description + u"\n";
    });
    return text;
}

void CheckLog(const XmlNode& document)
{
    static const SVNUri uri(u"svn://h/r/a.txt@7");
    for (const RevisionRecord& record : ParseLogOutput(uri, document))
    {
        Expect(record.uri == u"svn://h/r/a.txt@" + record.id, "a revision has its address");
        Expect(!record.author.empty(), "a revision has an author");
        Expect(record.modifiedTime == record.revisionTime, "there is one time");
    }
}

} // namespace

void Try(std::string_view bytes)
{
    XmlNode document;
    Attempt([&] { document = LoadSvnXml(OutputOf(bytes)); });
    if (!document)
        return;
    Attempt([&] { CheckListing(document); });
    Attempt([&] { CheckItem(*ParseListItemOutput(document)); });
    Attempt([&] { CheckItem(*ParseInfoOutput(document)); });
    Attempt([&] { CheckLog(document); });
    XmlNode log;
    Attempt([&] { log = LoadSvnLog(OutputOf(bytes)); });
    Expect(log && TextOfLog(log) == TextOfLog(document), "changed paths make no difference");
}

} // namespace tarnwell::fuzz
