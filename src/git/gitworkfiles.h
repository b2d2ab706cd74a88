// What the files of working trees would be recorded as.
#pragma once

#include "git/gitclient.h"

#include <memory>
#include <string>

namespace tarnwell
{

class GitWorkFiles
{
public:
    // `item` says which repository it is.
    explicit GitWorkFiles(PlacedItem item);

    // The id of what the client would record for the file; empty if it is in no working tree of the
    // repository.
    std::u16string IdOf(const std::u16string& path, Patience& patience);

private:
    std::shared_ptr<GitClient> ClientIn(const PlacedItem& file, Patience& patience);

    const PlacedItem item_;
    // The working tree that was asked last; no client where it is another repository's.
    std::u16string folder_;
    std::shared_ptr<GitClient> client_;
};

} // namespace tarnwell
