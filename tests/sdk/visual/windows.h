// As much of the system's headers as the published ones use, in the words of Visual C++'s: for a
// compiler in its mode that can't read the system's own. The macros are those that trip others.
#pragma once

#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
#define interface struct
#define small char
#define near
#define far
#define IN
#define OUT
#define DELETE 0x00010000L
#define ERROR 0
#define NO_ERROR 0L
#define TRUE 1
#define FALSE 0
#define CreateFile CreateFileW
#define DeleteFile DeleteFileW
#define CopyFile CopyFileW
#define CreateDirectory CreateDirectoryW
#define GetObject GetObjectW
#define GetMessage GetMessageW
#define GetUserName GetUserNameW
#define GetCurrentTime() GetTickCount()
#define LoadLibrary LoadLibraryW
#define FindResource FindResourceW
#define Yield()

#define STDMETHODCALLTYPE __stdcall
#define WINAPI __stdcall
#define STDAPI extern "C" HRESULT STDMETHODCALLTYPE

typedef long HRESULT;
typedef unsigned long ULONG;
typedef unsigned long DWORD;
typedef unsigned int UINT;
typedef int BOOL;
typedef short VARIANT_BOOL;
typedef wchar_t WCHAR;
typedef WCHAR OLECHAR;
typedef OLECHAR* LPOLESTR;
typedef const OLECHAR* LPCOLESTR;
typedef OLECHAR* BSTR;
typedef void* LPVOID;
typedef struct HWND__* HWND;
typedef struct HINSTANCE__* HMODULE;
typedef long long(WINAPI* FARPROC)();

typedef struct _GUID
{
    unsigned long Data1;
    unsigned short Data2;
    unsigned short Data3;
    unsigned char Data4[8];
} GUID;
typedef GUID IID;
typedef GUID CLSID;
#define REFGUID const GUID&
#define REFIID const IID&
#define REFCLSID const CLSID&

int operator==(REFGUID left, REFGUID right);
int operator!=(REFGUID left, REFGUID right);

#define S_OK ((HRESULT)0L)
#define S_FALSE ((HRESULT)1L)
#define E_NOTIMPL ((HRESULT)0x80004001L)
#define E_NOINTERFACE ((HRESULT)0x80004002L)
#define E_POINTER ((HRESULT)0x80004003L)
#define E_ABORT ((HRESULT)0x80004004L)
#define E_FAIL ((HRESULT)0x80004005L)
#define E_ACCESSDENIED ((HRESULT)0x80070005L)
#define E_OUTOFMEMORY ((HRESULT)0x8007000EL)
#define E_INVALIDARG ((HRESULT)0x80070057L)
#define E_UNEXPECTED ((HRESULT)0x8000FFFFL)
#define CLASS_E_CLASSNOTAVAILABLE ((HRESULT)0x80040111L)
#define SUCCEEDED(status) (((HRESULT)(status)) >= 0)
#define FAILED(status) (((HRESULT)(status)) < 0)
#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

struct __declspec(uuid("00000000-0000-0000-C000-000000000046")) IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};
struct IClassFactory : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;
};
struct ISequentialStream : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) = 0;
};
struct IErrorInfo : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;
};
struct ICreateErrorInfo : IUnknown
{
};
struct ISupportErrorInfo : IUnknown
{
};

extern "C"
{
    BSTR __stdcall SysAllocString(const OLECHAR* text);
    BSTR __stdcall SysAllocStringLen(const OLECHAR* text, UINT length);
    void __stdcall SysFreeString(BSTR text);
    UINT __stdcall SysStringLen(BSTR text);
    HRESULT __stdcall GetErrorInfo(ULONG reserved, IErrorInfo** info);
    HRESULT __stdcall SetErrorInfo(ULONG reserved, IErrorInfo* info);
    HRESULT __stdcall CreateErrorInfo(ICreateErrorInfo** info);
    HRESULT __stdcall CoInitializeEx(LPVOID reserved, DWORD how);
    void __stdcall CoUninitialize();
    HMODULE __stdcall LoadLibraryExW(const WCHAR* file, void* reserved, DWORD flags);
    FARPROC __stdcall GetProcAddress(HMODULE module, const char* name);
    DWORD __stdcall GetModuleFileNameW(HMODULE module, WCHAR* file, DWORD size);
    DWORD __stdcall GetEnvironmentVariableW(const WCHAR* name, WCHAR* value, DWORD size);
    DWORD __stdcall GetLastError();
}

#define COINIT_APARTMENTTHREADED 2
#define LOAD_LIBRARY_SEARCH_DEFAULT_DIRS 0x1000
#define LOAD_WITH_ALTERED_SEARCH_PATH 8
