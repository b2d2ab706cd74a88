// Two ends of a copy through streams, made up here.
#pragma once

#include "frame/comobject.h"
#include "platform/wide.h"
#include "support/fakeprogress.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>

namespace tarnwell::test
{

// What happens at one call: the status, and how much less is moved than could be.
struct CopyEvent
{
    HRESULT status = S_OK;
    ULONG missing = 0;
};

// One end of the copy.
struct CopyEnd
{
    std::string bytes;
    // By the number of the call, from 0; all others are as they should be.
    std::vector<CopyEvent> events;

    HRESULT find = S_OK;
    HRESULT open = S_OK;
    bool hasData = true;
    // What the file says of itself, if it says anything.
    std::optional<std::uint64_t> listedSize;

    std::vector<std::u16string> calls;
    std::vector<ULONG> sizes;
    int streams = 0;

    CopyEvent Next()
    {
        const std::size_t n = sizes.size();
        return n < events.size() ? events[n] : CopyEvent();
    }
};

class EndStream : public IFileStream, public ::ISequentialStream, public ErrorInfoFor<IFileStream>
{
public:
    using Interfaces = InterfaceList<IFileStream, ::ISequentialStream>;

    CopyEnd* end = nullptr;

    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override
    {
        const CopyEvent event = end->Next();
        end->sizes.push_back(size);
        const std::string_view rest = std::string_view(end->bytes).substr(at_);
        *read = static_cast<ULONG>(std::min<std::size_t>(rest.size(), size)) - event.missing;
        std::memcpy(buffer, rest.data(), *read);
        at_ += *read;
        return event.status;
    }
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override
    {
        const CopyEvent event = end->Next();
        end->sizes.push_back(size);
        *written = size - event.missing;
        end->bytes.append(static_cast<const char*>(buffer), *written);
        return event.status;
    }

protected:
    ~EndStream()
    {
        --end->streams;
    }

private:
    std::size_t at_ = 0;
};

class StreamWithoutData : public IFileStream, public ErrorInfoFor<IFileStream>
{
public:
    using Interfaces = InterfaceList<IFileStream>;

    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }

protected:
    ~StreamWithoutData() = default;
};

inline std::u16string HexDigits(std::uint32_t number)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%x", number);
    return {digits, digits + std::strlen(digits)};
}

class EndFile final : public LocalObject<IFile>
{
public:
    explicit EndFile(CopyEnd& end) : end_(end) {}

    HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* low) override
    {
        end_.calls.push_back(u"size");
        *low = static_cast<std::uint32_t>(end_.listedSize.value_or(0));
        return end_.listedSize ? S_OK : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* high) override
    {
        *high = static_cast<std::uint32_t>(end_.listedSize.value_or(0) >> 32);
        return end_.listedSize ? S_OK : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override
    {
        end_.calls.push_back(u"open " + HexDigits(access) + u" " + HexDigits(disposition));
        if (FAILED(end_.open))
            return end_.open;
        if (!end_.hasData)
            return MakeInstance<StreamWithoutData>(nullptr, IID_IFileStream,
                                                   reinterpret_cast<void**>(stream));
        ComPtr<ComObject<EndStream>> made;
        const HRESULT status = MakeObject<EndStream>(made);
        made->end = &end_;
        ++end_.streams;
        return FAILED(status)
                   ? status
                   : made->QueryInterface(IID_IFileStream, reinterpret_cast<void**>(stream));
    }

private:
    CopyEnd& end_;
};

class CopyEnds final : public LocalObject<IFileSystem>
{
public:
    CopyEnd source;
    CopyEnd target;
    EndFile sourceFile{source};
    EndFile targetFile{target};

    HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                      IFile** file) override
    {
        const bool isSource = Units(path) == u"from:s";
        CopyEnd& end = isSource ? source : target;
        end.calls.push_back(std::u16string(Units(path)) +
                            (mustExist == VARIANT_TRUE ? u" must exist" : u" may exist"));
        if (FAILED(end.find))
            return end.find;
        *file = isSource ? &sourceFile : &targetFile;
        (*file)->AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR*, VARIANT_BOOL, IFolder**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR*, const OLECHAR*, ICopyProgress*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR*, BSTR*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList*, VARIANT_BOOL, VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t, ::IUnknown*, std::uint32_t*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR*, const OLECHAR*, BSTR*) override
    {
        return E_NOTIMPL;
    }
};

} // namespace tarnwell::test
