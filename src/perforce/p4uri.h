// Addresses of items in Perforce depots: p4://[[USER][:PASSWORD]@SERVER[:PORT]/]PATH, where PATH
// may end in "#" or "@" and a revision. There is a server only where there is an "@" in front of
// it.
#pragma once

#include "addressed/uri.h"

#include <string>
#include <string_view>

namespace tarnwell
{

// The file system's name in positions of failures.
inline constexpr const char16_t* p4Source = u"p4objects";

// In a whole address the last of them may be the "@" behind the user, and that is kept on purpose.
inline constexpr RevisionMarker p4Marker{u"@#"};

// `path` with the two slashes that all depots begin with.
std::u16string NormalizeDepotPath(std::u16string_view path);

class P4Uri final : public Uri
{
public:
    // Fails with message 126 for another scheme than "p4", exactly so.
    explicit P4Uri(std::u16string text);

    std::shared_ptr<Uri> Create(std::u16string text) const override;
    // Without the revision.
    std::shared_ptr<Uri> Clone() const override;

protected:
    const AddressForm& Form() const override;
    // A text that only has an address in it fails with message 126.
    bool Match(const Pattern& pattern, std::u16string_view text, Groups& groups) const override;

private:
    [[noreturn]] void Refuse() const;
};

} // namespace tarnwell
