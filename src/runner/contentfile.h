// The file without a name that a content goes to while a client prints it.
#pragma once

#include "frame/amounts.h"
#include "frame/handle.h"
#include "frame/patience.h"
#include "runner/client.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// Takes a content's bytes as they come. It is called again from the beginning, after `Restart`, if
// the client has died in between.
class ContentTaker
{
public:
    virtual void Restart() = 0;
    // How many bytes will come, where that is known.
    virtual void Expect(std::uint64_t /*size*/) {}
    virtual void Take(std::string_view bytes) = 0;

protected:
    ~ContentTaker() = default;
};

class ContentFile final : public ContentTaker
{
public:
    // `row` is a constant; it and `address` are for failures. Who is asked whether to go on also
    // hears how many bytes have come.
    ContentFile(const ClientRow& row, const std::u16string& address, const Patience& patience);

    void Restart() override;
    void Expect(std::uint64_t size) override;
    void Take(std::string_view bytes) override;
    // The stream over what was taken. Nothing more is taken then.
    ComPtr<IFileStream> Stream();

private:
    void Tell();

    const ClientRow& row_;
    std::shared_ptr<OsHandle> file_;
    const Amounts amounts_;
    std::uint64_t done_ = 0; // in bytes, as the next ones
    std::uint64_t told_ = 0; // never gets less, whatever comes again
    std::optional<std::uint64_t> total_;
};

} // namespace tarnwell
