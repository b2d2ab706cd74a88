#include "platform/posix/shell/deletetree.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/dirstream.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

// A tree may be deeper than there are descriptors: the folders nearest to the root are closed
// and come back by "..".
constexpr std::size_t openStreams = 32;

// 0 or an errno; ENOTEMPTY for a folder with something in it.
int RemoveEntry(int folder, const char* name)
{
    if (unlinkat(folder, name, 0) == 0)
        return 0;
    if (errno != EISDIR)
        return errno;
    if (unlinkat(folder, name, AT_REMOVEDIR) == 0)
        return 0;
    return errno == EEXIST ? ENOTEMPTY : errno;
}

// One folder on the way from the root of the tree to where the walk is.
struct Level
{
    std::string name;
    dev_t device = 0;
    ino_t inode = 0;
    DirStream stream;
    // Since the stream began.
    bool removedSome = false;
};

// 0 or an errno.
int OpenLevel(Level& level, int folder, const char* name)
{
    FileDescriptor opened = OpenAt(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat entry;
    if (!opened || fstat(opened.Get(), &entry) != 0)
        return errno;
    level.device = entry.st_dev;
    level.inode = entry.st_ino;
    level.stream.reset(fdopendir(opened.Get()));
    if (!level.stream)
        return errno;
    opened.Detach();
    return 0;
}

class Walk
{
public:
    // The tree `name` in the open folder `parent`, which stays the caller's.
    explicit Walk(int parent) : parent_(parent) {}

    // 0 or an errno.
    int Remove(const char* name)
    {
        int number = Enter(parent_, name);
        while (number == 0 && !levels_.empty())
            number = Step();
        return number;
    }

private:
    int Enter(int folder, const char* name)
    {
        Level level;
        level.name = name;
        const int number = OpenLevel(level, folder, name);
        if (number != 0)
            return number;
        levels_.push_back(std::move(level));
        if (levels_.size() > openStreams)
            levels_[levels_.size() - 1 - openStreams].stream.reset();
        return 0;
    }

    int Step()
    {
        Level& level = levels_.back();
        errno = 0;
        const dirent* const entry = readdir(level.stream.get());
        if (entry == nullptr)
            return errno != 0 ? errno : Leave();
        if (IsDots(entry->d_name))
            return 0;
        const int folder = dirfd(level.stream.get());
        const int number = RemoveEntry(folder, entry->d_name);
        if (number == ENOTEMPTY)
            return Enter(folder, entry->d_name);
        level.removedSome = level.removedSome || number == 0;
        return number == ENOENT ? 0 : number;
    }

    // The folder that the walk is in has nothing more to read: it goes.
    int Leave()
    {
        Level& level = levels_.back();
        if (const int number = ReopenAbove(); number != 0)
            return number;
        if (unlinkat(FolderAbove(), level.name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT)
        {
            levels_.pop_back();
            if (!levels_.empty())
                levels_.back().removedSome = true;
            return 0;
        }
        // Some file systems skip entries when others are removed meanwhile: the folder is read
        // again for as long as that helps.
        if (!level.removedSome)
            return errno;
        level.removedSome = false;
        rewinddir(level.stream.get());
        return 0;
    }

    int FolderAbove() const
    {
        const std::size_t depth = levels_.size();
        return depth == 1 ? parent_ : dirfd(levels_[depth - 2].stream.get());
    }

    // A folder that somebody moves during the walk must not lead it out of the tree. So ".." has to
    // be the folder that was entered.
    int ReopenAbove()
    {
        const std::size_t depth = levels_.size();
        if (depth == 1 || levels_[depth - 2].stream)
            return 0;
        Level& above = levels_[depth - 2];
        Level found;
        if (const int number = OpenLevel(found, dirfd(levels_.back().stream.get()), "..");
            number != 0)
            return number;
        if (found.device != above.device || found.inode != above.inode)
            return EBUSY;
        above.stream = std::move(found.stream);
        above.removedSome = true;
        return 0;
    }

    int parent_;
    std::vector<Level> levels_;
};

} // namespace

DWORD DeleteTree(const std::string& path, bool recurse)
{
    const std::string name(LeafOf(path));
    const FileDescriptor parent = Open(FolderOf(path).c_str(), O_PATH | O_DIRECTORY);
    if (!parent)
        return LookupError(path, errno);
    int number = RemoveEntry(parent.Get(), name.c_str());
    if (number == ENOTEMPTY && recurse)
        number = Walk(parent.Get()).Remove(name.c_str());
    return number == 0 ? ERROR_SUCCESS : ErrorFromErrno(number);
}

} // namespace tarnwell::posix
