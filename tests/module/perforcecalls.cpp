// How the Perforce client is used, as far as it shows with any server.
#include "module/perforcetest.h"

#include <tarnwell/text.h>

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// A server with one file.
class PerforceCalls : public PerforceServerTest
{
protected:
    PerforceCalls()
    {
        server_->Submit("a.txt", "one", "first");
    }
    void ExpectNoHistory(const std::u16string& address) const
    {
        EXPECT_THAT(Revisions(address), IsEmpty());
        EXPECT_FALSE(HasRevisions(address));
    }

    const std::u16string folder_ = server_->Address();
    const std::u16string address_ = server_->Address("a.txt");
};

// For as long as it lives: whatever would need the client fails.
class NoClient
{
    const TempFolder empty_;
    const EnvironmentValue path_{"PATH", empty_.Path().string().c_str()};
};

TEST_F(PerforceCalls, ListedItemsNeedNone)
{
    const auto contents = Contents(folder_);
    const NoClient none;
    const auto items = ItemsOf(contents);
    ASSERT_THAT(items, SizeIs(1));
    const Facts facts = FactsOf(items[0]);
    EXPECT_EQ(facts.path, address_ + u"#1");
    EXPECT_EQ(facts.attributes, 129U);
    EXPECT_EQ(facts.size, 3U);
    EXPECT_GT(facts.time, 128883312000000000U);
}

TEST_F(PerforceCalls, ARootNeedsNone)
{
    const NoClient none;
    for (const std::u16string& root : {std::u16string(u"p4://"), folder_ + u"/", folder_ + u"///",
                                       std::u16string(u"p4://u@server/")})
    {
        const Facts facts = FactsOf(Folder(root));
        EXPECT_EQ(facts.attributes, folderAttribute);
        EXPECT_EQ(facts.name, u"");
        EXPECT_GT(facts.time, 133000000000000000U);
    }
}

TEST_F(PerforceCalls, AnotherWayToOpenNeedsNone)
{
    const NoClient none;
    ComPtr<IFileStream> stream;
    EXPECT_EQ(File(address_)->Open(readAccess, createAlways, stream.Out()), E_INVALIDARG);
    EXPECT_EQ(File(address_)->Open(0xC0000000, openExisting, stream.Out()), E_INVALIDARG);
}

TEST_F(PerforceCalls, WithoutAClientTheHostIsNotAskedAndTheFailureSaysSo)
{
    const NoClient none;
    for (const Outcome& outcome : {FailedOpen(address_), FailedList(folder_)})
        EXPECT_THAT(outcome,
                    Failed(Win32Status(2),
                           u"Can't find the Perforce command line utility (p4.exe). Please check "
                           u"that the Perforce client is correctly installed."));
    ExpectNoHistory(address_);
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(PerforceCalls, StreamsOutliveTheirItemAndLeaveNoFile)
{
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(address_, stream), Succeeded());
    ComPtr<IFileStream> other;
    EXPECT_THAT(Open(address_, other), Succeeded());
    EXPECT_EQ(ReadAll(stream), "one");
    EXPECT_EQ(ReadAll(stream), "") << "read to its end";
    EXPECT_EQ(ReadAll(other), "one");
    EXPECT_EQ(stream->Close(), S_OK);
    char byte = 0;
    EXPECT_EQ(stream.As<::ISequentialStream>()->Read(&byte, 1, nullptr), Win32Status(6));
}

TEST_F(PerforceCalls, WithoutAPlaceForItNoContentIsFetched)
{
    const TempFolder folder;
    const EnvironmentValue missing(temporaryFolderVariable,
                                   EncodeName(folder / u"missing").value().c_str());
    EXPECT_THAT(FailedOpen(address_),
                FailedSomehow(u"Failed to create a temporary file for \"" + address_ + u"\"."));
    EXPECT_THAT(List(folder_), SizeIs(1)) << "which needs none";
}

TEST_F(PerforceCalls, RunSideBySide)
{
    constexpr int threadCount = 4;
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int i = 0; i < threadCount; ++i)
    {
        threads.emplace_back([&] {
            for (int round = 0; round < 5; ++round)
                right += List(folder_).size() == 1 && Content(address_) == "one" ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, threadCount * 5);
}

// With the login that the client has anyway.
TEST_F(PerforceCalls, GoToTheServerAndTheUserOfTheAddress)
{
    const std::string author = server_->Author();
    const std::u16string authority =
        u"p4://" + DecodeName(author.substr(0, author.find('@')) + "@" + server_->Port()) + u"/";
    const std::u16string folder = authority + folder_.substr(5);
    const auto items = List(folder);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].path, folder + u"/a.txt#1");
    EXPECT_EQ(Content(items[0].path), "one");
    const auto list = Revisions(items[0].path);
    ASSERT_THAT(list, SizeIs(1));
    EXPECT_EQ(list[0].uri, items[0].path);
    EXPECT_THAT(host_->Calls(), IsEmpty());
}

TEST_F(PerforceCalls, GoToTheServerAndTheUserOfTheHost)
{
    const std::string author = server_->Author();
    host_->credentials = {S_OK, DecodeName(author.substr(0, author.find('@'))), std::nullopt,
                          DecodeName(server_->Port())};
    EXPECT_EQ(Content(u"p4://nobody:*@127.0.0.1:1/" + folder_.substr(5) + u"/a.txt"), "one");
    EXPECT_THAT(host_->Calls(), ElementsAre(u"GetCredentials|1|127.0.0.1:1|nobody"));
}

TEST_F(PerforceCalls, OfAServerThatIsNotThereFailInTheClientsWords)
{
    const std::u16string folder = u"p4://u:p@127.0.0.1:1/" + folder_.substr(5);
    for (const auto& [outcome, of] : {std::pair{FailedList(folder), folder},
                                      std::pair{FailedOpen(folder + u"/a"), folder + u"/a"}})
    {
        EXPECT_EQ(outcome.status, E_FAIL);
        EXPECT_TRUE(WithLineFeeds(outcome.error->text)
                        .starts_with(P4Failed(of, u"Perforce client error:")));
    }
    ExpectNoHistory(folder + u"/a");
    EXPECT_THAT(host_->Calls(), IsEmpty()) << "there is nothing to forget";
}

TEST_F(PerforceCalls, OfAnUnknownWorkspaceHideTheHistory)
{
    server_->LoseWorkspace();
    ExpectNoHistory(address_);
    EXPECT_EQ(Content(address_), "one") << "and nothing else";
    EXPECT_THAT(List(folder_), SizeIs(1));
}

} // namespace
} // namespace tarnwell::test
