// Failures of histories and trees in the user's language, which isn't the client's.
#include "backends/suites/stricttest.h"
#include "support/environmentvalue.h"
#include "support/messagetexts.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tarnwell::test
{
namespace
{

// What stands in front of the first insert.
std::u16string_view BeginningOf(std::u16string_view text)
{
    return text.substr(0, text.find(u'%'));
}

// What stands behind the first insert, up to the next one.
std::u16string_view MiddleOf(std::u16string_view text)
{
    const std::size_t insert = text.find(u'%');
    if (insert == std::u16string_view::npos)
        return {};
    const std::u16string_view rest = text.substr(insert + 2);
    return rest.substr(0, rest.find_first_of(u"%\n"));
}

// The published message that begins so in English.
const MessageTexts& MessageThatBegins(std::u16string_view english)
{
    const auto found = std::find_if(
        std::begin(messageTexts), std::end(messageTexts), [&](const MessageTexts& message) {
            const std::u16string_view beginning = BeginningOf(message.english);
            return !beginning.empty() &&
                   (english.starts_with(beginning) || beginning.starts_with(english));
        });
    if (found == std::end(messageTexts))
        throw std::runtime_error("no message begins so");
    return *found;
}

class StrictLanguages : public StrictTest
{
protected:
    // Asks for each of the two that the row answers to.
    void ExpectInJapanese(const char* what, HRESULT status, std::u16string_view english,
                          const std::u16string& path, const MaybeRevision& revision = {}) const
    {
        const std::u16string_view text = MessageThatBegins(english).japanese;
        const EnvironmentValue language("LC_ALL", "ja_JP.UTF-8");
        const auto expect = [&](const Outcome& outcome) {
            EXPECT_THAT(outcome, FailedSaying(status, BeginningOf(text))) << what;
            ASSERT_TRUE(outcome.error) << what;
            EXPECT_NE(outcome.error->text.find(MiddleOf(text)), std::u16string::npos) << what;
        };
        if (Row().strict.histories)
            expect(HistoryFailure(path, revision));
        if (Row().strict.trees)
            expect(TreeFailure(path, revision));
    }
};

TEST_P(StrictLanguages, AreTheUsersForEachFailureOfTheRow)
{
    for (const MadeFailure& failure : Row().strict.failures)
    {
        const auto data = NewData();
        data->Put(u"text.txt", "content");
        ExpectInJapanese(failure.what, failure.status, failure.message, failure.make(*data));
    }
}

TEST_P(StrictLanguages, AreTheUsersForFailuresOfAll)
{
    const std::u16string text = Strictly().data->Address(u"text.txt");
    for (const std::u16string_view revision : Row().strict.noRevisions)
        ExpectInJapanese("no revision", HistoryNoRevision, u"Can't find the revision \"", text,
                         std::u16string(revision));
    if (Row().client.empty())
        return;
    const TempFolder nothing;
    const EnvironmentValue path("PATH", nothing.Path().c_str());
    ExpectInJapanese("no client", HistoryNoClient, Row().clientMissing, text);
}

TARNWELL_OVER_BACKENDS(StrictLanguages, BackendsThat([](const Backend& b) {
                           return TellsHistories(b) || ShowsTrees(b);
                       }));

} // namespace
} // namespace tarnwell::test
