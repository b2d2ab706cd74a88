#include "support/addresses.h"

#include "unit/matchcount.h"

#include <algorithm>
#include <iterator>
#include <typeinfo>

namespace tarnwell::fuzz
{

namespace
{

// A question, and how many matches it may take at most: one for the parts, and one more where the
// class looks at each new address.
struct Question
{
    void (*ask)(const Uri&);
    std::uint64_t matches;
};

constexpr Question questions[] = {
    {[](const Uri& uri) { uri.GetScheme(); }, 1},
    {[](const Uri& uri) { uri.GetUser(); }, 1},
    {[](const Uri& uri) { uri.GetPassword(); }, 1},
    {[](const Uri& uri) { uri.GetHost(); }, 1},
    {[](const Uri& uri) { uri.GetPort(); }, 1},
    {[](const Uri& uri) { uri.GetHostAndPort(); }, 1},
    {[](const Uri& uri) { uri.GetPath(); }, 1},
    {[](const Uri& uri) { uri.GetParts(); }, 1},
    {[](const Uri& uri) { uri.GetMatchedParts(); }, 1},
    {[](const Uri& uri) { uri.GetGroup(0); }, 1},
    {[](const Uri& uri) { uri.GetGroup(-1); }, 1},
    {[](const Uri& uri) { uri.GetGroup(10000); }, 1},
    {[](const Uri& uri) { uri.GetParent(); }, 2},
    {[](const Uri& uri) { uri.WithoutCredentials(); }, 2},
    {[](const Uri& uri) { uri.ForDisplay(); }, 2},
    {[](const Uri& uri) { uri.ForComparison(); }, 2},
};

void CheckCopies(const Uri& uri)
{
    const std::shared_ptr<Uri> created = uri.Create(uri.GetText());
    const Uri& copy = *created;
    Expect(copy.GetText() == uri.GetText(), "an address keeps its text");
    Expect(typeid(copy) == typeid(uri), "what an address makes is of its own class");
}

void CheckSame(const UriParts& left, const UriParts& right, const char* promise)
{
    Expect(left.scheme == right.scheme && left.user == right.user &&
               left.password == right.password && left.host == right.host &&
               left.port == right.port && left.path == right.path,
           promise);
}

void CheckParts(const Uri& uri, const UriParts& parts)
{
    CheckSame(parts,
              {uri.GetScheme(), uri.GetUser(), uri.GetPassword(), uri.GetHost(), uri.GetPort(),
               uri.GetPath()},
              "all parts at once are the parts one by one");
    CheckSame(parts, uri.GetMatchedParts(), "the parts are what the pattern says");
    const std::u16string hostAndPort = uri.GetHostAndPort();
    Expect(hostAndPort.starts_with(parts.host), "the host comes first");
    Expect((hostAndPort == parts.host) == (parts.port == noPort), "a port follows where one is");
    Expect(uri.GetText().starts_with(parts.scheme + u"://"), "the scheme is where it was");
    Expect(uri.GetText().ends_with(parts.path), "the path is where it was");
    Expect(parts.path.find_first_of(u"\n\r\u2028\u2029") == std::u16string::npos,
           "a path is one line");
    Expect(uri.GetGroup(-1).empty() && uri.GetGroup(10000).empty(), "other groups are empty");
}

void CheckComposed(const Uri& uri, UriParts parts, bool hostNeedsUser)
{
    const std::shared_ptr<Uri> composed = uri.Compose(parts);
    const std::shared_ptr<Uri> bare = uri.WithoutCredentials();
    if (parts.user.empty())
        parts.password.clear();
    CheckSame(composed->GetParts(), parts, "what is composed is taken apart alike");
    Expect(composed->Compose(parts)->GetText() == composed->GetText(), "once is enough");
    if (hostNeedsUser && !parts.host.empty())
        Expect(bare->GetText() == parts.scheme + u"://" + parts.host + u"/" + parts.path,
               "credentials go, and the host is a path");
    else
        CheckSame(bare->GetParts(), {parts.scheme, {}, {}, parts.host, parts.port, parts.path},
                  "credentials go, and nothing else");
    UriParts local = parts;
    local.host.clear();
    Expect(uri.Compose(local)->GetText() == parts.scheme + u"://" + parts.path,
           "without a host there is a path only");
    const std::size_t last = parts.path.rfind(u'/');
    parts.path.resize(last == std::u16string::npos ? 0 : last);
    CheckSame(uri.GetParent()->GetParts(), parts, "a parent differs in its path only");
}

} // namespace

bool CheckAddress(const Uri& uri, bool hostNeedsUser)
{
    CheckCopies(uri);
    std::size_t answered = 0;
    for (const Question& question : questions)
    {
        const std::uint64_t before = test::MatchCount();
        answered += Succeeds(uri.GetText(), [&] { question.ask(uri); }) ? 1 : 0;
        Expect(test::MatchCount() - before <= question.matches, "a question takes no second match");
    }
    Expect(answered == 0 || answered == std::size(questions), "all is answered, or nothing");
    if (answered == 0)
        return false;
    CheckParts(uri, uri.GetParts());
    CheckComposed(uri, uri.GetParts(), hostNeedsUser);
    return true;
}

} // namespace tarnwell::fuzz
