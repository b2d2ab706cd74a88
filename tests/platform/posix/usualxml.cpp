// Documents that are taken without the strict parser, and paths that are followed without the
// library: as those would have it.
#include "platform/posix/xml/usualxml.h"
#include "platform/posix/xml/wellformed.h"
#include "platform/xml.h"
#include "support/components.h"
#include "support/opened.h"

#include <gmock/gmock.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace tarnwell::test
{
namespace
{

using namespace std::string_view_literals;
using posix::IsUsualXml;
using posix::IsWellFormed;

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST(UsualXml, IsWhatClientsPrint)
{
    const std::string start(declaration);
    EXPECT_TRUE(IsUsualXml(start +
                           "<lists>\n<list\n   path=\"file:///r\">\n<entry\n   kind='dir'>"
                           "<name>a &amp; b's \"c\" [1]</name>\n</entry></list></lists>\n"));
    EXPECT_TRUE(IsUsualXml(start + "<log><msg>\u65e5\u672c\U0001F600]] ></msg><msg/></log>"));
    EXPECT_TRUE(IsUsualXml("<a/>"));
}

// Each of these alone makes a document unusual, and most make it none.
constexpr std::string_view unusual[] = {
    "",
    "text",
    "<a>",
    "</a>",
    "<a></b>",
    "<a/><a/>",
    "<a/>x",
    "<a>]]></a>",
    "<a>&nbsp;</a>",
    "<a>&</a>",
    "<a>\x01</a>",
    "<a>\0</a>"sv,
    "<a>\xFF</a>",
    "<a>\xEF\xBF\xBF</a>",
    "<a>\xED\xA0\x80</a>",
    "<a b='<'/>",
    "<a b='1' b='2'/>",
    "<a b='1'c='2'/>",
    "<a b=1/>",
    "<a b/>",
    "<a xmlns='urn:x'/>",
    "<p:a/>",
    "<a p:b='1'/>",
    "<1a/>",
    "< a/>",
    "<a / >",
    "<!DOCTYPE a><a/>",
    "<a><!-- --></a>",
    "<a><![CDATA[x]]></a>",
    "<a><?b c?></a>",
};

TEST(UsualXml, IsNothingElse)
{
    for (const std::string_view document : unusual)
        EXPECT_FALSE(IsUsualXml(document)) << testing::PrintToString(document);
    std::string many = "<a";
    for (int i = 0; i < 100; ++i)
        many += " b" + std::to_string(i) + "='1'";
    EXPECT_FALSE(IsUsualXml(many + "/>"));
}

constexpr std::string_view pieces[] = {
    "<a>",
    "</a>",
    "<b>",
    "</b>",
    "<c/>",
    "<a x='1'>",
    "<b x=\"1\" y='2' >",
    "<c x = '&lt;'/>",
    "text",
    " ",
    "\n",
    "]",
    "]]>",
    ">",
    "&amp;",
    "&apos;",
    "&",
    "'",
    "\"",
    "\xC3\xA4",
    "\xC3",
    "\x7F",
    "\x1F",
    "</a >",
    "\xF0\x9F\x98\x80",
};

std::string RandomDocument(std::mt19937& random)
{
    constexpr std::size_t most = 8;
    std::string document(random() % 2 == 0 ? declaration : "");
    document += "<r>";
    for (std::size_t count = random() % most; count > 0; --count)
        document += pieces[random() % std::size(pieces)];
    return document + "</r>";
}

// Elements of few names in each other, well formed.
std::string NestedDocument(std::mt19937& random)
{
    constexpr int steps = 16;
    constexpr std::array<std::string_view, 3> names{"a", "b", "r"};
    std::vector<std::string_view> open{"r"};
    std::string document = "<r>";
    for (int i = 0; i < steps; ++i)
    {
        const std::size_t choice = random() % 6;
        if (choice < names.size())
        {
            open.push_back(names[choice]);
            document += "<" + std::string(names[choice]);
            document += random() % 2 == 0 ? ">" : " x='" + std::to_string(i) + "'>";
        }
        else if (choice == names.size())
            document += "text" + std::to_string(i);
        else if (open.size() > 1)
        {
            document += "</" + std::string(open.back()) + ">";
            open.pop_back();
        }
    }
    for (; !open.empty(); open.pop_back())
        document += "</" + std::string(open.back()) + ">";
    return document;
}

TEST(UsualXml, IsAlwaysWellFormed)
{
    constexpr int documents = 50'000;
    std::mt19937 random; // the same each time
    int usual = 0;
    for (int i = 0; i < documents; ++i)
    {
        const std::string document = RandomDocument(random);
        if (!IsUsualXml(document))
            continue;
        ++usual;
        EXPECT_TRUE(IsWellFormed(document)) << testing::PrintToString(document);
    }
    EXPECT_GT(usual, documents / 20);
}

// One byte of a usual document is another.
TEST(UsualXml, IsWellFormedWhateverOneByteIs)
{
    const std::string document =
        std::string(declaration) + "<a b='1' c=\"2\">x &lt;<d/>]]\xC3\xA4 </a>\n";
    ASSERT_TRUE(IsUsualXml(document));
    for (std::size_t at = 0; at < document.size(); ++at)
    {
        for (int byte = 0; byte < 256; ++byte)
        {
            std::string changed = document;
            changed[at] = static_cast<char>(byte);
            EXPECT_TRUE(!IsUsualXml(changed) || IsWellFormed(changed))
                << testing::PrintToString(changed);
        }
    }
}

constexpr XmlUnasked inner{"a", "b"};

std::vector<std::string_view> UnaskedIn(std::string_view document)
{
    std::vector<std::string_view> found;
    EXPECT_TRUE(IsUsualXml(document, inner, found)) << document;
    return found;
}

TEST(UsualXml, TellsWhatNothingIsAskedAbout)
{
    using testing::ElementsAre;
    using testing::IsEmpty;
    EXPECT_THAT(UnaskedIn("<a>1<b x='2'>3<c/></b >4<b/><c><b/></c></a>"),
                ElementsAre("<b x='2'>3<c/></b >", "<b/>"));
    EXPECT_THAT(UnaskedIn("<b><a><b><b/></b></a></b>"), ElementsAre("<b><b/></b>"));
    EXPECT_THAT(UnaskedIn("<a><b><c/><a/></b><b/></a>"), ElementsAre("<b/>"));
    EXPECT_THAT(UnaskedIn("<a><b><a><b/></a></b></a>"), ElementsAre("<b/>"));
    EXPECT_THAT(UnaskedIn("<b/>"), IsEmpty());
    EXPECT_THAT(UnaskedIn("<a><c>b</c></a>"), IsEmpty());
}

struct Question
{
    const char* plain;
    const char* other; // the same, which only the library answers
};

XmlNode Loaded(const TempFolder& folder, std::string_view document, const XmlUnasked* unasked)
{
    XmlNode loaded;
    const HRESULT status = LoadXml(OpenedWith(folder, document).Get(), unasked, loaded);
    EXPECT_EQ(status == S_OK, loaded != nullptr);
    return loaded;
}

std::size_t CountOf(const XmlNode& document, const char* question)
{
    XmlNodes nodes;
    EXPECT_EQ(SelectXmlNodes(document, XmlPath(question), nodes), S_OK);
    return nodes.size();
}

TEST(UsualXml, IsLoadedWithoutWhatNothingIsAskedAbout)
{
    const Components components;
    const TempFolder folder;
    const XmlNode document = Loaded(folder, "<r><a><b>1</b><c>2</c></a><b/></r>", &inner);
    ASSERT_TRUE(document);
    EXPECT_EQ(CountOf(document, "//b"), 1U);
    EXPECT_EQ(CountOf(document, "//a/c"), 1U);
}

// Of the elements "a", "b" and "c" in one another.
std::string RandomElement(std::mt19937& random, int depth)
{
    constexpr std::string_view names[] = {"a", "b", "c"};
    const std::string name(names[random() % std::size(names)]);
    std::string element = "<" + name + (random() % 2 == 0 ? " x='1'>" : ">");
    for (std::size_t count = depth > 0 ? random() % 4 : 0; count > 0; --count)
        element += (random() % 2 == 0 ? "text" : "") + RandomElement(random, depth - 1);
    return element + "</" + name + ">";
}

TEST(UsualXml, AnswersTheSameWithoutWhatNothingIsAskedAbout)
{
    constexpr int documents = 300;
    constexpr int depth = 5;
    constexpr const char* asked[] = {"//a", "//a/a", "//b/a", "//a/c", "//a/a/@x", "//a/c/text()"};
    const Components components;
    const TempFolder folder;
    std::mt19937 random; // the same each time
    int smaller = 0;
    for (int i = 0; i < documents; ++i)
    {
        const std::string text = RandomElement(random, depth);
        const XmlNode whole = Loaded(folder, text, nullptr);
        const XmlNode part = Loaded(folder, text, &inner);
        ASSERT_TRUE(whole && part) << text;
        for (const char* const question : asked)
            EXPECT_EQ(CountOf(whole, question), CountOf(part, question)) << question << text;
        smaller += CountOf(whole, "//a/b") > CountOf(part, "//a/b") ? 1 : 0;
    }
    EXPECT_GT(smaller, 20);
}

constexpr Question questions[] = {
    {"./r/a/text()", "child::r/child::a/child::text()"},
    {"./r/a/b/text()", "child::r/child::a/child::b/child::text()"},
    {"./r/a/@x", "child::r/child::a/attribute::x"},
    {"./r/b/@y", "child::r/child::b/attribute::y"},
    {"./r/text()", "child::r/child::text()"},
    {"./r/@x", "child::r/attribute::x"},
    {"./@x", "attribute::x"},
    {"//r/a/@x", "/descendant-or-self::node()/child::r/child::a/attribute::x"},
    {"//a/b/@x", "/descendant-or-self::node()/child::a/child::b/attribute::x"},
    {"//a/a/@x", "/descendant-or-self::node()/child::a/child::a/attribute::x"},
    {"//b/@y", "/descendant-or-self::node()/child::b/attribute::y"},
    {"//a/b/text()", "/descendant-or-self::node()/child::a/child::b/child::text()"},
};

TEST(PlainPaths, FindWhatTheLibraryFinds)
{
    constexpr int documents = 3'000;
    const Components components;
    const TempFolder folder;
    std::mt19937 random; // the same each time
    int found = 0;
    for (int i = 0; i < documents; ++i)
    {
        XmlNode document;
        const std::string bytes = i % 2 == 0 ? RandomDocument(random) : NestedDocument(random);
        if (LoadXml(OpenedWith(folder, bytes).Get(), nullptr, document) != S_OK)
            continue;
        for (const Question& question : questions)
        {
            std::u16string plain;
            std::u16string other;
            const HRESULT status = ReadXmlText(document, XmlPath(question.plain), plain);
            EXPECT_EQ(status, ReadXmlText(document, XmlPath(question.other), other));
            EXPECT_EQ(plain, other) << question.plain << " in " << bytes;
            found += status == S_OK ? 1 : 0;
        }
    }
    EXPECT_GT(found, 100);
}

} // namespace
} // namespace tarnwell::test
