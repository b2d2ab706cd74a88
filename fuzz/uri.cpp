// Any text as an address of each class.
#include "git/gituri.h"
#include "mercurial/hguri.h"
#include "perforce/p4uri.h"
#include "subversion/svnuri.h"
#include "support/addresses.h"

#include <tarnwell/text.h>

namespace tarnwell::fuzz
{

namespace
{

// `uri` is null where the text is no address of the class.
using Check = void (*)(const std::u16string& text, const Uri* uri);

void CheckPlain(const std::u16string& text, const Uri* uri)
{
    Expect(LooksLikeUri(text) == (uri != nullptr && uri->GetScheme().size() > 1),
           "a scheme of two letters makes an address");
    if (uri == nullptr)
        return;
    Expect(uri->GetGroup(0) == text, "the whole text is matched");
    Expect(uri->Clone()->GetText() == text, "a copy is the same address");
    Expect(uri->ForDisplay()->GetText() == uri->WithoutCredentials()->GetText(),
           "an address is shown without its credentials");
    Expect(uri->ForComparison()->GetText() == uri->WithoutCredentials()->GetText(),
           "an address is compared without its credentials");
}

template <class Address> void CheckWorkingCopy(const std::u16string& text, const Uri* uri)
{
    const std::u16string path = uri == nullptr ? text : uri->GetPath();
    const std::u16string file(workingCopyMarker.Strip(path));
    const std::optional<std::u16string_view> revision = workingCopyMarker.RevisionOf(path);
    Expect(ToolPath<Address>(text) == file, "the client's path is without the revision");
    Expect(path == (revision ? file + u"#" + std::u16string(*revision) : file),
           "a path is a file and its revision");
    if (uri == nullptr)
        return;
    const std::u16string start = uri->GetScheme() + u"://";
    Expect(text == start + path, "there is a scheme, a path and nothing else");
    Expect(uri->Clone()->GetText() == start + file, "a copy is without the revision");
    Expect(uri->ForComparison()->GetText() == start + file, "the revision isn't compared");
    Expect(uri->ForDisplay()->GetText() == text, "the revision is shown");
    const Address other(start + file + u"#1");
    Expect(workingCopyMarker.Strip(other.GetPath()) == file &&
               workingCopyMarker.RevisionOf(other.GetPath()) == u"1",
           "another revision is of the same file");
}

void CheckSubversion(const std::u16string& text, const Uri* uri)
{
    if (uri == nullptr)
        return;
    const UriParts parts = SvnPartsOf(text);
    Expect(parts.path == uri->GetPath() && parts.scheme == uri->GetScheme(),
           "the parts are those of the address");
    const std::u16string file(svnMarker.Strip(parts.path));
    const std::optional<std::u16string_view> revision = svnMarker.RevisionOf(parts.path);
    Expect(parts.path == (revision ? file + u"@" + std::u16string(*revision) : file),
           "a path is a file and its revision");
    const std::u16string compared = uri->ForComparison()->GetText();
    const std::u16string shown = uri->ForDisplay()->GetText();
    Expect(compared.starts_with(std::u16string(SvnRealScheme(parts.scheme)) + u"://"),
           "the client is told the real scheme");
    Expect(compared.ends_with(file), "the revision isn't compared");
    Expect(shown == compared + parts.path.substr(file.size()), "the revision is shown");
    Expect(uri->Clone()->GetText().ends_with(file), "a copy is without the revision");
}

// Null also for what loses its server or its form when it is composed, which is as designed: a
// server without a user, and line ends in an authority.
std::shared_ptr<Uri> MakePerforce(const std::u16string& text)
{
    std::shared_ptr<Uri> uri = Make<P4Uri>(text);
    const bool isKept = uri && (uri->GetHost().empty() || !uri->GetUser().empty()) &&
                        text.find_first_of(u"\n\r\u2028\u2029") == std::u16string::npos;
    return isKept ? uri : nullptr;
}

void CheckPerforce(const std::u16string& text, const Uri* uri)
{
    if (uri == nullptr)
        return;
    Expect(uri->GetGroup(0) == text, "nothing falls silently");
    const std::u16string path = uri->GetPath();
    const std::u16string file(p4Marker.Strip(path));
    Expect(uri->Clone()->GetPath() == file, "a copy is without the revision");
    Expect(uri->GetPort() == noPort, "a port is the server's");
    const std::u16string depot = NormalizeDepotPath(path);
    Expect(depot.starts_with(u"//") && depot.ends_with(path), "a depot has two slashes");
    Expect(NormalizeDepotPath(depot) == depot, "once is enough");
}

// A row for each class of addresses.
struct AddressClass
{
    std::shared_ptr<Uri> (*make)(const std::u16string& text);
    Check check;
    bool hostNeedsUser = false;
};

constexpr AddressClass classes[] = {
    {Make<Uri>, CheckPlain},
    {Make<GITUri>, CheckWorkingCopy<GITUri>},
    {Make<HGUri>, CheckWorkingCopy<HGUri>},
    {Make<SVNUri>, CheckSubversion},
    {MakePerforce, CheckPerforce, true},
};

} // namespace

void Try(std::string_view bytes)
{
    const std::u16string text = DecodeName(bytes);
    for (const AddressClass& row : classes)
    {
        const std::shared_ptr<Uri> uri = row.make(text);
        row.check(text, uri && CheckAddress(*uri, row.hostNeedsUser) ? uri.get() : nullptr);
    }
}

} // namespace tarnwell::fuzz
