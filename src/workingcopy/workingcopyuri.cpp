#include "workingcopy/workingcopyuri.h"

#include "frame/exception.h"
#include "frame/messages.h"

namespace tarnwell
{

namespace
{

[[noreturn]] void ThrowInvalid(const AddressRow& row, const std::u16string& address)
{
    throw ComException(E_INVALIDARG, FormatMessageById(row.invalid, {address}), At(row.source));
}

bool IsNegativeNumber(std::u16string_view text)
{
    return text.size() > 1 && text[1] >= u'0' && text[1] <= u'9';
}

} // namespace

void RefuseOptions(const AddressRow& row, const std::u16string& address, std::u16string_view path,
                   std::optional<std::u16string_view> revision)
{
    const bool isOption = revision && revision->starts_with(u'-') &&
                          !(row.hasNegativeRevisions && IsNegativeNumber(*revision));
    if (isOption || path.starts_with(u'-'))
        ThrowInvalid(row, address);
}

WorkingCopyUri::WorkingCopyUri(std::u16string text, const AddressRow& row) : Uri(std::move(text))
{
    if (!HasScheme(row.scheme))
        ThrowInvalid(row, GetText());
}

std::shared_ptr<Uri> WorkingCopyUri::Clone() const
{
    return Compose(workingCopyMarker.Strip(GetParts()));
}

// A plain address, which may have any scheme.
std::shared_ptr<Uri> WorkingCopyUri::ForDisplay() const
{
    return Uri({}).Compose(GetParts());
}

std::shared_ptr<Uri> WorkingCopyUri::ForComparison() const
{
    return Uri({}).Compose(workingCopyMarker.Strip(GetParts()));
}

const AddressForm& WorkingCopyUri::Form() const
{
    static const AddressForm form{
        Pattern(u"([^:]+)://(.*)"), {1, noGroup, noGroup, noGroup, noGroup, 2}, SchemeAndPath};
    return form;
}

} // namespace tarnwell
