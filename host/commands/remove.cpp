#include "commands.h"
#include "itemlist.h"
#include "items.h"
#include "system.h"

namespace tarnwell::host
{

namespace
{

constexpr HRESULT cancelled = static_cast<HRESULT>(0x800704C7);

[[noreturn]] void ThrowNotDeleted(Word why, const std::vector<std::u16string>& addresses)
{
    std::u16string message = Say(why);
    for (const std::u16string& address : addresses)
        message += u"\n  " + address;
    throw Failure{cancelled, message};
}

bool IsThere(const Place& place)
{
    try
    {
        FindItem(place);
        return true;
    }
    catch (const Failure& failure)
    {
        if (!IsMissing(failure))
            throw;
        return false;
    }
}

// The module doesn't tell a "no" from other outcomes: a list then succeeds, and a single item fails
// without a cause. But something is left.
void LookForTheLeft(const Place& place, const std::vector<std::u16string>& addresses)
{
    std::vector<std::u16string> left;
    for (const std::u16string& address : addresses)
    {
        if (IsThere({{place.address.kind, address}, place.fileSystem}))
            left.push_back(address);
    }
    if (!left.empty())
        ThrowNotDeleted(Word::NotDeletedRefused, left);
}

void RemoveOne(const Place& place, VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    const ComPtr<IFileSystemItem> item = FindItem(place);
    try
    {
        Call([&] { return item->Delete(noConfirm, recursive); });
    }
    catch (const Failure& failure)
    {
        if (noConfirm == VARIANT_FALSE && failure.status == E_FAIL)
            LookForTheLeft(place, {place.address.text});
        throw;
    }
}

// The addresses as the module takes them.
std::vector<std::u16string> AddressesOf(const std::vector<std::u16string>& operands)
{
    std::vector<std::u16string> addresses;
    for (const std::u16string& operand : operands)
    {
        const Address address = ParseAddress(operand);
        if (address.kind != ParseAddress(operands[0]).kind)
            throw UsageError{{Word::DeletesInOne, {}}};
        addresses.push_back(address.text);
    }
    return addresses;
}

void RemoveAll(const Place& place, const std::vector<std::u16string>& addresses,
               VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    const ComPtr<IItemList> list = MakeItemList(addresses);
    Call([&] { return place.fileSystem->DeleteItems(list.Get(), noConfirm, recursive); });
}

} // namespace

int Remove(const Session& session)
{
    const VARIANT_BOOL noConfirm = session.line.yes ? VARIANT_TRUE : VARIANT_FALSE;
    const VARIANT_BOOL recursive = session.line.recursive ? VARIANT_TRUE : VARIANT_FALSE;
    const std::vector<std::u16string> addresses = AddressesOf(session.line.operands);
    const Place place = Open(session, session.line.operands[0]);
    if (!session.line.yes && !SomebodyCanAnswer())
        ThrowNotDeleted(Word::NotDeletedUnasked, addresses);
    if (addresses.size() == 1)
        RemoveOne(place, noConfirm, recursive);
    else
        RemoveAll(place, addresses, noConfirm, recursive);
    if (!session.line.yes)
        LookForTheLeft(place, addresses);
    return exitDone;
}

} // namespace tarnwell::host
