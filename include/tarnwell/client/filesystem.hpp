/// @file
/// The module and its file systems.
#pragma once

#include <tarnwell/classes.h>
#include <tarnwell/client/answers.hpp>
#include <tarnwell/client/history.hpp>
#include <tarnwell/client/items.hpp>
#include <tarnwell/client/library.hpp>
#include <tarnwell/client/revisions.hpp>
#include <tarnwell/client/trees.hpp>
#include <tarnwell/filesystem.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tarnwell::client
{

/// One file system.
class FileSystem
{
public:
    /// Takes a reference of its own.
    explicit FileSystem(const ComPtr<IFileSystem>& fileSystem) : fileSystem_(fileSystem) {}

    /// With `mustExist` a missing item is a failure; else the first use of its content is. Git and
    /// Mercurial can't tell whether a file exists.
    File GetFile(const Text& address, bool mustExist = false) const
    {
        ComPtr<IFile> file;
        Check([&] {
            return fileSystem_->GetFile(address.Get(), detail::Truth(mustExist), file.Out());
        });
        return File(file);
    }

    /// The same for folders, which can be made then. Git and Mercurial have none.
    Folder GetFolder(const Text& address, bool mustExist = false) const
    {
        ComPtr<IFolder> folder;
        Check([&] {
            return fileSystem_->GetFolder(address.Get(), detail::Truth(mustExist), folder.Out());
        });
        return Folder(folder);
    }

    /// Copies one file over another. `progress` is asked at each step, and hears how far the copy
    /// is; the answer is whether it was made, or cancelled. `flags` (`CopyFlag` bits) are for local
    /// files.
    bool Copy(const Text& source, const Text& destination, const Progress& progress = nullptr,
              std::uint32_t flags = 0)
    {
        const auto asked =
            ComPtr<detail::ProgressObject>::Adopt(new detail::ProgressObject(progress));
        try
        {
            Check([&] { return CopyWith(source, destination, flags, asked.Get()); });
        }
        catch (const Failure&)
        {
            // Whether a cancelled copy is a failure differs between the ways of copying.
            if (!asked->Cancelled())
                throw;
        }
        return !asked->Cancelled();
    }

    /// A new empty file beside `address`; the caller's to remove or to rename. Local only.
    std::string CreateTempFile(const Text& address)
    {
        return detail::TextOf(
            [&](BSTR* path) { return fileSystem_->CreateTempFile(address.Get(), path); });
    }

    /// Moves local items to the recycle bin or trash; FTP items go for good. `confirm`, if given,
    /// is asked for each before anything goes; only those that it lets go do.
    void DeleteItems(const std::vector<std::string>& addresses, bool recursive = false,
                     const Confirm& confirm = nullptr)
    {
        std::vector<std::string> chosen;
        for (const std::string& address : addresses)
        {
            if (!confirm || confirm(address))
                chosen.push_back(address);
        }
        const auto list = ComPtr<IItemList>::Adopt(new detail::ItemList(std::move(chosen)));
        Check([&] {
            return fileSystem_->DeleteItems(list.Get(), VARIANT_TRUE, detail::Truth(recursive));
        });
    }

    /// The address of an item in a folder, put together as text.
    std::string Combine(const Text& folder, const Text& name) const
    {
        return detail::TextOf([&](BSTR* address) {
            return fileSystem_->CombinePath(folder.Get(), name.Get(), address);
        });
    }

    /// The latest first. Empty also if they can't be found out: the module hides why.
    client::Revisions Revisions(const Text& address) const
    {
        const auto revisions = detail::Need<IFileSystemRevisions>(fileSystem_);
        ComPtr<IRevisions> list;
        Check([&] { return revisions->GetRevisions(address.Get(), 0, list.Out()); });
        return client::Revisions(list);
    }

    /// Whether there is at least one other; false also if that can't be found out.
    bool HasRevisions(const Text& address) const
    {
        const auto revisions = detail::Need<IFileSystemRevisions>(fileSystem_);
        return detail::NumberOf<VARIANT_BOOL>([&](VARIANT_BOOL* has) {
                   return revisions->HasRevisions(address.Get(), 0, has);
               }) != VARIANT_FALSE;
    }

    /// Whether `ReadHistory` and `History` can be asked; else there is `Revisions`.
    bool HasHistory() const
    {
        return static_cast<bool>(fileSystem_.As<IFileSystemHistory>());
    }

    /// Gives the revisions of an item to `take`, the latest first, each as soon as it is there.
    /// `progress` is asked at least ten times a second whether to go on; if it says no, or a
    /// failure comes, Failure is thrown (with E_ABORT, or a `HistoryStatus`), and what was taken is
    /// a part of an answer that there is none of.
    void ReadHistory(const Text& address, const HistoryQuery& query, const TakeRevision& take,
                     const Progress& progress = nullptr) const
    {
        const auto history = detail::Need<IFileSystemHistory>(fileSystem_);
        detail::ReadHistory(*history.Get(), address, query, take, progress);
    }

    /// The same, when all are there: `for (const HistoryEntry& entry : files.History("git:a.c"))`.
    std::vector<HistoryEntry> History(const Text& address, const HistoryQuery& query = {},
                                      const Progress& progress = nullptr) const
    {
        std::vector<HistoryEntry> all;
        const auto take = [&](const HistoryEntry& entry) {
            all.push_back(entry);
            return true;
        };
        ReadHistory(address, query, take, progress);
        return all;
    }

    /// Whether `OpenTree` can be asked.
    bool HasTrees() const
    {
        return static_cast<bool>(fileSystem_.As<IFileSystemTrees>());
    }

    /// What an item was in a revision: `files.OpenTree("git:src#v1.0").List()`. With a `revision`
    /// all of the address is a path.
    Tree OpenTree(const Text& address, const std::optional<Text>& revision = std::nullopt,
                  const Progress& progress = nullptr) const
    {
        const auto trees = detail::Need<IFileSystemTrees>(fileSystem_);
        const auto asked =
            ComPtr<detail::ProgressObject>::Adopt(new detail::ProgressObject(progress));
        ComPtr<ITree> tree;
        Check([&] {
            return trees->OpenTree(address.Get(), revision ? revision->Get() : nullptr, asked.Get(),
                                   tree.Out());
        });
        return Tree(tree);
    }

    /// The interface behind it.
    const ComPtr<IFileSystem>& Get() const
    {
        return fileSystem_;
    }

private:
    HRESULT CopyWith(const Text& source, const Text& destination, std::uint32_t flags,
                     ICopyProgress* progress)
    {
        if (flags == 0)
            return fileSystem_->CopyItem(source.Get(), destination.Get(), progress);
        const auto copier = fileSystem_.As<IFileSystemCopyEx>();
        return copier ? copier->CopyItemEx(source.Get(), destination.Get(), flags, progress)
                      : E_NOTIMPL;
    }

    ComPtr<IFileSystem> fileSystem_;
};

/// The class whose file system an address belongs to, by its scheme in any case of letters; what
/// has none of the module's schemes is a local path. Git's and Mercurial's need no "//".
inline const GUID& ClassOf(const Text& address)
{
    struct Scheme
    {
        std::u16string_view beginning;
        const GUID* clsid;
    };
    static constexpr Scheme schemes[] = {
        {u"svn://", &CLSID_SVNFileSystem},      {u"svnhttp://", &CLSID_SVNFileSystem},
        {u"svnhttps://", &CLSID_SVNFileSystem}, {u"svnfile://", &CLSID_SVNFileSystem},
        {u"svn+ssh://", &CLSID_SVNFileSystem},  {u"p4://", &CLSID_P4FileSystem},
        {u"ftp://", &CLSID_FTPFileSystem},      {u"git:", &CLSID_GITFileSystem},
        {u"hg:", &CLSID_HGFileSystem},
    };
    const auto same = [](char16_t typed, char16_t wanted) {
        return typed == wanted || (typed >= u'A' && typed <= u'Z' && typed - u'A' + u'a' == wanted);
    };
    for (const Scheme& scheme : schemes)
    {
        const std::u16string_view text = address.View();
        if (text.size() >= scheme.beginning.size() &&
            std::equal(scheme.beginning.begin(), scheme.beginning.end(), text.begin(),
                       [&](char16_t wanted, char16_t typed) { return same(typed, wanted); }))
            return *scheme.clsid;
    }
    return CLSID_Win32FileSystem;
}

/// The module: makes file systems.
class Module
{
public:
    /// By TARNWELL_MODULE or by the install place; see Library.
    Module() = default;
    /// By path.
    explicit Module(const std::filesystem::path& file) : library_(file) {}

    /// A new file system for an address: `module.Open("svn://host/repository/trunk")`.
    FileSystem Open(const Text& address, Answers answers = {}) const
    {
        return Create(ClassOf(address), std::move(answers));
    }

    /// A new file system of a class (classes.h).
    FileSystem Create(REFCLSID clsid, Answers answers = {}) const
    {
        const auto host = ComPtr<IHostWindow>::Adopt(new detail::HostObject(std::move(answers)));
        return Create(clsid, host.Get());
    }

    /// The same with a host object of one's own, or null.
    FileSystem Create(REFCLSID clsid, ::IUnknown* host) const
    {
        ComPtr<::IClassFactory> factory;
        Check([&] {
            return library_.GetClassObject(clsid, IidOf<::IClassFactory>(), factory.OutVoid());
        });
        ComPtr<IFileSystemInit> start;
        Check([&] {
            return factory->CreateInstance(nullptr, IidOf<IFileSystemInit>(), start.OutVoid());
        });
        Check([&] { return start->SetHost(host); });
        return FileSystem(detail::Need<IFileSystem>(start));
    }

private:
    Library library_;
};

} // namespace tarnwell::client
