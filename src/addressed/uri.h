// The address of an item in the file systems other than the local one.
#pragma once

#include "addressed/usualparts.h"
#include "frame/pattern.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

inline constexpr std::uint16_t noPort = 65535;
inline constexpr int noGroup = -1;

// The port whose digits `text` begins with; `noPort` without any. Only the low 16 bits of a number
// count, on purpose.
std::uint16_t PortOf(std::u16string_view text);

// What an address is made of.
struct UriParts
{
    std::u16string scheme;
    std::u16string user;
    std::u16string password;
    std::u16string host;
    std::uint16_t port = noPort;
    std::u16string path; // without the "/" behind the host
};

// Where the addresses of a file system carry a revision: behind the last of these characters.
// Nothing tells that one from the same character in a name.
struct RevisionMarker
{
    std::u16string_view characters = {}; // none: addresses have no revisions

    // The index of the marker in `text`, an address or its path; npos without one.
    std::size_t FindIn(std::u16string_view text) const;
    // `text` in front of the marker, and `parts` with such a path.
    std::u16string_view Strip(std::u16string_view text) const;
    UriParts Strip(UriParts parts) const;
    // What stands behind the marker, which may be empty; nothing without a marker.
    std::optional<std::u16string_view> RevisionOf(std::u16string_view text) const;
};

// How the addresses of a class are taken apart.
struct AddressForm
{
    // Which capture group of the pattern holds which part; `noGroup` for a part that the class's
    // addresses don't have.
    struct GroupNumbers
    {
        int scheme;
        int user;
        int password;
        int host;
        int port;
        int path;
    };

    Pattern pattern;
    GroupNumbers groups;
    // Tells the parts of nearly all addresses as the pattern does, at a tenth of its price. Nothing
    // for the rest, over which the pattern decides.
    std::optional<UriViews> (*usualParts)(std::u16string_view text);
};

// An address as it was given. Each question takes it apart by its class's form and keeps nothing,
// so it never changes, and any thread may ask. A text that the pattern doesn't match fails each
// question with message 125. What differs between file systems is virtual.
class Uri
{
public:
    explicit Uri(std::u16string text) : text_(std::move(text)) {}
    Uri(const Uri&) = delete;
    Uri& operator=(const Uri&) = delete;
    virtual ~Uri() = default;

    const std::u16string& GetText() const
    {
        return text_;
    }

    std::u16string GetScheme() const;
    std::u16string GetUser() const;
    std::u16string GetPassword() const;
    std::u16string GetHost() const;
    // `noPort` if there is none.
    std::uint16_t GetPort() const;
    // The host, and ":" with the port if there is one.
    std::u16string GetHostAndPort() const;
    std::u16string GetPath() const;

    // All parts for one look at the text.
    UriParts GetParts() const;
    // The same by the pattern alone.
    UriParts GetMatchedParts() const;

    // The address without its last "/" and what follows it.
    std::shared_ptr<Uri> GetParent() const;

    // A new address of this object's class. A user without a host is dropped, and a password
    // without a user.
    std::shared_ptr<Uri> Compose(const UriParts& parts) const;
    // The parent of what would be composed.
    std::shared_ptr<Uri> ComposeParent(UriParts parts) const;

    std::shared_ptr<Uri> WithoutCredentials() const;
    virtual std::shared_ptr<Uri> ForDisplay() const;
    virtual std::shared_ptr<Uri> ForComparison() const;

    // A new address of this object's class.
    virtual std::shared_ptr<Uri> Create(std::u16string text) const;
    virtual std::shared_ptr<Uri> Clone() const;

    // The text of capture group `index`; empty for a group that took no part or doesn't exist.
    std::u16string GetGroup(int index) const;

protected:
    // Whether the scheme is exactly this one.
    bool HasScheme(std::u16string_view scheme) const;

    virtual const AddressForm& Form() const;
    // Takes `text` apart by `pattern`: the whole of it must match, and have no terminator.
    virtual bool Match(const Pattern& pattern, std::u16string_view text, Groups& groups) const;

private:
    Groups MatchedGroups() const;
    UriViews Views() const;
    UriViews MatchedViews() const;

    std::u16string text_;
};

// The addresses of a file system, as its items need to know them.
struct AddressKind
{
    // Makes one, an object of the file system's own class. Throws for a text that is none.
    std::shared_ptr<Uri> (*make)(std::u16string text);
    RevisionMarker marker = {};
    bool isRevisionInNames = true; // an item's name ends in its revision
};

// The `make` of addresses of class `Address`.
template <class Address> std::shared_ptr<Uri> MakeAddress(std::u16string text)
{
    return std::make_shared<Address>(std::move(text));
}

// The text of the address that `parts` compose. A user without a host is dropped, and a password
// without a user.
std::u16string ComposedText(const UriParts& parts);

std::u16string WithoutTrailingSlashes(std::u16string path);

// Whether `text` is an address and not a local path: a scheme has more than the one letter of a
// drive.
bool LooksLikeUri(const std::u16string& text);

} // namespace tarnwell
