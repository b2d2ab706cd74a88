// One side of a comparison: an item of a file system, or of a tree.
#pragma once

#include "content.h"
#include "tree.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::host
{

class Side
{
public:
    virtual ~Side() = default;

    // Without what tells a revision, so that two revisions pair.
    virtual std::u16string PairingName() const = 0;
    // As the file system has it.
    virtual std::u16string Name() const = 0;

    virtual bool IsFile() const = 0;
    virtual bool IsFolder() const = 0;
    // Of another repository inside only its revision is known.
    virtual bool IsRepository() const = 0;
    // What leads elsewhere. In a tree its content is the path that it leads to; the content of
    // others is what is there.
    virtual bool IsLink() const = 0;
    virtual bool IsInTree() const = 0;

    // How a tree's file may be converted on its way to a disk.
    virtual bool HasKeywords() const = 0;
    virtual bool HasOtherLineEnds() const = 0;
    // The same side with all that is known of it, where a listing told less; null if it didn't.
    virtual std::unique_ptr<Side> InFull() const = 0;

    // In bytes; nothing for folders and for what isn't known.
    virtual std::optional<std::uint64_t> Size() const = 0;
    // What others find it by; of what is in a tree nothing.
    virtual std::u16string Path() const = 0;
    // Whether a tree's system would record that file as this content.
    virtual bool IsRecordOf(const Side& file) const = 0;

    // Equal only where contents are; may be empty.
    virtual std::u16string ContentId() const = 0;
    virtual Reader Open() const = 0;
    // The path that a link leads to, with "/" in between.
    virtual Reader OpenPath() const = 0;

    using Fail = std::function<void(const Failure&)>;
    // What is in the folder, in any order. `fail` is called for what is no item.
    virtual std::vector<std::unique_ptr<Side>> Inside(const Fail& fail) const = 0;
};

// Both throw Failure.
std::unique_ptr<Side> MakeSide(const ComPtr<IFileSystemItem>& item);
std::unique_ptr<Side> MakeSide(RevisionTree tree, const Address& address);

} // namespace tarnwell::host
