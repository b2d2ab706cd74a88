/// @file
/// What takes histories and trees one by one, answered by functions.
#pragma once

#include <tarnwell/client/answers.hpp>

#include <functional>
#include <utility>

namespace tarnwell::client::detail
{

// A sink of the module's, `Sink`, which is given `Record`s.
template <class Sink, class Record> class SinkObject final : public Implements<Sink>
{
public:
    // `take` says whether more is wanted.
    SinkObject(std::function<bool(const Record&)> take, Progress progress)
        : take_(std::move(take)), progress_(std::move(progress))
    {
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        // What throws cancels.
        *keepGoing = VARIANT_FALSE;
        return Guarded([&] {
            *keepGoing = Truth(!progress_ || progress_({}));
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Take(const Record* record) override
    {
        return Guarded([&] { return take_(*record) ? S_OK : S_FALSE; });
    }

private:
    const std::function<bool(const Record&)> take_;
    const Progress progress_;
};

template <class Sink, class Record>
ComPtr<Sink> MakeSink(std::function<bool(const Record&)> take, const Progress& progress)
{
    Sink* const object = new SinkObject<Sink, Record>(std::move(take), progress);
    return ComPtr<Sink>::Adopt(object);
}

} // namespace tarnwell::client::detail
