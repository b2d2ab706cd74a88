/// @file
/// Earlier versions of items.
#pragma once

#include <tarnwell/client/list.hpp>
#include <tarnwell/revisions.h>

namespace tarnwell::client
{

/// One entry of a list of revisions.
class Revision
{
public:
    /// Takes a reference of its own.
    explicit Revision(const ComPtr<IRevision>& revision) : revision_(revision) {}

    /// For the user: a number, a hash or a position.
    std::string Id() const
    {
        return detail::TextOf([&](BSTR* text) { return revision_->GetRevisionId(text); });
    }
    /// The message that it was recorded with.
    std::string Description() const
    {
        return detail::TextOf([&](BSTR* text) { return revision_->GetDescription(text); });
    }
    /// Who recorded it.
    std::string Author() const
    {
        return detail::TextOf([&](BSTR* text) { return revision_->GetAuthor(text); });
    }
    /// Of the content; 0 if unknown.
    std::uint64_t ModifiedTime() const
    {
        return detail::NumberOf<std::uint64_t>(
            [&](std::uint64_t* time) { return revision_->GetModifiedTime(time); });
    }
    /// Of its recording; 0 if unknown.
    std::uint64_t RevisionTime() const
    {
        return detail::NumberOf<std::uint64_t>(
            [&](std::uint64_t* time) { return revision_->GetRevisionTime(time); });
    }
    /// Opens it, in the same file system; the working copy's is a local path.
    std::string Address() const
    {
        return detail::TextOf([&](BSTR* text) { return revision_->GetUri(text); });
    }

    /// The interface behind it.
    const ComPtr<IRevision>& Get() const
    {
        return revision_;
    }

private:
    ComPtr<IRevision> revision_;
};

/// The latest first.
using Revisions = List<IRevisions, IRevision, Revision>;

} // namespace tarnwell::client
