/// @file
/// The reference-counted layer that tarnwell's interfaces stand on.
///
/// On Windows this is the system's own component layer. Elsewhere this header declares the same
/// names with the same sizes and the same order of virtual functions, so that one source serves
/// both. Only what a host of tarnwell needs is here.
#pragma once

#include <cstddef>
#include <cstdint>

#ifdef _WIN32

#include <windows.h>

#include <objidl.h>
#include <ocidl.h>
#include <oleauto.h>
#include <unknwn.h>

#else

#define STDMETHODCALLTYPE

/// A status: 0 or positive is success, negative is failure.
using HRESULT = std::int32_t;
using ULONG = std::uint32_t;
using BOOL = std::int32_t;

/// 16 bits wide; any value but 0 counts as true on input, true is VARIANT_TRUE on output.
using VARIANT_BOOL = std::int16_t;

/// One UTF-16 unit. File names that are not valid text use lone surrogates, see text.h.
using OLECHAR = char16_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;

/// Text that is handed out: UTF-16 units with their count in front of the first one and a
/// terminator behind the last. Whoever receives it frees it with SysFreeString.
using BSTR = OLECHAR*;

/// The owner window of a dialog; null where there is none.
using HWND = void*;

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend constexpr bool operator==(const GUID& left, const GUID& right)
    {
        if (left.Data1 != right.Data1 || left.Data2 != right.Data2 || left.Data3 != right.Data3)
            return false;
        for (int i = 0; i < 8; ++i)
        {
            if (left.Data4[i] != right.Data4[i])
                return false;
        }
        return true;
    }
    friend constexpr bool operator!=(const GUID& left, const GUID& right)
    {
        return !(left == right);
    }
};

using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

namespace tarnwell::detail
{
// Statuses are written with their top bit set; this keeps the narrowing in one place.
constexpr HRESULT Status(std::uint32_t value)
{
    return static_cast<HRESULT>(value);
}
} // namespace tarnwell::detail

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = tarnwell::detail::Status(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = tarnwell::detail::Status(0x80004002);
inline constexpr HRESULT E_POINTER = tarnwell::detail::Status(0x80004003);
inline constexpr HRESULT E_ABORT = tarnwell::detail::Status(0x80004004);
inline constexpr HRESULT E_FAIL = tarnwell::detail::Status(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = tarnwell::detail::Status(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = tarnwell::detail::Status(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = tarnwell::detail::Status(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = tarnwell::detail::Status(0x80070057);
inline constexpr HRESULT DISP_E_EXCEPTION = tarnwell::detail::Status(0x80020009);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = tarnwell::detail::Status(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = tarnwell::detail::Status(0x80040111);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = tarnwell::detail::Status(0x80040154);

constexpr bool SUCCEEDED(HRESULT status)
{
    return status >= 0;
}

constexpr bool FAILED(HRESULT status)
{
    return status < 0;
}

inline constexpr IID IID_IUnknown{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IClassFactory{0x00000001, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_ISequentialStream{
    0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};
inline constexpr IID IID_IErrorInfo{
    0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr IID IID_ICreateErrorInfo{
    0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr IID IID_ISupportErrorInfo{
    0xDF0B3D60, 0x548F, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};

/// Every interface begins with these three. Interfaces have no virtual destructor: an object
/// goes away with its last Release, and the layout is part of the binary contract.
struct IUnknown
{
    /// Puts a new reference to the interface `iid` of the same object into `*out`, or null.
    /// E_NOINTERFACE if the object has no such interface, E_POINTER if `out` is null.
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) = 0;
    /// Both return the new count, for diagnosis only.
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;
};

struct IClassFactory : IUnknown
{
    /// Makes an object. With a non-null `outer` the object becomes a part of `outer`, and `iid`
    /// must be IID_IUnknown (else CLASS_E_NOAGGREGATION).
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) = 0;
    /// Raises (non-zero) or lowers (zero) the module's lock count.
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;

protected:
    ~IClassFactory() = default;
};

struct ISequentialStream : IUnknown
{
    /// Reads up to `size` bytes. The end of the data shows as S_OK with `*read` 0. The pointers to
    /// the counts must not be null for local streams.
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) = 0;
    /// Writes up to `size` bytes; `*written` may be less.
    virtual HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) = 0;

protected:
    ~ISequentialStream() = default;
};

/// One failure's text, as GetErrorInfo gives it. Each text is the caller's to free.
struct IErrorInfo : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* helpFile) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHelpContext(std::uint32_t* helpContext) = 0;

protected:
    ~IErrorInfo() = default;
};

/// The writable side of an IErrorInfo. Texts are copied.
struct ICreateErrorInfo : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR description) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR helpFile) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHelpContext(std::uint32_t helpContext) = 0;

protected:
    ~ICreateErrorInfo() = default;
};

struct ISupportErrorInfo : IUnknown
{
    /// S_OK if a failing method of interface `iid` leaves a text behind, S_FALSE if not.
    virtual HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) = 0;

protected:
    ~ISupportErrorInfo() = default;
};

/// What the library exports. A host that loads it by path looks these names up itself.
extern "C"
{
    /// A new text, copied up to its first terminator; null for null or when memory is short.
    BSTR SysAllocString(const OLECHAR* text);
    /// A new text of `length` units, copied from `text`, or zeroed if `text` is null.
    BSTR SysAllocStringLen(const OLECHAR* text, std::uint32_t length);
    /// Null is allowed.
    void SysFreeString(BSTR text);
    /// The count in front of the text, in units; 0 for null.
    std::uint32_t SysStringLen(BSTR text);

    /// Takes the calling thread's error information out: S_OK and the object (the caller's
    /// reference), or S_FALSE and null. `reserved` is 0.
    HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info);
    /// Sets or, with null, clears the calling thread's error information. `reserved` is 0.
    HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info);
    HRESULT CreateErrorInfo(ICreateErrorInfo** info);

    /// The class object of `clsid`, asked for `iid`. CLASS_E_CLASSNOTAVAILABLE for a class that
    /// the module doesn't create.
    HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** out);
    /// S_FALSE always: the module stays loaded until the process ends.
    HRESULT DllCanUnloadNow();
    /// Nothing to publish on this platform; S_OK.
    HRESULT DllRegisterServer();
    HRESULT DllUnregisterServer();
}

#endif
