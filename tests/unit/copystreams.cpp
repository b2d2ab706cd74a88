// Copying through streams, which are made up here.
#include "local/copystreams.h"
#include "frame/comobject.h"
#include "frame/status.h"
#include "platform/wide.h"
#include "support/errorinfo.h"
#include "support/fakeprogress.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

namespace tarnwell::test
{

namespace
{

using testing::Each;
using testing::ElementsAre;

constexpr ULONG piece = 0x10000;
constexpr DWORD busy = ERROR_BUSY;

// What happens at one call: the status, and how much less is moved than could be.
struct Event
{
    HRESULT status = S_OK;
    ULONG missing = 0;
};

// One end of the copy.
struct End
{
    std::string bytes;
    // By the number of the call, from 0; all others are as they should be.
    std::vector<Event> events;

    HRESULT find = S_OK;
    HRESULT open = S_OK;
    bool hasData = true;

    std::vector<std::u16string> calls;
    std::vector<ULONG> sizes;
    int streams = 0;

    Event Next()
    {
        const std::size_t n = sizes.size();
        return n < events.size() ? events[n] : Event();
    }
};

class EndStream : public IFileStream, public ::ISequentialStream, public ErrorInfoFor<IFileStream>
{
public:
    using Interfaces = InterfaceList<IFileStream, ::ISequentialStream>;

    End* end = nullptr;

    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override
    {
        const Event event = end->Next();
        end->sizes.push_back(size);
        const std::string_view rest = std::string_view(end->bytes).substr(at_);
        *read = static_cast<ULONG>(std::min<std::size_t>(rest.size(), size)) - event.missing;
        std::memcpy(buffer, rest.data(), *read);
        at_ += *read;
        return event.status;
    }
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override
    {
        const Event event = end->Next();
        end->sizes.push_back(size);
        *written = size - event.missing;
        end->bytes.append(static_cast<const char*>(buffer), *written);
        return event.status;
    }

protected:
    ~EndStream()
    {
        --end->streams;
    }

private:
    std::size_t at_ = 0;
};

class OnlyStream : public IFileStream, public ErrorInfoFor<IFileStream>
{
public:
    using Interfaces = InterfaceList<IFileStream>;

    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }

protected:
    ~OnlyStream() = default;
};

std::u16string Hex(std::uint32_t number)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%x", number);
    return {digits, digits + std::strlen(digits)};
}

class EndFile final : public LocalObject<IFile>
{
public:
    explicit EndFile(End& end) : end_(end) {}

    HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override
    {
        end_.calls.push_back(u"open " + Hex(access) + u" " + Hex(disposition));
        if (FAILED(end_.open))
            return end_.open;
        if (!end_.hasData)
            return MakeInstance<OnlyStream>(nullptr, IID_IFileStream,
                                            reinterpret_cast<void**>(stream));
        ComPtr<ComObject<EndStream>> made;
        const HRESULT status = MakeObject<EndStream>(made);
        made->end = &end_;
        ++end_.streams;
        return FAILED(status)
                   ? status
                   : made->QueryInterface(IID_IFileStream, reinterpret_cast<void**>(stream));
    }

private:
    End& end_;
};

class Ends final : public LocalObject<IFileSystem>
{
public:
    End source;
    End target;
    EndFile sourceFile{source};
    EndFile targetFile{target};

    HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                      IFile** file) override
    {
        const bool isSource = Units(path) == u"from:s";
        End& end = isSource ? source : target;
        end.calls.push_back(std::u16string(Units(path)) +
                            (mustExist == VARIANT_TRUE ? u" must exist" : u" may exist"));
        if (FAILED(end.find))
            return end.find;
        *file = isSource ? &sourceFile : &targetFile;
        (*file)->AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR*, VARIANT_BOOL, IFolder**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR*, const OLECHAR*, ICopyProgress*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR*, BSTR*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList*, VARIANT_BOOL, VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t, ::IUnknown*, std::uint32_t*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR*, const OLECHAR*, BSTR*) override
    {
        return E_NOTIMPL;
    }
};

class CopyThroughStreamsTest : public testing::Test
{
protected:
    CopyThroughStreamsTest()
    {
        ClearError();
    }
    ~CopyThroughStreamsTest() override
    {
        EXPECT_EQ(ends.source.streams + ends.target.streams, 0) << "a stream was left open";
        EXPECT_EQ(ends.sourceFile.references + ends.targetFile.references + progress.references,
                  0U);
        EXPECT_EQ(TakeErrorText(), u"(none)") << "the texts are the caller's";
    }

    HRESULT Copy()
    {
        return CopyThroughStreams(ends, u"from:s", u"to:s", &progress);
    }
    void Put(std::size_t size)
    {
        ends.source.bytes.assign(size, 'x');
        if (size > 0)
            ends.source.bytes.back() = 'y';
    }
    bool IsWhole() const
    {
        return ends.target.bytes == ends.source.bytes;
    }

    Ends ends;
    FakeProgress progress;
};

TEST_F(CopyThroughStreamsTest, FindsAndOpensBothEnds)
{
    Put(3);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(ends.source.calls, ElementsAre(u"from:s must exist", u"open 80000000 3"));
    EXPECT_THAT(ends.target.calls, ElementsAre(u"to:s may exist", u"open 40000000 2"));
}

TEST_F(CopyThroughStreamsTest, AShortPieceIsTheLast)
{
    Put(2 * piece + 1);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(ends.source.sizes, ElementsAre(piece, piece, piece));
    EXPECT_THAT(ends.target.sizes, ElementsAre(piece, piece, 1U));
    EXPECT_EQ(progress.Questions(), 3);
}

TEST_F(CopyThroughStreamsTest, BehindAWholeNumberOfPiecesNothingIsRead)
{
    Put(2 * piece);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_EQ(ends.source.sizes.size(), 3U) << "the last read finds 0 bytes";
    EXPECT_EQ(ends.target.sizes.size(), 2U);
    EXPECT_EQ(progress.Questions(), 2);
}

TEST_F(CopyThroughStreamsTest, WithoutAProgressNobodyIsAskedAndAllIsCopied)
{
    Put(2 * piece + 1);
    EXPECT_EQ(CopyThroughStreams(ends, u"from:s", u"to:s", nullptr), S_OK);
    EXPECT_TRUE(IsWhole());
}

TEST_F(CopyThroughStreamsTest, AnEmptySourceAsksNobody)
{
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(ends.source.sizes.size(), 1U);
    EXPECT_EQ(ends.target.sizes.size(), 0U);
    EXPECT_EQ(progress.Questions(), 0);
    EXPECT_EQ(ends.target.calls.size(), 2U) << "it is made all the same";
}

TEST_F(CopyThroughStreamsTest, ANoIsNoFailureAndKeepsWhatWasWritten)
{
    Put(3 * piece);
    progress.answer = [](int n) {
        return n < 2 ? VARIANT_TRUE : VARIANT_FALSE;
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(progress.Questions(), 2);
    EXPECT_EQ(ends.target.bytes.size(), 2 * piece);
}

TEST_F(CopyThroughStreamsTest, AHostThatWritesNoAnswerCancels)
{
    Put(3 * piece);
    progress.answer = [](int) {
        return std::nullopt;
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(ends.target.bytes.size(), piece);
    EXPECT_THAT(progress.presets, ElementsAre(VARIANT_FALSE));
}

TEST_F(CopyThroughStreamsTest, TheAnswerCountsAndNotItsStatus)
{
    Put(3 * piece);
    progress.status = E_FAIL;
    progress.answer = [](int) {
        return VARIANT_BOOL{1};
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(progress.presets, Each(VARIANT_FALSE));
}

TEST_F(CopyThroughStreamsTest, ACancelKeepsTheStatusOfAFailedWrite)
{
    Put(3 * piece);
    ends.target.events = {{}, {StatusFromError(busy), piece}};
    progress.answer = [](int n) {
        return n < 2 ? VARIANT_TRUE : VARIANT_FALSE;
    };
    EXPECT_EQ(Copy(), StatusFromError(busy));
    EXPECT_EQ(ends.target.bytes.size(), piece);
}

TEST_F(CopyThroughStreamsTest, AShortWriteThatSucceedsIsAFullDisk)
{
    Put(2 * piece);
    ends.target.events = {{S_OK, 1}};
    EXPECT_EQ(Copy(), StatusFromError(ERROR_DISK_FULL));
    EXPECT_EQ(ends.source.sizes.size(), 1U) << "nothing is read any more";
}

TEST_F(CopyThroughStreamsTest, AFailedWriteEndsIt)
{
    Put(2 * piece);
    for (const Event event : {Event{StatusFromError(busy), piece}, {StatusFromError(busy), 0}})
    {
        ends.source.sizes.clear();
        ends.target.sizes.clear();
        ends.target.events = {event};
        EXPECT_EQ(Copy(), StatusFromError(busy));
        EXPECT_EQ(ends.source.sizes.size(), 1U);
    }
}

TEST_F(CopyThroughStreamsTest, AFailedReadEndsItWhateverItReadBefore)
{
    Put(2 * piece);
    for (const ULONG missing : {piece, ULONG{10}})
    {
        ends.source.sizes.clear();
        ends.target.sizes.clear();
        ends.source.events = {{}, {StatusFromError(busy), missing}};
        EXPECT_EQ(Copy(), StatusFromError(busy));
        EXPECT_EQ(ends.target.sizes.size(), 1U);
    }
}

TEST_F(CopyThroughStreamsTest, ASuccessOfAnotherKindEndsItAndStands)
{
    Put(2 * piece);
    ends.target.events = {{S_FALSE, 0}};
    EXPECT_EQ(Copy(), S_FALSE);
    EXPECT_EQ(ends.source.sizes.size(), 1U);
}

TEST_F(CopyThroughStreamsTest, AnEndThatIsNotToBeHadEndsIt)
{
    Put(3);
    const HRESULT failed = StatusFromError(busy);
    for (HRESULT End::*const step : {&End::find, &End::open})
    {
        for (End* const end : {&ends.source, &ends.target})
        {
            end->*step = failed;
            EXPECT_EQ(Copy(), failed);
            end->*step = S_OK;
        }
    }
    EXPECT_EQ(ends.target.sizes.size(), 0U);
}

TEST_F(CopyThroughStreamsTest, TheTargetStaysClosedUnlessTheSourceOpens)
{
    ends.source.open = E_FAIL;
    EXPECT_EQ(Copy(), E_FAIL);
    EXPECT_THAT(ends.target.calls, ElementsAre(u"to:s may exist"));
    ends.target.calls.clear();
    ends.source.find = E_FAIL;
    EXPECT_EQ(Copy(), E_FAIL);
    EXPECT_THAT(ends.target.calls, ElementsAre());
}

TEST_F(CopyThroughStreamsTest, StreamsWithoutDataAreRefused)
{
    ends.source.hasData = false;
    EXPECT_EQ(Copy(), E_NOINTERFACE);
    ends.source.hasData = true;
    ends.target.hasData = false;
    EXPECT_EQ(Copy(), E_NOINTERFACE);
}

} // namespace

} // namespace tarnwell::test
