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
/// 32 bits on every platform.
using ULONG = std::uint32_t;
/// Any value but 0 is true.
using BOOL = std::int32_t;

/// 16 bits wide; any value but 0 counts as true on input, true is VARIANT_TRUE on output.
using VARIANT_BOOL = std::int16_t;

/// One UTF-16 unit. File names that are not valid text use lone surrogates, see text.h.
using OLECHAR = char16_t;
/// A terminated text.
using LPOLESTR = OLECHAR*;
/// A terminated text that stays as it is.
using LPCOLESTR = const OLECHAR*;

/// Text that is handed out: UTF-16 units with their count in front of the first one and a
/// terminator behind the last. Whoever receives it frees it with SysFreeString.
using BSTR = OLECHAR*;

/// The owner window of a dialog; null where there is none.
using HWND = void*;

/// True, as the module gives it.
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
/// False.
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// The identifier of a class or of an interface, 16 bytes.
struct GUID
{
    /// @cond
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    /// @endcond

    /// All 16 bytes are compared.
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
    /// All 16 bytes are compared.
    friend constexpr bool operator!=(const GUID& left, const GUID& right)
    {
        return !(left == right);
    }
};

/// @cond
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
/// @endcond

namespace tarnwell::detail
{
// Statuses are written with their top bit set; this keeps the narrowing in one place.
constexpr HRESULT Status(std::uint32_t value)
{
    return static_cast<HRESULT>(value);
}
} // namespace tarnwell::detail

/// Success.
inline constexpr HRESULT S_OK = 0;
/// Success, and the answer is no.
inline constexpr HRESULT S_FALSE = 1;
/// Isn't offered.
inline constexpr HRESULT E_NOTIMPL = tarnwell::detail::Status(0x80004001);
/// The object has no such interface.
inline constexpr HRESULT E_NOINTERFACE = tarnwell::detail::Status(0x80004002);
/// A pointer is null that must not be.
inline constexpr HRESULT E_POINTER = tarnwell::detail::Status(0x80004003);
/// Cancelled.
inline constexpr HRESULT E_ABORT = tarnwell::detail::Status(0x80004004);
/// Failed, for a reason that only the text tells.
inline constexpr HRESULT E_FAIL = tarnwell::detail::Status(0x80004005);
/// The module has failed to start.
inline constexpr HRESULT E_UNEXPECTED = tarnwell::detail::Status(0x8000FFFF);
/// No right, or no credentials.
inline constexpr HRESULT E_ACCESSDENIED = tarnwell::detail::Status(0x80070005);
/// Out of memory.
inline constexpr HRESULT E_OUTOFMEMORY = tarnwell::detail::Status(0x8007000E);
/// An argument can't be.
inline constexpr HRESULT E_INVALIDARG = tarnwell::detail::Status(0x80070057);
/// Failed, without a status of its own.
inline constexpr HRESULT DISP_E_EXCEPTION = tarnwell::detail::Status(0x80020009);
/// A part of another object can only be asked for IUnknown.
inline constexpr HRESULT CLASS_E_NOAGGREGATION = tarnwell::detail::Status(0x80040110);
/// The module makes no such class.
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = tarnwell::detail::Status(0x80040111);
/// No class of that identifier is registered.
inline constexpr HRESULT REGDB_E_CLASSNOTREG = tarnwell::detail::Status(0x80040154);

/// Whether a status is one of success.
constexpr bool SUCCEEDED(HRESULT status)
{
    return status >= 0;
}

/// Whether a status is one of failure.
constexpr bool FAILED(HRESULT status)
{
    return status < 0;
}

/// @cond
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
/// @endcond

/// Every interface begins with these three. Interfaces have no virtual destructor: an object
/// goes away with its last Release, and the layout is part of the binary contract.
struct IUnknown
{
    /// The same object by another of its interfaces.
    /// @param      iid  The interface's identifier.
    /// @param[out] out  A new reference, the caller's to release; null on failure.
    /// @return S_OK; E_NOINTERFACE if the object has no such interface; E_POINTER. Bare.
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) = 0;
    /// Takes a reference more.
    /// @return The new count, for diagnosis only.
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    /// Gives a reference back; with the last one the object goes.
    /// @return The new count, for diagnosis only.
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;
};

/// Makes objects of one class.
struct IClassFactory : IUnknown
{
    /// Makes an object.
    /// @param      outer  Null, or the object that the new one becomes a part of.
    /// @param      iid    Which of its interfaces is wanted; IID_IUnknown for a part.
    /// @param[out] out    The caller's to release; null on failure.
    /// @return S_OK; E_NOINTERFACE; E_POINTER; CLASS_E_NOAGGREGATION for another interface of a
    ///         part; E_OUTOFMEMORY. Bare.
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) = 0;
    /// Changes the module's lock count, which decides nothing: the module stays loaded.
    /// @param lock  Raises the count, or with 0 lowers it.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;

protected:
    ~IClassFactory() = default;
};

/// Bytes, one after the other.
struct ISequentialStream : IUnknown
{
    /// Reads on from the present position.
    /// @param[out] buffer  Room for `size` bytes; the caller's.
    /// @param      size    How many bytes at most.
    /// @param[out] read    How many were read; 0 is the end, unless `size` is. Must not be null for
    ///                     local files.
    /// @return S_OK, also at the end; the status of the platform's call or of the server.
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) = 0;
    /// Writes on from the present position.
    /// @param      buffer   The bytes; the caller's.
    /// @param      size     How many there are.
    /// @param[out] written  How many were written, which may be fewer. Must not be null, but for
    /// FTP.
    /// @return S_OK; the status of the platform's call or of the server; a failure for what only
    ///         reads.
    virtual HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) = 0;

protected:
    ~ISequentialStream() = default;
};

/// One failure's text, as GetErrorInfo gives it. Each text is the caller's to free.
struct IErrorInfo : IUnknown
{
    /// @param[out] guid  The interface whose method failed.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) = 0;
    /// @param[out] source  The class whose object failed; empty.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) = 0;
    /// @param[out] description  The text for the user.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;
    /// @param[out] helpFile  Empty.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* helpFile) = 0;
    /// @param[out] helpContext  0.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetHelpContext(std::uint32_t* helpContext) = 0;

protected:
    ~IErrorInfo() = default;
};

/// The writable side of an IErrorInfo. Texts are copied.
struct ICreateErrorInfo : IUnknown
{
    /// @param guid  The interface whose method failed.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) = 0;
    /// @param source  The class whose object failed.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) = 0;
    /// @param description  The text for the user.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR description) = 0;
    /// @param helpFile  A file of help.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR helpFile) = 0;
    /// @param helpContext  A place in it.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE SetHelpContext(std::uint32_t helpContext) = 0;

protected:
    ~ICreateErrorInfo() = default;
};

/// Tells for which interfaces an object publishes texts.
struct ISupportErrorInfo : IUnknown
{
    /// Whether a failing method of an interface leaves a text behind.
    /// @param iid  The interface's identifier.
    /// @return S_OK if so, S_FALSE if not.
    virtual HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) = 0;

protected:
    ~ISupportErrorInfo() = default;
};

// What the library exports. A host that loads it by path looks these names up itself.
extern "C"
{
    /// A new text.
    /// @param text  Copied up to its first terminator.
    /// @return Null for null, or when memory is short.
    BSTR SysAllocString(const OLECHAR* text);
    /// A new text, which may have terminators inside.
    /// @param text    Copied; null gives a text of zeros.
    /// @param length  In units.
    /// @return Null when memory is short.
    BSTR SysAllocStringLen(const OLECHAR* text, std::uint32_t length);
    /// Frees a text.
    /// @param text  Null is allowed.
    void SysFreeString(BSTR text);
    /// The count in front of a text.
    /// @param text  Null is allowed.
    /// @return In units; 0 for null.
    std::uint32_t SysStringLen(BSTR text);

    /// Takes the calling thread's error information out.
    /// @param      reserved  0.
    /// @param[out] info      The caller's to release.
    /// @return S_OK, or S_FALSE and null if there is none.
    HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info);
    /// Sets the calling thread's error information.
    /// @param reserved  0.
    /// @param info      Null clears it.
    /// @return S_OK.
    HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info);
    /// New error information.
    /// @param[out] info  The caller's to release; answers IErrorInfo, too.
    /// @return S_OK; E_OUTOFMEMORY.
    HRESULT CreateErrorInfo(ICreateErrorInfo** info);

    /// The class object of a class.
    /// @param      clsid  One of the six in classes.h that can be made.
    /// @param      iid    IID_IClassFactory.
    /// @param[out] out    The caller's to release; null on failure.
    /// @return S_OK; CLASS_E_CLASSNOTAVAILABLE for a class that the module doesn't make;
    ///         E_NOINTERFACE; E_POINTER; E_UNEXPECTED if the module has failed to start. Bare.
    HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** out);
    /// Whether the module could be unloaded.
    /// @return S_FALSE always: it stays loaded until the process ends.
    HRESULT DllCanUnloadNow();
    /// Publishes what there is to publish: on this platform nothing.
    /// @return S_OK.
    HRESULT DllRegisterServer();
    /// Takes it back.
    /// @return S_OK.
    HRESULT DllUnregisterServer();
}

#endif
