// The Mercurial file system as the host sees it.
#pragma once

#include "mercurial/hgcommands.h"
#include "mercurial/hguri.h"
#include "workingcopy/workingcopyobjects.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

struct HGTool
{
    using Address = HGUri;
    static constexpr const GUID& systemClass = CLSID_HGFileSystem;
    static constexpr const GUID& fileClass = CLSID_HGFile;
    static constexpr const char16_t* source = mercurialAddresses.source;
    static constexpr auto GetLog = GetHgLog;
    static constexpr auto GetContent = GetHgContent;
};

using HGFileObject = WorkingCopyFileObject<HGTool>;
using HGFileSystemObject = WorkingCopyFileSystemObject<HGTool>;

} // namespace tarnwell
