// What the path `\\localhost\C$` leads to, laid out by a test.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tarnwell::test
{

// For as long as it lives; one at a time. Where the platform has no such path, that is the plain
// name of a folder in a working folder of the share's own.
class SnapshotShare
{
public:
    explicit SnapshotShare(char16_t drive = u'C');
    SnapshotShare(const SnapshotShare&) = delete;
    SnapshotShare& operator=(const SnapshotShare&) = delete;
    ~SnapshotShare();

    // False if this system keeps the path for itself; then nothing else here may be called.
    bool Possible() const;

    // `inside` is what follows `\\localhost\C$\`. Folders on the way are made.
    void Put(std::u16string_view inside, std::string_view bytes);
    void MakeFolder(std::u16string_view inside);
    void Remove(std::u16string_view inside);

    // The path of something in the share, for the module's calls.
    std::u16string PathOf(std::u16string_view inside) const
    {
        return name_ + u'\\' + std::u16string(inside);
    }

private:
    struct Place;
    std::u16string name_;
    std::unique_ptr<Place> place_;
};

} // namespace tarnwell::test
