// The file without a name that a content goes to while a client prints it.
#pragma once

#include "frame/handle.h"
#include "runner/client.h"

#include <tarnwell/pointers.h>
#include <tarnwell/streams.h>

#include <memory>
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
    virtual void Take(std::string_view bytes) = 0;

protected:
    ~ContentTaker() = default;
};

class ContentFile final : public ContentTaker
{
public:
    // `row` is a constant; it and `address` are for failures.
    ContentFile(const ClientRow& row, const std::u16string& address);

    void Restart() override;
    void Take(std::string_view bytes) override;
    // The stream over what was taken. Nothing more is taken then.
    ComPtr<IFileStream> Stream();

private:
    const ClientRow& row_;
    std::shared_ptr<OsHandle> file_;
};

} // namespace tarnwell
