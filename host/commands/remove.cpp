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

void RemoveAll(const Place& first, const std::vector<std::u16string>& operands,
               VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    std::vector<std::u16string> addresses;
    for (const std::u16string& operand : operands)
    {
        const Address address = ParseAddress(operand);
        if (address.kind != first.address.kind)
            throw UsageError("\"rm\" takes addresses of one file system at a time.");
        addresses.push_back(address.text);
    }
    const ComPtr<IItemList> list = MakeItemList(addresses);
    Call([&] { return first.fileSystem->DeleteItems(list.Get(), noConfirm, recursive); });
}

} // namespace

int Remove(const Session& session)
{
    const VARIANT_BOOL noConfirm = session.line.yes ? VARIANT_TRUE : VARIANT_FALSE;
    const VARIANT_BOOL recursive = session.line.recursive ? VARIANT_TRUE : VARIANT_FALSE;
    const std::vector<std::u16string>& operands = session.line.operands;
    const Place first = Open(session, operands[0]);
    if (operands.size() == 1)
        RemoveOne(first, noConfirm, recursive);
    else
        RemoveAll(first, operands, noConfirm, recursive);
    return exitDone;
}

} // namespace tarnwell::host
