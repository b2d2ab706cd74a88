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

    // Makes the file, or opens the one that is there and changes nothing in it yet. All of these
    // give ERROR_SUCCESS or an error code. ERROR_SHARING_VIOLATION means that somebody has put
    // another file in its place, which then stays.
    DWORD Open(const std::string& path, const struct stat& source, bool mustBeNew);

    // From now on it is a file without bytes. A new one has the source's permission bits as far as
    // the umask allows; one that was there gets all of them.
    DWORD Begin(const struct stat& source);
    DWORD Finish(const struct stat& source);

    int Descriptor() const
    {
        return file_.Get();
    }

private:
    DWORD OpenTaken(const struct stat& source, const struct stat& found);
    // Whether the name still stands for the file.
    DWORD CheckPlace() const;
    void Remove(const struct stat& made) const;

    // Behind the links that led to nothing.
    std::string path_;
    FileDescriptor file_;
    // Whether the file, as it is, is of this copy's making.
    bool isOurs_ = false;
};

} // namespace tarnwell::posix
