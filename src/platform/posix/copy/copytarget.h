// The file that a copy writes.
#pragma once

#include "platform/posix/files/filehandle.h"

#include <string>
#include <sys/stat.h>

namespace tarnwell::posix
{

// The reason why `target` can't be made a copy of `source`; ERROR_SUCCESS if it can.
DWORD CheckCopyTarget(const struct stat& source, const struct stat& target);

class CopyTarget
{
public:
    CopyTarget() = default;
    CopyTarget(const CopyTarget&) = delete;
    CopyTarget& operator=(const CopyTarget&) = delete;
    // Whatever isn't finished goes.
    ~CopyTarget();

    // Makes the file, or opens the one that is there, of which nothing is changed yet.
    // ERROR_SUCCESS or an error code, as all of these.
    DWORD Open(const std::string& path, const struct stat& source, bool mustBeNew);

    // From now on it is a file without bytes, which only those may read who may read the source.
    DWORD Begin(const struct stat& source);
    DWORD Finish(const struct stat& source);

    int Descriptor() const
    {
        return file_.Get();
    }

private:
    DWORD OpenTaken(const struct stat& source, bool mustBeNew);
    void Remove(const struct stat& made) const;

    std::string path_;
    FileDescriptor file_;
    // Whether the file, as it is, is of this copy's making.
    bool isOurs_ = false;
};

} // namespace tarnwell::posix
