// Addresses of files in a working copy on the local disk: SCHEME://PATH, where PATH is a local
// path, and optionally "#" and a revision. They have no user, host or port.
#pragma once

#include "addressed/uri.h"
#include "resources/messages.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// In what the addresses of the systems differ.
struct AddressRow
{
    std::u16string_view scheme; // exactly so, in small letters
    const char16_t* source;     // the file system's name in positions of failures
    MessageId invalid;          // the scheme is another
    bool hasNegativeRevisions;  // "-1" is one
};

// The last "#" begins the revision. So a "#" in a folder's name does no harm in front of a
// revision, but an address without a revision loses what follows it.
inline constexpr RevisionMarker workingCopyMarker{u"#"};

// The client reads the path and the revision as arguments of their own. Throws `row.invalid` if
// either would be an option: if it begins with "-" and isn't a negative revision of a system that
// has such revisions.
void RefuseOptions(const AddressRow& row, const std::u16string& address, std::u16string_view path,
                   std::optional<std::u16string_view> revision);

class WorkingCopyUri : public Uri
{
public:
    // All without the revision, except for display.
    std::shared_ptr<Uri> Clone() const final;
    std::shared_ptr<Uri> ForDisplay() const final;
    std::shared_ptr<Uri> ForComparison() const final;

protected:
    // Fails with `row.invalid` for another scheme.
    WorkingCopyUri(std::u16string text, const AddressRow& row);

    const AddressForm& Form() const final;
};

template <const AddressRow& row> class WorkingCopyUriOf final : public WorkingCopyUri
{
public:
    explicit WorkingCopyUriOf(std::u16string text) : WorkingCopyUri(std::move(text), row) {}

    std::shared_ptr<Uri> Create(std::u16string text) const override
    {
        return std::make_shared<WorkingCopyUriOf>(std::move(text));
    }
};

// The local path in `text`, an address of class `Address` or a plain path, without its revision.
template <class Address> std::u16string ToolPath(const std::u16string& text)
{
    try
    {
        return std::u16string(workingCopyMarker.Strip(Address(text).GetPath()));
    }
    catch (...)
    {
        return std::u16string(workingCopyMarker.Strip(text));
    }
}

} // namespace tarnwell
