// A library that shows every published interface to the outside, so that the tools that compare
// binary interfaces see their tables of functions.
#include <tarnwell/tarnwell.h>

// One function for each, with a plain name.
#define SHOW(name)                                                                                 \
    extern "C" void Take##name(name* object)                                                       \
    {                                                                                              \
        object->AddRef();                                                                          \
    }

using namespace tarnwell;

SHOW(IFileSystemInit)
SHOW(IFileSystem)
SHOW(IFileSystemCopyEx)
SHOW(IFileSystemRevisions)
SHOW(IFileStream)
SHOW(ILib7zSequentialInStream)
SHOW(ILib7zInStream)
SHOW(IFileSystemItem)
SHOW(IFileSystemItemExt)
SHOW(IFileSystemItemIcon)
SHOW(IFileSystemItemComparableUrl)
SHOW(IFile)
SHOW(IFolder)
SHOW(IFolderContents)
SHOW(IRevision)
SHOW(IRevisions)
SHOW(IHostWindow)
SHOW(IHostSettings)
SHOW(IHostCredentials)
SHOW(ICopyProgress)
SHOW(ICopyAmounts)
SHOW(IItemList)
SHOW(IFileSystemHistory)
SHOW(IHistorySink)
SHOW(IFileSystemTrees)
SHOW(ITree)
SHOW(ITreeSink)
SHOW(ITreeWorkFiles)
SHOW(IClassFactory)
SHOW(ISequentialStream)
SHOW(IErrorInfo)
SHOW(ICreateErrorInfo)
SHOW(ISupportErrorInfo)
