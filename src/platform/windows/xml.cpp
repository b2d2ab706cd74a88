#include "platform/xml.h"

#include "platform/wide.h"

#include <tarnwell/pointers.h>

#include <atomic>
#include <msxml2.h>
#include <new>

namespace tarnwell
{

struct XmlPath::Compiled
{
    Bstr expression;
};

XmlPath::XmlPath(const char* expression)
{
    const std::string_view bytes(expression);
    Bstr text(std::u16string(bytes.begin(), bytes.end()));
    if (!text)
        throw std::bad_alloc();
    compiled_ = std::make_unique<Compiled>(Compiled{std::move(text)});
}

XmlPath::~XmlPath() = default;

namespace
{

// The import libraries lack it.
constexpr CLSID documentClass{
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr IID documentInterface{
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The smallest stream that the parser can read from. The handle stays the caller's.
class FileStream final : public IStream
{
public:
    explicit FileStream(HANDLE handle) : handle_(handle) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (iid != IID_IUnknown && iid != IID_ISequentialStream && iid != IID_IStream)
            return E_NOINTERFACE;
        *out = static_cast<IStream*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return ++references_;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override
    {
        DWORD count = 0;
        const BOOL done = ReadFile(handle_, buffer, size, &count, nullptr);
        const HRESULT status = done ? S_OK : HRESULT_FROM_WIN32(GetLastError());
        if (read != nullptr)
            *read = count;
        return status;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                     ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Revert() override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override
    {
        return E_NOTIMPL;
    }

private:
    ~FileStream() = default;

    HANDLE handle_;
    std::atomic<ULONG> references_{1};
};

IXMLDOMNode* NodeOf(const XmlNode& node)
{
    return static_cast<IXMLDOMNode*>(node.get());
}

// Takes over the reference.
XmlNode Owned(ComPtr<IXMLDOMNode> node)
{
    return XmlNode(node.Detach(), [](IXMLDOMNode* old) { old->Release(); });
}

HRESULT MakeDocument(ComPtr<IXMLDOMDocument2>& document)
{
    constexpr DWORD anywhere = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
    return CoCreateInstance(documentClass, nullptr, anywhere, documentInterface,
                            document.OutVoid());
}

HRESULT AskInXPath(IXMLDOMDocument2* document)
{
    const Bstr name(u"SelectionLanguage");
    const Bstr value(u"XPath");
    if (!name || !value)
        return E_OUTOFMEMORY;
    VARIANT language;
    VariantInit(&language);
    language.vt = VT_BSTR;
    language.bstrVal = value.Get();
    return document->setProperty(name.Get(), language);
}

HRESULT LoadFrom(IXMLDOMDocument2* document, HANDLE file)
{
    ComPtr<IPersistStreamInit> loader;
    document->QueryInterface(IID_IPersistStreamInit, loader.OutVoid());
    if (!loader)
        return E_POINTER;
    const auto stream = ComPtr<IStream>::Adopt(new FileStream(file));
    const HRESULT status = loader->InitNew();
    return FAILED(status) ? status : loader->Load(stream.Get());
}

// A value as the parser gives it.
class Value
{
public:
    Value()
    {
        VariantInit(&variant_);
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value()
    {
        VariantClear(&variant_);
    }

    VARIANT* Out()
    {
        return &variant_;
    }
    HRESULT Text(std::u16string& text)
    {
        const HRESULT status = VariantChangeType(&variant_, &variant_, 0, VT_BSTR);
        if (FAILED(status))
            return status;
        const auto* const units = reinterpret_cast<const char16_t*>(variant_.bstrVal);
        text.assign(units == nullptr ? u"" : units, SysStringLen(variant_.bstrVal));
        return S_OK;
    }

private:
    VARIANT variant_;
};

HRESULT CopyItems(IXMLDOMNodeList* list, XmlNodes& nodes)
{
    LONG length = 0;
    HRESULT status = list->get_length(&length);
    for (LONG i = 0; i < length && SUCCEEDED(status); ++i)
    {
        ComPtr<IXMLDOMNode> node;
        status = list->get_item(i, node.Out());
        if (SUCCEEDED(status))
            nodes.push_back(Owned(std::move(node)));
    }
    return status;
}

} // namespace

} // namespace tarnwell

using namespace tarnwell;

// The system's parser builds the whole of a document.
extern "C" HRESULT LoadXml(HANDLE file, const XmlUnasked*, XmlNode& document)
{
    ComPtr<IXMLDOMDocument2> made;
    HRESULT status = MakeDocument(made);
    if (SUCCEEDED(status))
        status = LoadFrom(made.Get(), file);
    if (SUCCEEDED(status))
        status = AskInXPath(made.Get());
    if (SUCCEEDED(status))
        document = Owned(ComPtr<IXMLDOMNode>::Adopt(made.Detach()));
    return status;
}

extern "C" HRESULT ReadXmlText(const XmlNode& node, const XmlPath& path, std::u16string& text)
{
    text.clear();
    ComPtr<IXMLDOMNode> found;
    HRESULT status = NodeOf(node)->selectSingleNode(path.Ready().expression.Get(), found.Out());
    if (status != S_OK)
        return status;
    Value value;
    status = found->get_nodeValue(value.Out());
    return status == S_OK ? value.Text(text) : status;
}

extern "C" HRESULT SelectXmlNodes(const XmlNode& node, const XmlPath& path, XmlNodes& nodes)
{
    nodes.clear();
    ComPtr<IXMLDOMNodeList> list;
    const HRESULT status = NodeOf(node)->selectNodes(path.Ready().expression.Get(), list.Out());
    return FAILED(status) ? status : CopyItems(list.Get(), nodes);
}
