// Histories and trees that are cancelled from another thread while the client runs.
#include "backends/suites/stricttest.h"

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace tarnwell::test
{
namespace
{

using Clock = std::chrono::steady_clock;

// As the "Cancel" of a host's user, who waits for a while first; or for ever.
class Cancel
{
public:
    Cancel() = default;
    explicit Cancel(Clock::duration wait)
        : thread_([this, wait] {
              std::this_thread::sleep_for(wait);
              isGiven_ = true;
          })
    {
    }
    Cancel(const Cancel&) = delete;
    Cancel& operator=(const Cancel&) = delete;
    ~Cancel()
    {
        if (thread_.joinable())
            thread_.join();
    }

    bool IsGiven() const
    {
        return isGiven_;
    }

private:
    std::atomic<bool> isGiven_ = false;
    std::thread thread_;
};

struct Answer
{
    HRESULT status;
    std::size_t count; // of what was taken
};

enum class Question
{
    History,
    Listing,
    Content
};

class Cancels : public StrictTest
{
protected:
    Answer Ask(Question question, const ComPtr<ITree>& tree, const Cancel& cancel) const
    {
        HistorySink revisions;
        TreeSink items;
        revisions.wantsMore = items.wantsMore = [&] {
            return !cancel.IsGiven();
        };
        // A host that takes its time, so that it is asked in between.
        revisions.answer = items.answer = [] {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            return S_OK;
        };
        if (question == Question::History)
            return {Read(Strictly().data->Address(u""), revisions).status,
                    revisions.entries.size()};
        if (question == Question::Listing)
            return {tree->List(Ole(u""), VARIANT_TRUE, &items), items.entries.size()};
        ComPtr<IFileStream> stream;
        const HRESULT status = tree->Open(Ole(u"large"), &items, stream.Out());
        return {status, stream ? 1U : 0U};
    }
};

TEST_P(Cancels, EndACallAtAnyMomentAndNothingElse)
{
    const auto tree = LastTree();
    std::mt19937 random(12);
    for (const Question question : {Question::History, Question::Listing, Question::Content})
    {
        const Clock::time_point begin = Clock::now();
        const Answer whole = Ask(question, tree, Cancel());
        const Clock::duration undisturbed = Clock::now() - begin;
        ASSERT_EQ(whole.status, S_OK);
        ASSERT_GT(whole.count, 0U);
        for (int round = 0; round < 4; ++round)
        {
            const Cancel cancel(undisturbed * (random() % 100) / 100);
            const Answer answer = Ask(question, tree, cancel);
            if (answer.status == S_OK)
                EXPECT_EQ(answer.count, whole.count);
            else
                EXPECT_EQ(answer.status, E_ABORT);
            EXPECT_LE(answer.count, whole.count);
            EXPECT_TRUE(answer.status == S_OK || question != Question::Content ||
                        answer.count == 0);
        }
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
    }
}

TARNWELL_OVER_BACKENDS(Cancels, BackendsThat([](const Backend& b) {
                           return TellsHistories(b) && ShowsTrees(b) && !b.client.empty();
                       }));

} // namespace
} // namespace tarnwell::test
