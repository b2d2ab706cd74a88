#include "commands.h"
#include "itemlist.h"
#include "items.h"

namespace tarnwell::host
{

namespace
{

void RemoveOne(const Place& place, VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    const ComPtr<IFileSystemItem> item = FindItem(place);
    Call([&] { return item->Delete(noConfirm, recursive); });
}

// The addresses as the module takes them.
std::vector<std::u16string> AddressesOf(const std::vector<std::u16string>& operands)
{
    std::vector<std::u16string> addresses;
    for (const std::u16string& operand : operands)
    {
        const Address address = ParseAddress(operand);
        if (address.kind != ParseAddress(operands[0]).kind)
            throw UsageError("\"rm\" takes addresses of one file system at a time.");
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
    if (addresses.size() == 1)
        RemoveOne(place, noConfirm, recursive);
    else
        RemoveAll(place, addresses, noConfirm, recursive);
    return exitDone;
}

} // namespace tarnwell::host
