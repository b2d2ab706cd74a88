#include "itemlist.h"

#include "noexcept.h"

#include <tarnwell/implements.h>

namespace tarnwell::host
{

namespace
{

class ItemList final : public Implements<IItemList>
{
public:
    explicit ItemList(std::vector<std::u16string> addresses) : addresses_(std::move(addresses)) {}

    HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* count) override
    {
        if (count == nullptr)
            return E_POINTER;
        *count = static_cast<std::int32_t>(addresses_.size());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) override
    {
        if (path == nullptr)
            return E_POINTER;
        *path = nullptr;
        if (index < 0 || static_cast<std::size_t>(index) >= addresses_.size())
            return E_INVALIDARG;
        return WithoutExceptions([&] {
            *path = Bstr(addresses_[static_cast<std::size_t>(index)]).Detach();
            return *path == nullptr ? E_OUTOFMEMORY : S_OK;
        });
    }

private:
    const std::vector<std::u16string> addresses_;
};

} // namespace

ComPtr<IItemList> MakeItemList(const std::vector<std::u16string>& addresses)
{
    return ComPtr<IItemList>::Adopt(new ItemList(addresses));
}

} // namespace tarnwell::host
