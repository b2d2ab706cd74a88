// What there was in a revision, where the file system shows it.
#pragma once

#include "content.h"
#include "facts.h"
#include "session.h"

#include <tarnwell/client/trees.hpp>

#include <functional>
#include <optional>

namespace tarnwell::host
{

// A tree at an address. Its calls throw Failure, with E_ABORT after Ctrl-C.
class RevisionTree
{
public:
    RevisionTree(client::Tree tree, const Address& address);

    client::TreeEntry Find(const std::string& name = {}) const;
    // A folder's items by name; with `recursive` all that is below it, as soon as it is found.
    void List(bool recursive, const std::function<void(const client::TreeEntry&)>& take) const;
    Reader Open(const std::string& name = {}) const;

    // The content id that the file would be recorded with; empty where only its bytes tell.
    std::u16string RecordedId(const std::u16string& path) const;

    // The last part of the name; of the top what the address has there.
    std::u16string NameOf(const client::TreeEntry& entry) const;
    ItemFacts FactsOf(const client::TreeEntry& entry) const;

private:
    std::u16string AddressOf(std::u16string_view name) const;

    client::Tree tree_;
    const FileSystemKind* kind_;
    std::u16string path_;
    std::u16string revision_;
    std::u16string revisionId_;
};

// Nothing where the file system has no trees, or the user doesn't want them. Of local paths there
// are none: these show the present. Throws Failure.
std::optional<RevisionTree> OpenTree(const Session& session, const Place& place);

} // namespace tarnwell::host
