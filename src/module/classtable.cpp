#include "module/classtable.h"

#include "frame/comobject.h"
#include "ftp/ftpobjects.h"
#include "git/gitobjects.h"
#include "local/filesystem.h"
#include "mercurial/hgobjects.h"
#include "module/classfactory.h"
#include "perforce/p4objects.h"
#include "subversion/svnobjects.h"

#include <tarnwell/classes.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <new>

namespace tarnwell
{

namespace
{

// A class, how an instance of it is made, and its class object.
struct ClassRow
{
    const GUID& classId;
    InstanceMaker make;
    std::atomic<ClassFactory*> cached{nullptr}; // holds one reference
};

constinit ClassRow rows[] = {
    {CLSID_Win32FileSystem, MakeInstance<CWin32FileSystemObject>},
    {CLSID_P4FileSystem, MakeInstance<P4FileSystemObject>},
    {CLSID_SVNFileSystem, MakeInstance<SVNFileSystemObject>},
    {CLSID_FTPFileSystem, MakeInstance<FTPFileSystemObject>},
    {CLSID_HGFileSystem, MakeInstance<HGFileSystemObject>},
    {CLSID_GITFileSystem, MakeInstance<GITFileSystemObject>},
};

// Guards the making of the cached class objects. InitializeClassTable and ReleaseClassTable make
// and delete it: constructors and destructors of static objects would run too late and too early.
constinit CRITICAL_SECTION tableLock{};

class TableLocked
{
public:
    TableLocked()
    {
        EnterCriticalSection(&tableLock);
    }
    TableLocked(const TableLocked&) = delete;
    TableLocked& operator=(const TableLocked&) = delete;
    ~TableLocked()
    {
        LeaveCriticalSection(&tableLock);
    }
};

HRESULT CacheClassObject(ClassRow& row)
{
    const TableLocked locked;
    if (row.cached.load(std::memory_order_relaxed) != nullptr)
        return S_OK;
    ClassFactory* const made = new (std::nothrow) ClassFactory(row.make);
    if (made == nullptr)
        return E_OUTOFMEMORY;
    made->AddRef();
    row.cached.store(made, std::memory_order_release);
    return S_OK;
}

} // namespace

HRESULT InitializeClassTable()
{
    if (InitializeCriticalSectionEx(&tableLock, 0, 0))
        return S_OK;
    return EnsureFailed(StatusFromLastError());
}

void ReleaseClassTable()
{
    for (ClassRow& row : rows)
    {
        if (ClassFactory* const cached = row.cached.exchange(nullptr))
            cached->Release();
    }
    DeleteCriticalSection(&tableLock);
}

HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    ClassRow* const row = std::find_if(std::begin(rows), std::end(rows),
                                       [&](const ClassRow& r) { return r.classId == clsid; });
    if (row == std::end(rows))
        return CLASS_E_CLASSNOTAVAILABLE;
    if (row->cached.load(std::memory_order_acquire) == nullptr)
    {
        const HRESULT status = CacheClassObject(*row);
        if (FAILED(status))
            return status;
    }
    return row->cached.load(std::memory_order_acquire)->QueryInterface(iid, out);
}

} // namespace tarnwell
