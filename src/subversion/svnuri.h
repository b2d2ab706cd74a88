// Addresses of items in Subversion repositories. The scheme names the file system, so that those of
// http, https and file repositories begin with "svn"; the path may end in "@" and a revision.
#pragma once

#include "addressed/uri.h"

#include <string>
#include <string_view>

namespace tarnwell
{

// The file system's name in positions of failures.
inline constexpr const char16_t* svnSource = u"svnobjects";

inline constexpr RevisionMarker svnMarker{u"@"};

// The scheme by which the client knows the repository.
std::u16string_view SvnRealScheme(std::u16string_view scheme);

class SVNUri final : public Uri
{
public:
    // Fails with message 152 for a scheme that isn't one of the five.
    explicit SVNUri(std::u16string text);

    // The repository's own address, which has no credentials: with the revision, and without.
    std::shared_ptr<Uri> ForDisplay() const override;
    std::shared_ptr<Uri> ForComparison() const override;

    std::shared_ptr<Uri> Create(std::u16string text) const override;
    // Without the revision.
    std::shared_ptr<Uri> Clone() const override;
};

// The parts of `text`, which must be an address of this kind, for the price of one question.
UriParts SvnPartsOf(const std::u16string& text);

// The path of them alone, of which a listing needs very many.
std::u16string SvnPathOf(const std::u16string& text);

} // namespace tarnwell
