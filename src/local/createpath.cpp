#include "local/createpath.h"

#include "frame/paths.h"
#include "frame/status.h"
#include "frame/text.h"

namespace tarnwell
{

namespace
{

bool IsExistingFile(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

HRESULT CreateLevel(const std::u16string& level, const Reporter& reporter)
{
    if (CreateDirectoryW(Wide(level), nullptr))
        return S_OK;
    const DWORD error = GetLastError();
    if (error == ERROR_ACCESS_DENIED) // it may exist already
        return S_OK;
    if (error != ERROR_ALREADY_EXISTS)
    {
        return PublishFailure(reporter, MessageId::FolderCreationFailed, StatusFromError(error),
                              {level});
    }
    if (!IsExistingFile(level))
        return S_OK;
    return PublishFailure(reporter, MessageId::FileInPlaceOfFolder, StatusFromError(error),
                          {level});
}

} // namespace

HRESULT CreateFolderPath(const std::u16string& path, const Reporter& reporter)
{
    std::size_t at = FirstCreatableOffset(path);
    while (at < path.size())
    {
        const std::size_t end = SkipName(path, at);
        const HRESULT status = CreateLevel(path.substr(0, end), reporter);
        if (FAILED(status))
            return status;
        at = SkipSeparators(path, end);
    }
    return S_OK;
}

} // namespace tarnwell
