/// @file
/// The texts of the client's interface: UTF-8 outside, UTF-16 towards the module.
#pragma once

#include <tarnwell/pointers.h>
#include <tarnwell/text.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace tarnwell::client
{

namespace detail
{

#ifdef _WIN32
// Names are units here, and need be no valid text: three bytes stand for a lone surrogate.
inline bool IsLoneSurrogate(std::string_view bytes)
{
    const auto at = [&](std::size_t i) {
        return static_cast<unsigned char>(bytes[i]);
    };
    return bytes.size() >= 3 && at(0) == 0xED && at(1) >= 0xA0 && at(1) <= 0xBF &&
           (at(2) & 0xC0) == 0x80;
}
#else
inline bool IsLoneSurrogate(std::string_view)
{
    return false;
}
#endif

} // namespace detail

/// UTF-8 as UTF-16. What isn't UTF-8 becomes lone surrogates (see text.h), so that every name of a
/// file comes back as it was.
inline std::u16string Utf16(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty())
    {
        std::size_t plain = 0;
        while (plain < bytes.size() && !detail::IsLoneSurrogate(bytes.substr(plain)))
            ++plain;
        AppendDecodedName(text, bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        if (bytes.empty())
            break;
        text += static_cast<char16_t>(0xD000 | ((bytes[1] & 0x3F) << 6) | (bytes[2] & 0x3F));
        bytes.remove_prefix(3);
    }
    return text;
}

/// The way back.
inline std::string Utf8(std::u16string_view text)
{
    if (std::optional<std::string> bytes = EncodeName(text))
        return *std::move(bytes);
    std::string bytes;
    while (!text.empty())
    {
        const bool pair =
            text.size() > 1 && (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
        const std::u16string_view next = text.substr(0, pair ? 2 : 1);
        if (const std::optional<std::string> encoded = EncodeName(next))
            bytes += *encoded;
        else
            tarnwell::detail::AppendUtf8(bytes, next[0]);
        text.remove_prefix(next.size());
    }
    return bytes;
}

/// The text that a call of the module hands out, as UTF-8.
inline std::string Utf8(const Bstr& text)
{
    return Utf8(text.View());
}

/// A text or an address on its way to the module: UTF-8, UTF-16 or a path, whatever the host has.
class Text
{
public:
    // Not explicit, so that every method takes all of these.
    /// @cond
    Text(const char* utf8) : units_(Utf16(utf8)) {}                  // NOLINT
    Text(const std::string& utf8) : units_(Utf16(utf8)) {}           // NOLINT
    Text(std::string_view utf8) : units_(Utf16(utf8)) {}             // NOLINT
    Text(const char16_t* units) : units_(units) {}                   // NOLINT
    Text(std::u16string units) : units_(std::move(units)) {}         // NOLINT
    Text(const Bstr& text) : units_(text.View()) {}                  // NOLINT
    Text(const std::filesystem::path& path) : units_(Units(path)) {} // NOLINT

    /// @endcond

    /// Terminated; valid as long as this object.
    const OLECHAR* Get() const
    {
        return reinterpret_cast<const OLECHAR*>(units_.c_str());
    }
    /// Valid as long as this object.
    std::u16string_view View() const
    {
        return units_;
    }

private:
    static std::u16string Units(const std::filesystem::path& path)
    {
#ifdef _WIN32
        const auto& native = path.native();
        return std::u16string(native.begin(), native.end());
#else
        return Utf16(path.native());
#endif
    }

    std::u16string units_;
};

} // namespace tarnwell::client
