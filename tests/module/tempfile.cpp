// Temporary files beside a target.
#include "module/localtest.h"

#include <atomic>
#include <set>
#include <thread>

namespace tarnwell::test
{

namespace
{

class TempFile : public LocalTest
{
protected:
    std::u16string Made(const std::u16string& path)
    {
        Bstr made;
        EXPECT_THAT(OutcomeOf([&] { return system->CreateTempFile(Ole(path), made.Out()); }),
                    Succeeded());
        return std::u16string(made.View());
    }
    static std::u16string FailedFor(const std::u16string& path)
    {
        return u"Failed to create a temporary file for \"" + path + u"\".";
    }
};

TEST_F(TempFile, LiesBesideTheTargetAndIsEmpty)
{
    const std::u16string target = folder / u"file.txt";
    EXPECT_EQ(Made(target), folder / u"vrltmp0");
    EXPECT_EQ(ReadBytes(folder / u"vrltmp0"), "");
    EXPECT_FALSE(Exists(target)) << "the target itself needn't be there";
    EXPECT_EQ(Made(target), folder / u"vrltmp1");
    EXPECT_EQ(Made(Put(u"other")), folder / u"vrltmp2");
}

TEST_F(TempFile, TakesTheFirstFreeNumber)
{
    Put(u"vrltmp0", "kept");
    MakeDirectory(u"vrltmp1");
    Put(u"vrltmp3", "kept");
    EXPECT_EQ(Made(folder / u"a"), folder / u"vrltmp2");
    EXPECT_EQ(Made(folder / u"a"), folder / u"vrltmp4");
    EXPECT_EQ(ReadBytes(folder / u"vrltmp0"), "kept");
}

TEST_F(TempFile, WithoutASeparatorLiesInTheCurrentFolder)
{
    const CurrentFolder current(folder.Path());
    EXPECT_EQ(Made(u"file.txt"), u"vrltmp0");
    EXPECT_TRUE(Exists(folder / u"vrltmp0"));
    EXPECT_EQ(Made(u""), u"vrltmp1");
}

TEST_F(TempFile, SeparatorsAreNotDoubled)
{
    EXPECT_EQ(Made(folder / (separator + separator + u"file.txt")), folder / u"vrltmp0");
}

TEST_F(TempFile, CanBeOpenedAtOnce)
{
    const auto stream = Open(Made(folder / u"a"), writeAccess);
    EXPECT_EQ(Write(stream, "content"), S_OK);
}

TEST_F(TempFile, AHundredTakenNamesAreEnough)
{
    for (int i = 0; i < 99; ++i)
    {
        const std::string digits = std::to_string(i);
        Put(u"vrltmp" + std::u16string(digits.begin(), digits.end()));
    }
    const std::u16string target = folder / u"a";
    EXPECT_EQ(Made(target), folder / u"vrltmp99");
    Bstr made(u"something");
    EXPECT_THAT(OutcomeOf([&] { return system->CreateTempFile(Ole(target), made.Out()); }),
                Failed(E_FAIL, FailedFor(target)));
    EXPECT_FALSE(made);
    EXPECT_FALSE(Exists(folder / u"vrltmp100"));
}

TEST_F(TempFile, AMissingFolderFails)
{
    const std::u16string target = Joined(folder / u"missing", u"a");
    Bstr made;
    EXPECT_THAT(OutcomeOf([&] { return system->CreateTempFile(Ole(target), made.Out()); }),
                Failed(E_FAIL, FailedFor(target)));
}

TEST_F(TempFile, NobodyGetsANameTwice)
{
    constexpr int each = 20;
    std::vector<std::u16string> names[4];
    std::vector<std::thread> threads;
    for (auto& own : names)
    {
        threads.emplace_back([&, shared = system] {
            for (int i = 0; i < each; ++i)
            {
                Bstr made;
                if (shared->CreateTempFile(Ole(folder / u"a"), made.Out()) == S_OK)
                    own.emplace_back(made.View());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::set<std::u16string> all;
    for (const auto& own : names)
        all.insert(own.begin(), own.end());
    EXPECT_EQ(all.size(), std::size(names) * each);
}

} // namespace

} // namespace tarnwell::test
