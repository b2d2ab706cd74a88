#include "platform/posix/settings/settingsfile.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tarnwell::posix
{
namespace
{

constexpr std::string_view blanks = " \t\r";

std::string_view Trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

template <class T> std::vector<BYTE> BytesOf(const T* first, std::size_t count)
{
    const auto* const bytes = reinterpret_cast<const BYTE*>(first);
    return {bytes, bytes + count * sizeof(T)};
}

std::vector<BYTE> TextData(std::string_view text)
{
    const std::u16string units = DecodeName(text);
    return BytesOf(units.c_str(), units.size() + 1);
}

std::optional<std::vector<BYTE>> NumberData(std::string_view text)
{
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal)
        text.remove_prefix(2);
    DWORD number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number, isHexadecimal ? 16 : 10);
    if (error != std::errc() || last != end)
        return std::nullopt;
    return BytesOf(&number, 1);
}

Setting SettingOf(std::string_view name, std::string_view type, std::string_view data)
{
    Setting setting;
    setting.name = DecodeName(name);
    if (type == "REG_SZ" || type == "REG_EXPAND_SZ")
    {
        setting.type = type == "REG_SZ" ? REG_SZ : REG_EXPAND_SZ;
        setting.data = TextData(data);
        return setting;
    }
    if (type == "REG_DWORD")
    {
        if (std::optional<std::vector<BYTE>> number = NumberData(data))
        {
            setting.type = REG_DWORD;
            setting.data = *std::move(number);
            return setting;
        }
    }
    setting.data = BytesOf(data.data(), data.size());
    return setting;
}

} // namespace

std::vector<Setting> ParseSettings(std::string_view text)
{
    std::vector<Setting> settings;
    while (!text.empty())
    {
        const std::size_t end = text.find('\n');
        const std::string_view line = Trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        const std::size_t equals = line.find('=');
        if (line.starts_with('#') || equals == std::string_view::npos)
            continue;
        const std::string_view value = Trimmed(line.substr(equals + 1));
        const std::size_t type = std::min(value.find_first_of(blanks), value.size());
        settings.push_back(SettingOf(Trimmed(line.substr(0, equals)), value.substr(0, type),
                                     Trimmed(value.substr(type))));
    }
    return settings;
}

} // namespace tarnwell::posix
