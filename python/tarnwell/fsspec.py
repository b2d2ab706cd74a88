"""File systems for fsspec, one for each scheme:

    import fsspec

    fsspec.open("svn://host/repository/trunk/a.c@5").open().read()
    fsspec.filesystem("svn").ls("host/repository/trunk")

Installed, the package announces the schemes that nobody else has; `register` does it for a process,
and takes `git` and `ftp`, which fsspec has classes of its own for, if told to.

A revision stands at the end of a path (`@5` for Subversion, `#5` for Git and Mercurial, either for
Perforce) and stays with what is listed below it. Local files, and those of FTP servers, can be
written. Git and Mercurial know files and folders by their full paths.
"""

from __future__ import annotations

import datetime
import io
import os
from typing import Any, Dict, List, Optional, Tuple, Union

from fsspec import register_implementation

from . import _items
from ._com import Failure, NotFound
from ._fsspec import (
    DISPOSITIONS,
    Content,
    Info,
    TarnwellFileSystem,
    WritableFileSystem,
    missing,
)
from ._items import File, Item
from ._past import NO_PATH, NO_REPOSITORY, NO_REVISION, Tree, TreeEntry
from ._spool import Spool


class LocalFileSystem(WritableFileSystem):
    """Local files, by the module rather than by Python."""

    protocol = "tarnwell"
    kind = "local"
    prefix = ""
    root_marker = "/"

    @classmethod
    def _strip_protocol(cls, path: Any) -> Any:
        if isinstance(path, list):
            return [cls._strip_protocol(each) for each in path]
        path = os.fspath(path)
        for start in ("tarnwell://", "tarnwell::"):
            if path.startswith(start):
                path = path[len(start) :]
        path = os.path.abspath(path).replace(os.sep, "/")
        return path.rstrip("/") or cls.root_marker

    @classmethod
    def _split_revision(cls, path: str) -> Tuple[str, str]:
        return path, ""

    def info(self, path: str, **kwargs: Any) -> Info:
        path = self._strip_protocol(path)
        return self._info(path, self._item(path))

    # A local object is of the one kind or of the other.
    def _item(self, path: str) -> Item:
        try:
            return self._files.file(path, must_exist=True)
        except NotFound:
            pass
        try:
            return self._files.folder(path, must_exist=True)
        except NotFound:
            raise missing(path) from None

    def _reader(self, path: str, file: File) -> io.BufferedIOBase:
        return Content(file.open())

    def _writer(self, file: File, mode: str) -> io.BufferedIOBase:
        stream = file.create(DISPOSITIONS[mode])
        if mode == "ab":
            stream.seek(0, 2)
        return io.BufferedWriter(stream)

    def _place(self, address: str) -> Dict[str, Optional[str]]:
        return {"name": address.replace(os.sep, "/"), "local_path": address}

    def touch(self, path: str, truncate: bool = True, **kwargs: Any) -> None:
        """Makes the file, or empties it; without `truncate` only sets its time to now."""
        path = self._strip_protocol(path)
        if truncate or not self.exists(path):
            with self.open(path, "wb"):
                pass
        else:
            now = datetime.datetime.now(datetime.timezone.utc)
            self._files.file(path, must_exist=True).set_modified_time(_items.to_file_time(now))


class FtpFileSystem(WritableFileSystem):
    protocol = "ftp"
    kind = "ftp"
    prefix = "ftp://"


class SvnFileSystem(TarnwellFileSystem):
    """Reads a Subversion repository, `svn://host/repository/path@REVISION`."""

    protocol = "svn"
    kind = "svn"
    prefix = "svn://"
    markers = "@"


class SvnHttpFileSystem(SvnFileSystem):
    protocol = "svnhttp"
    prefix = "svnhttp://"


class SvnHttpsFileSystem(SvnFileSystem):
    protocol = "svnhttps"
    prefix = "svnhttps://"


class SvnFileFileSystem(SvnFileSystem):
    protocol = "svnfile"
    prefix = "svnfile://"


class SvnSshFileSystem(SvnFileSystem):
    protocol = "svn+ssh"
    prefix = "svn+ssh://"


class PerforceFileSystem(TarnwellFileSystem):
    """Reads a Perforce depot, `p4:////depot/path#REVISION`."""

    protocol = "p4"
    kind = "p4"
    prefix = "p4://"
    markers = "@#"

    # Listed names carry their head revision.
    def _leaf(self, item: Item) -> str:
        return self._split_revision("/" + item.name)[0][1:]


class _WorkingCopies(TarnwellFileSystem):
    """Files and folders of a repository, in any revision; without one, in what is checked out.
    Where the module has no trees of them it can't tell whether a file exists or how long it is, so
    that `info` reads its content; and there are no folders to list."""

    markers = "#"
    root_marker = "/"

    def _tree(self, path: str) -> Tree:
        try:
            return self._files.tree(self._address(path))
        except Failure as failure:
            if failure.status in (NO_REPOSITORY, NO_PATH, NO_REVISION):
                raise missing(path) from failure
            raise

    def _entry(self, path: str, entry: TreeEntry) -> Info:
        modified = entry.modified
        types = {"folder": "directory", "repository": "other"}
        return {
            "name": path,
            "type": types.get(entry.kind, "file"),
            "size": entry.size,
            "mtime": modified.timestamp() if modified is not None else None,
            "islink": entry.kind == "link",
            "executable": entry.executable,
            "content_id": entry.content_id,
        }

    def info(self, path: str, **kwargs: Any) -> Info:
        path = self._strip_protocol(path)
        if self._files.has_trees:
            return self._entry(path, self._tree(path).find())
        return self._info_by_reading(path)

    def _info_by_reading(self, path: str) -> Info:
        size = 0
        try:
            with self._files.file(self._address(path)).open() as stream:
                while block := stream.read(1 << 16):
                    size += len(block)
        except Failure as failure:
            raise missing(path) from failure
        return {"name": path, "type": "file", "size": size, "mtime": None}

    def ls(self, path: str, detail: bool = True, **kwargs: Any) -> List[Union[Info, str]]:
        path = self._strip_protocol(path)
        if self._files.has_trees:
            found = (kwargs.get("walk") or _Walk(self, path)).list(path)
        else:
            found = [self._info_by_reading(path)]
        return list(found) if detail else sorted(info["name"] for info in found)

    def _walk_options(self, path: str) -> Dict[str, Any]:
        return {"walk": _Walk(self, path)} if self._files.has_trees else {}

    def _open(self, path: str, mode: str = "rb", *args: Any, **kwargs: Any) -> io.BufferedIOBase:
        if mode != "rb" or not self._files.has_trees:
            return super()._open(path, mode, *args, **kwargs)
        return Content(Spool(self._tree(path).open()))


class _Walk:
    """Lists folders of one tree, which is opened for the first of them."""

    def __init__(self, files: _WorkingCopies, top: str) -> None:
        self._files, self._top = files, top
        self._tree: Optional[Tree] = None

    def list(self, path: str) -> List[Info]:
        if self._tree is None:
            self._tree = self._files._tree(self._top)
        name = self._plain(path)[len(self._plain(self._top)) :].strip("/")
        item = self._tree.find(name)
        if item.kind != "folder":
            return [self._files._entry(path, item)]
        return [
            self._files._entry(self._files._child(self._top, entry.name), entry)
            for entry in self._tree.list(name)
        ]

    def _plain(self, path: str) -> str:
        return self._files._split_revision(path)[0]


class GitFileSystem(_WorkingCopies):
    """Reads files of a Git repository, `git:///absolute/path/of/file#REVISION`."""

    protocol = "git"
    kind = "git"
    prefix = "git://"


class MercurialFileSystem(_WorkingCopies):
    """Reads files of a Mercurial repository, `hg:///absolute/path/of/file#REVISION`."""

    protocol = "hg"
    kind = "hg"
    prefix = "hg://"


CLASSES: List[Any] = [
    LocalFileSystem,
    SvnFileSystem,
    SvnHttpFileSystem,
    SvnHttpsFileSystem,
    SvnFileFileSystem,
    SvnSshFileSystem,
    PerforceFileSystem,
    MercurialFileSystem,
    GitFileSystem,
    FtpFileSystem,
]

# fsspec has classes of its own for these.
_TAKEN = ("git", "ftp")


def register(take_over: bool = False) -> None:
    """Makes the schemes known to fsspec in this process; with `take_over` also `git` and `ftp`, in
    place of fsspec's own."""
    for each in CLASSES:
        if take_over or each.protocol not in _TAKEN:
            register_implementation(each.protocol, each, clobber=True)


register()
