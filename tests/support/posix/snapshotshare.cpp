// A backslash is a part of names: the share is a folder with such a name, and so is what it holds.
#include "support/snapshotshare.h"

#include "support/tempfolder.h"

namespace tarnwell::test
{

namespace fs = std::filesystem;

struct SnapshotShare::Place
{
    Place()
    {
        fs::current_path(folder.Path());
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place()
    {
        fs::current_path(before);
    }

    fs::path before = fs::current_path();
    TempFolder folder;
};

SnapshotShare::SnapshotShare(char16_t drive)
    : name_(std::u16string(u"\\\\localhost\\") + drive + u'$'), place_(std::make_unique<Place>())
{
    fs::create_directory(fs::path(name_));
}

SnapshotShare::~SnapshotShare() = default;

bool SnapshotShare::Possible() const
{
    return true;
}

void SnapshotShare::Put(std::u16string_view inside, std::string_view bytes)
{
    const fs::path path(PathOf(inside));
    if (path.has_parent_path())
        fs::create_directories(path.parent_path());
    WriteBytes(path.u16string(), bytes);
}

void SnapshotShare::MakeFolder(std::u16string_view inside)
{
    fs::create_directories(fs::path(PathOf(inside)));
}

void SnapshotShare::Remove(std::u16string_view inside)
{
    fs::remove_all(fs::path(PathOf(inside)));
}

} // namespace tarnwell::test
