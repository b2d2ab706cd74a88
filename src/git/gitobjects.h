// The Git file system as the host sees it.
#pragma once

#include "git/gitcommands.h"
#include "git/gituri.h"
#include "workingcopy/workingcopyobjects.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

struct GitTool
{
    using Address = GITUri;
    static constexpr const GUID& systemClass = CLSID_GITFileSystem;
    static constexpr const GUID& fileClass = CLSID_GITFile;
    static constexpr const char16_t* source = gitAddresses.source;
    static constexpr auto GetLog = GetGitLog;
    static constexpr auto GetContent = GetGitContent;
};

using GITFileObject = WorkingCopyFileObject<GitTool>;
using GITFileSystemObject = WorkingCopyFileSystemObject<GitTool>;

} // namespace tarnwell
