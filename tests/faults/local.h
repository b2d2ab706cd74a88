// The local file system, linked in so that its platform calls can be made to fail.
#pragma once

#include "faults/faults.h"
#include "frame/modulelock.h"
#include "frame/status.h"
#include "platform/wide.h"
#include "support/errorinfo.h"
#include "support/tempfolder.h"

#include <tarnwell/filesystem.h>
#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace tarnwell::test
{

// A folder with the file "a.txt", the folder "sub" and in that "b.txt", and the file system.
class Local
{
public:
    Local();

    std::u16string Path(std::u16string_view name) const
    {
        return folder / name;
    }
    ComPtr<IFile> File(std::u16string_view name = u"a.txt") const;
    ComPtr<IFolder> Folder(std::u16string_view name = u"sub") const;
    ComPtr<IFileSystemItem> Item(std::u16string_view name = u"a.txt") const
    {
        return File(name).As<IFileSystemItem>();
    }
    ComPtr<IFileStream> Open(DWORD access = GENERIC_READ) const;
    // What "a.txt" holds; nothing if it is gone.
    std::optional<std::string> Content() const;
    bool Has(std::u16string_view name) const;

    TempFolder folder;
    ComPtr<IFileSystem> system;
};

inline constexpr std::string_view content = "content";

// What a process holds of the system and the module.
struct Held
{
    std::size_t descriptors;
    std::int32_t objects;

    static Held Now();
    friend bool operator==(const Held&, const Held&) = default;
};

// What one call gave and left.
struct Result
{
    HRESULT status;
    std::u16string text; // "(none)" if there was none
};

template <class F> Result ResultOf(F&& call)
{
    ClearError();
    const HRESULT status = std::forward<F>(call)();
    return {status, TakeErrorText()};
}

MATCHER_P2(FailsWith, status, start, "")
{
    *result_listener << "status " << std::hex << arg.status << ", text "
                     << testing::PrintToString(arg.text);
    return arg.status == status && arg.text.starts_with(start);
}

} // namespace tarnwell::test
