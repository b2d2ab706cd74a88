"""What the file systems for fsspec have in common."""

from __future__ import annotations

import contextlib
import datetime
import errno
import io
import os
import threading
from typing import Any, Callable, ClassVar, Dict, Iterator, List, Optional, Tuple, Union

from fsspec import AbstractFileSystem

from . import _items
from ._answers import Answers, Credentials, CredentialsQuestion
from ._com import Failure, NotFound
from ._items import File, Folder, Item
from ._spool import Spool
from ._system import FileSystem

Info = Dict[str, Any]

DISPOSITIONS = {
    "wb": _items.CREATE_ALWAYS,
    "xb": _items.CREATE_NEW,
    "ab": _items.OPEN_ALWAYS,
    "r+b": _items.OPEN_EXISTING,
}


class Content(io.BufferedReader):
    """An open file, with the size that fsspec asks for."""

    @property
    def size(self) -> int:
        here = self.tell()
        end = self.seek(0, io.SEEK_END)
        self.seek(here)
        return end


def missing(path: str) -> FileNotFoundError:
    return FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), path)


class TarnwellFileSystem(AbstractFileSystem):  # type: ignore[misc]
    """What the file systems have in common.

    `user` and `password` are used where an address names no user, and `server` ("host:port") is then
    what FTP connects to; `credentials` is asked instead, with a CredentialsQuestion, and answers
    Credentials or None.
    """

    # Listings aren't kept: fsspec's own objects are, for as long as the process lives.
    cachable = True
    kind: ClassVar[str]
    # The characters of which the last one in the path begins a revision.
    markers: ClassVar[str] = ""
    prefix: ClassVar[str]

    def __init__(
        self,
        user: Optional[str] = None,
        password: Optional[str] = None,
        credentials: Optional[Callable[[CredentialsQuestion], Optional[Credentials]]] = None,
        server: Optional[str] = None,
        **options: Any,
    ) -> None:
        super().__init__(
            user=user, password=password, credentials=credentials, server=server, **options
        )
        if credentials is None and (user is not None or server is not None):
            given = Credentials(user or "", password or "", server)
            credentials = lambda _: given  # noqa: E731
        self._answers = Answers(credentials)
        self._of_thread = threading.local()

    # The objects of the module are for one thread at a time, those of fsspec for many.
    @property
    def _files(self) -> FileSystem:
        if not hasattr(self._of_thread, "files"):
            self._of_thread.files = FileSystem(self.kind, self._answers)
        found: FileSystem = self._of_thread.files
        return found

    def _address(self, path: str) -> str:
        return self.prefix + path

    @classmethod
    def _split_revision(cls, path: str) -> Tuple[str, str]:
        """The path, and its revision with the marker; behind the server, whose user has an @."""
        start = path.find("/") + 1
        marker = max((path.rfind(each, start) for each in cls.markers), default=-1)
        return (path, "") if marker < 0 else (path[:marker], path[marker:])

    def _child(self, folder: str, name: str) -> str:
        path, revision = self._split_revision(folder)
        return path.rstrip("/") + "/" + name + revision

    # Facts

    def _info(self, path: str, item: Item) -> Info:
        attributes = item.attributes
        folder = bool(attributes & _items.FOLDER)
        link = bool(attributes & _items.LINK)
        modified = item.modified
        return {
            "name": path,
            # A link to a folder is no folder, so that nothing is walked twice or deleted twice.
            "type": ("link" if link else "directory") if folder else "file",
            "size": 0 if folder or not isinstance(item, File) else item.size,
            "mtime": modified.timestamp() if modified is not None else None,
            "attributes": attributes,
            "islink": link,
        }

    def info(self, path: str, **kwargs: Any) -> Info:
        path = self._strip_protocol(path)
        with self._missing_told(path):
            # Whatever the item is: a file object tells the facts of a folder, too.
            return self._info(path, self._files.file(self._address(path)))

    @contextlib.contextmanager
    def _missing_told(self, path: str) -> Iterator[None]:
        """For what reads: the failure for an item that isn't there becomes Python's own."""
        try:
            yield
        except NotFound:
            raise missing(path) from None
        except Failure as failure:
            # The client or the server said so in words.
            if self._is_gone(path):
                raise missing(path) from failure
            raise

    def _is_gone(self, path: str) -> bool:
        """Whether the folder that should hold the item can be listed, and doesn't."""
        plain, revision = self._split_revision(path)
        folder, _, name = plain.rpartition("/")
        try:
            return all(item.name != name for item in self._files.folder(self._address(folder + revision)))
        except Failure:
            return False

    def ls(self, path: str, detail: bool = True, **kwargs: Any) -> List[Union[Info, str]]:
        path = self._strip_protocol(path)
        items = self._items(path)
        if items is None:
            found = [self.info(path)]
        else:
            found = [self._info(self._child(path, self._leaf(item)), item) for item in items]
        return list(found) if detail else sorted(info["name"] for info in found)

    def walk(self, path: str, maxdepth: Optional[int] = None, *args: Any, **kwargs: Any) -> Any:
        """As always, of one state of things where the file system has such."""
        path = self._strip_protocol(path)
        # What is below a folder is walked with the same options.
        options = kwargs if "walk" in kwargs else {**self._walk_options(path), **kwargs}
        return super().walk(path, maxdepth, *args, **options)

    def _walk_options(self, path: str) -> Dict[str, Any]:
        """What all listings of one walk are to share."""
        return {}

    def _items(self, path: str) -> Optional[List[Union[File, Folder]]]:
        """What a folder holds; None for a file."""
        try:
            items = list(self._files.folder(self._address(path)))
        except Failure:
            if self.info(path)["type"] == "directory":
                raise
            return None
        # A client lists a file like a folder that holds it alone.
        leaf = self._split_revision(path)[0].rpartition("/")[2]
        alone = len(items) == 1 and self._leaf(items[0]) == leaf
        return None if alone and self.info(path)["type"] != "directory" else items

    def _leaf(self, item: Item) -> str:
        return item.name

    def glob(self, path: str, **kwargs: Any) -> Any:
        """As always; a revision behind the pattern is where it is looked for."""
        plain, revision = self._split_revision(self._strip_protocol(path))
        if not revision:
            return super().glob(path, **kwargs)
        found = _AtRevision(self, revision).glob(plain, **kwargs)
        if isinstance(found, dict):
            return {name + revision: info for name, info in found.items()}
        return [name + revision for name in found]

    def modified(self, path: str) -> datetime.datetime:
        time = self.info(path)["mtime"]
        if time is None:
            raise NotImplementedError("The time of the last change isn't known.")
        return datetime.datetime.fromtimestamp(time, datetime.timezone.utc)

    # Revisions

    def revisions(self, path: str) -> List[Info]:
        """The item's revisions, the latest first: `id`, `description`, `author`, the times
        `modified` and `recorded` (None if unknown), and `name`, which opens it here. The first may
        stand for a working copy; it has no `name`, but the `local_path` of the file."""
        path = self._strip_protocol(path)
        return [
            {
                "id": entry.id,
                "description": entry.description,
                "author": entry.author,
                "modified": entry.modified,
                "recorded": entry.recorded,
                **self._place(entry.address),
            }
            for entry in self._files.revisions(self._address(path))
        ]

    def _place(self, address: str) -> Dict[str, Optional[str]]:
        if address.startswith(self.prefix) and self.prefix:
            return {"name": address[len(self.prefix) :], "local_path": None}
        return {"name": None, "local_path": address}

    # Content

    def _open(
        self,
        path: str,
        mode: str = "rb",
        block_size: Optional[int] = None,
        autocommit: bool = True,
        cache_options: Optional[Dict[str, Any]] = None,
        **kwargs: Any,
    ) -> io.BufferedIOBase:
        if not autocommit:
            raise NotImplementedError("Transactions aren't offered.")
        file = self._files.file(self._address(path))
        if mode == "rb":
            with self._missing_told(path):
                return self._reader(path, file)
        if mode in DISPOSITIONS and mode != "r+b":
            try:
                return self._writer(file, mode)
            except NotFound:
                raise missing(path) from None
        raise NotImplementedError(f"The mode {mode!r} isn't offered.")

    def _reader(self, path: str, file: File) -> io.BufferedIOBase:
        return Content(Spool(file.open()))

    def _writer(self, file: File, mode: str) -> io.BufferedIOBase:
        if mode != "wb":
            raise NotImplementedError(f"The mode {mode!r} isn't offered.")
        return io.BufferedWriter(file.create())

    def created(self, path: str) -> datetime.datetime:
        raise NotImplementedError("The time of an item's making isn't known.")


class _AtRevision(AbstractFileSystem):  # type: ignore[misc]
    """One revision of a file system, with names that don't say so."""

    cachable = False

    def __init__(self, files: TarnwellFileSystem, revision: str) -> None:
        super().__init__()
        self._files, self._revision = files, revision

    def info(self, path: str, **kwargs: Any) -> Info:
        return self._plain(self._files.info(path + self._revision, **kwargs))

    def ls(self, path: str, detail: bool = True, **kwargs: Any) -> List[Union[Info, str]]:
        listed = self._files.ls(path + self._revision, **kwargs)
        found = [self._plain(info) for info in listed if isinstance(info, dict)]
        return list(found) if detail else [info["name"] for info in found]

    def walk(self, path: str, maxdepth: Optional[int] = None, *args: Any, **kwargs: Any) -> Any:
        options = {**self._files._walk_options(path + self._revision), **kwargs}
        return super().walk(path, maxdepth, *args, **options)

    def _plain(self, info: Info) -> Info:
        return {**info, "name": self._files._split_revision(info["name"])[0]}


class WritableFileSystem(TarnwellFileSystem):
    """File systems that change things. With `auto_mkdir` a file's folder is made when it is
    opened for writing, if it isn't there."""

    def __init__(self, auto_mkdir: bool = False, **options: Any) -> None:
        super().__init__(auto_mkdir=auto_mkdir, **options)
        self._auto_mkdir = auto_mkdir

    def _open(self, path: str, mode: str = "rb", *args: Any, **kwargs: Any) -> io.BufferedIOBase:
        if self._auto_mkdir and mode != "rb":
            self.makedirs(self._parent(path), exist_ok=True)
        return super()._open(path, mode, *args, **kwargs)

    def mkdir(self, path: str, create_parents: bool = True, **kwargs: Any) -> None:
        path = self._strip_protocol(path)
        if self.exists(path):
            raise FileExistsError(errno.EEXIST, os.strerror(errno.EEXIST), path)
        self._files.folder(self._address(path)).create(recursive=create_parents)

    def makedirs(self, path: str, exist_ok: bool = False) -> None:
        path = self._strip_protocol(path)
        if not exist_ok:
            return self.mkdir(path)
        if not self.isdir(path):
            self._files.folder(self._address(path)).create(recursive=True)
        return None

    def rmdir(self, path: str) -> None:
        path = self._strip_protocol(path)
        folder = self._files.folder(self._address(path), must_exist=True)
        if any(True for _ in folder):
            raise OSError(errno.ENOTEMPTY, os.strerror(errno.ENOTEMPTY), path)
        folder.delete(recursive=True)

    def rm_file(self, path: str) -> None:
        path = self._strip_protocol(path)
        info = self.info(path)
        if info["type"] == "directory":
            self.rmdir(path)
        else:
            # The shell's way takes links to folders as links.
            self._item(path).delete(recursive=info["type"] == "link")

    def _rm(self, path: str) -> None:
        self.rm_file(path)

    def rm(
        self,
        path: Union[str, List[str]],
        recursive: bool = False,
        maxdepth: Optional[int] = None,
    ) -> None:
        """Files, empty folders, and with `recursive` folders with all that is in them. Links go as
        links."""
        if maxdepth is not None:
            super().rm(path, recursive, maxdepth)
            return
        for each in [path] if isinstance(path, (str, os.PathLike)) else path:
            for found in self.expand_path(each):
                if recursive and self.isdir(found):
                    self._files.folder(self._address(found), True).delete(recursive=True)
                else:
                    self.rm_file(found)

    def cp_file(self, path1: str, path2: str, **kwargs: Any) -> None:
        path1, path2 = self._strip_protocol(path1), self._strip_protocol(path2)
        if self.isdir(path1):
            self.makedirs(path2, exist_ok=True)
        else:
            parent = self._parent(path2)
            if not self.isdir(parent):
                self.makedirs(parent, exist_ok=True)
            self._files.copy(self._address(path1), self._address(path2))

    def _item(self, path: str) -> Item:
        return self._files.file(self._address(path))
