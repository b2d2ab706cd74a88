// Failures in the language of the environment.
#include "module/localtest.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{

namespace
{

class Language : public LocalTest
{
protected:
    std::u16string NullText()
    {
        const auto error =
            OutcomeOf([&] { return system->GetFile(Ole(u"a"), VARIANT_TRUE, nullptr); }).error;
        return error ? error->text : u"";
    }
    static constexpr std::u16string_view japanese = u"内部エラー (ヌル ポインタ引数)。";
    static constexpr std::u16string_view english = u"Internal error (null pointer argument).";
};

TEST_F(Language, FollowsTheEnvironment)
{
    const EnvironmentValue all("LC_ALL", "ja_JP.UTF-8");
    EXPECT_EQ(NullText(), japanese);
    const std::u16string path = folder / u"missing";
    EXPECT_THAT(GetFile(path), Failed(Win32Status(2), u"\"" + path + u"\" を開けませんでした。"));
}

TEST_F(Language, IsAskedForAtEachFailure)
{
    EXPECT_EQ(NullText(), english);
    {
        const EnvironmentValue all("LC_ALL", "ja_JP.UTF-8");
        EXPECT_EQ(NullText(), japanese);
    }
    EXPECT_EQ(NullText(), english);
}

struct LanguageRow
{
    const char* all;
    const char* messages;
    const char* lang;
    bool isJapanese;
};

constexpr LanguageRow languageRows[] = {
    {nullptr, nullptr, nullptr, false},
    {nullptr, nullptr, "ja_JP.UTF-8", true},
    {nullptr, nullptr, "ja", true},
    {nullptr, "ja_JP", "en_US.UTF-8", true},
    {"en_US.UTF-8", "ja_JP", "ja_JP", false},
    {"", "ja_JP", "en_US.UTF-8", true},
    {"", "", "ja_JP", true},
    {"ko_KR.UTF-8", nullptr, nullptr, false},
    {"C", nullptr, "ja_JP", false},
};

TEST_F(Language, IsThatOfTheFirstVariableThatIsSet)
{
    for (const LanguageRow& row : languageRows)
    {
        const EnvironmentValue all("LC_ALL", row.all);
        const EnvironmentValue messages("LC_MESSAGES", row.messages);
        const EnvironmentValue lang("LANG", row.lang);
        EXPECT_EQ(NullText(), row.isJapanese ? japanese : english) << &row - languageRows;
    }
}

} // namespace

} // namespace tarnwell::test
