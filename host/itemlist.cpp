#include "itemlist.h"

#include "refcount.h"

namespace tarnwell::host
{

namespace
{

class ItemList final : public IItemList
{
public:
    explicit ItemList(std::vector<std::u16string> addresses) : addresses_(std::move(addresses)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        return Query<IItemList>(this, iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return references_.Up();
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return references_.Down(this);
    }

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
        *path = Bstr(addresses_[static_cast<std::size_t>(index)]).Detach();
        return *path == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    const std::vector<std::u16string> addresses_;
    ReferenceCount references_;
};

} // namespace

ComPtr<IItemList> MakeItemList(const std::vector<std::u16string>& addresses)
{
    return ComPtr<IItemList>::Adopt(new ItemList(addresses));
}

} // namespace tarnwell::host
