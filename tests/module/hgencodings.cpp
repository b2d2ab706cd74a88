// Mercurial repositories whose texts and names were written in other encodings than the client's
// own.
#include "module/hghistorytest.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

class HgEncodings : public HgHistories
{
protected:
    // The user's name and the description are bytes.
    void CommitBytes(const std::string& user, const std::string& description,
                     std::vector<std::string> options) const
    {
        WriteBytes(repository / u".hg/hgrc", "[ui]\nusername = " + user + "\n");
        WriteBytes(repository / u".hg/description", description);
        WriteBytes(repository / u"a.txt", description);
        options.insert(options.end(), {"commit", "-q", "-A", "-l", ".hg/description"});
        repository.Run(options);
    }
    void ExpectToldAsText() const
    {
        const auto entries = History(Address(u"a.txt"));
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].author, u"J\u00f6rg <j@example.org>");
        EXPECT_EQ(entries[0].description, u"Gr\u00fc\u00dfe\n\nund \u00c4pfel");
    }
};

TEST_F(HgEncodings, TextsOfAnotherEncodingAreTexts)
{
    CommitBytes("J\xF6rg <j@example.org>", "Gr\xFC\xDF\x65\n\nund \xC4pfel",
                {"--encoding", "latin-1"});
    ExpectToldAsText();
    // Whatever the host's user has set up for the terminal.
    for (const char* const encoding : {"latin-1", "ascii", "shift_jis"})
    {
        const EnvironmentValue variable("HGENCODING", encoding);
        ExpectToldAsText();
    }
}

// Some programs have written the repository's texts without converting them.
TEST_F(HgEncodings, TextsThatWereNeverConvertedAreTakenForLatin)
{
    WriteBytes(repository / u".hg/raw.py",
               "from mercurial import encoding\nencoding.fromlocal = lambda text: text\n");
    CommitBytes("J\xF6rg <j@example.org>", "Gr\xFC\xDF\x65\n\nund \xC4pfel",
                {"--config", "extensions.raw=.hg/raw.py", "--encoding", "latin-1"});
    ExpectToldAsText();
}

} // namespace
} // namespace tarnwell::test
