"""Histories in full, and what there was in a revision."""

from __future__ import annotations

import ctypes
import datetime
from typing import Any, Callable, Iterator, List, NamedTuple, Optional

from ._answers import HostObject, progress_object, sink_object
from ._com import Pointer, Text, interface_id, text_at, text_in
from ._items import Reader, to_datetime, to_file_time, truth

_POINTER = ctypes.c_void_p
_FLAG = ctypes.c_int16

IID_HISTORY = interface_id(0x674B8104)
IID_TREES = interface_id(0x674B8105)
_IID_WORK_FILES = interface_id(0x674B8129)
_IID_HISTORY_SINK = interface_id(0x674B8145)
_IID_TREE_SINK = interface_id(0x674B8146)

_FOLLOW, _WORKING_COPY = 0x1, 0x2
_EXECUTABLE = 0x1
_KEYWORDS = 0x2
_LINE_ENDS = 0x4
_KINDS = {1: "file", 2: "folder", 3: "link", 4: "repository"}

# Statuses of failures that have no exception of their own in Python.
NO_CLIENT = 0x80040201
NO_REPOSITORY = 0x80040202
NO_PATH = 0x80040203
NO_REVISION = 0x80040204
INCOMPLETE = 0x80040205
BAD_SETTINGS = 0x80040206
CLIENT_FAILED = 0x80040207
BAD_ANSWER = 0x80040208
WRONG_KIND = 0x80040209
SERVER_SILENT = 0x8004020A


class HistoryEntry(NamedTuple):
    """One revision. `address` opens it in the same file system; the working copy, whose `id` is
    empty, has a local path. `path` is the name that the item had then, from the root of the
    repository on. Times are 100-nanosecond intervals since 1601, 0 if unknown."""

    id: str
    author: str
    description: str
    address: str
    path: str
    modified_time: int
    revision_time: int

    @property
    def modified(self) -> Optional[datetime.datetime]:
        return to_datetime(self.modified_time)

    @property
    def recorded(self) -> Optional[datetime.datetime]:
        return to_datetime(self.revision_time)


class TreeEntry(NamedTuple):
    """An item of a tree; `name` is from the top on, `kind` one of "file", "folder", "link" and
    "repository". `content_id` is equal for equal contents. `keywords` and `line_ends` say that work
    trees may have the content with keywords filled in, or with other ends of lines, where that is
    known."""

    name: str
    content_id: str
    kind: str
    executable: bool
    size: int
    modified_time: int
    keywords: bool = False
    line_ends: bool = False

    @property
    def modified(self) -> Optional[datetime.datetime]:
        return to_datetime(self.modified_time)


class _Options(ctypes.Structure):
    _fields_ = [
        ("size", ctypes.c_uint32),
        ("flags", ctypes.c_uint32),
        ("skip", ctypes.c_uint32),
        ("count", ctypes.c_uint32),
        ("since", ctypes.c_uint64),
        ("until", ctypes.c_uint64),
    ]


class _Revision(ctypes.Structure):
    _fields_ = [
        ("id", _POINTER),
        ("author", _POINTER),
        ("description", _POINTER),
        ("address", _POINTER),
        ("path", _POINTER),
        ("modified_time", ctypes.c_uint64),
        ("revision_time", ctypes.c_uint64),
    ]


class _Item(ctypes.Structure):
    _fields_ = [
        ("name", _POINTER),
        ("content_id", _POINTER),
        ("kind", ctypes.c_uint32),
        ("flags", ctypes.c_uint32),
        ("size", ctypes.c_uint64),
        ("modified_time", ctypes.c_uint64),
    ]


def _optional(text: Optional[Text]) -> Any:
    return None if text is None else text_in(text)


def _yes() -> bool:
    return True


def read_history(
    history: Pointer,
    address: Text,
    take: Callable[[HistoryEntry], Optional[bool]],
    revision: Optional[Text],
    skip: int,
    count: int,
    since: Optional[datetime.datetime],
    until: Optional[datetime.datetime],
    follow: bool,
    working_copy: bool,
    progress: Optional[Callable[[], bool]],
) -> None:
    flags = (_FOLLOW if follow else 0) | (_WORKING_COPY if working_copy else 0)
    options = _Options(
        ctypes.sizeof(_Options), flags, skip, count, to_file_time(since), to_file_time(until)
    )

    def take_one(at: int) -> bool:
        entry = _Revision.from_address(at)
        return take(
            HistoryEntry(
                text_at(entry.id),
                text_at(entry.author),
                text_at(entry.description),
                text_at(entry.address),
                text_at(entry.path),
                entry.modified_time,
                entry.revision_time,
            )
        ) is not False

    sink = sink_object(_IID_HISTORY_SINK, take_one, progress or _yes)
    try:
        types = (_POINTER, _POINTER, _POINTER, _POINTER)
        history.call(
            3, types, text_in(address), _optional(revision), ctypes.byref(options), sink.address
        )
    finally:
        sink.release()


class Tree:
    """What there was in one revision. A client process waits for its questions for as long as this
    object lives. One thread at a time uses it."""

    def __init__(self, tree: Pointer) -> None:
        self._tree = tree

    @property
    def revision_id(self) -> str:
        return self._tree.text(3)

    @property
    def revision_time(self) -> int:
        return self._tree.number(4, ctypes.c_uint64)

    @property
    def recorded(self) -> Optional[datetime.datetime]:
        return to_datetime(self.revision_time)

    def find(self, name: Text = "") -> TreeEntry:
        """One item; the top without a name. Raises FileNotFoundError if there is none."""
        found: List[TreeEntry] = []
        with _Sink(found.append, None) as sink:
            self._tree.call(5, (_POINTER, _POINTER), text_in(name), sink.address)
        return found[0]

    def read_list(
        self,
        name: Text,
        recursive: bool,
        take: Callable[[TreeEntry], Optional[bool]],
        progress: Optional[Callable[[], bool]] = None,
    ) -> None:
        """A folder's items, or all that is below it, each as soon as it is there; `take` answers
        False for "enough". `progress` is asked at least ten times a second and cancels with False,
        which raises Failure."""
        with _Sink(take, progress) as sink:
            types = (_POINTER, _FLAG, _POINTER)
            self._tree.call(6, types, text_in(name), truth(recursive), sink.address)

    def list(self, name: Text = "", recursive: bool = False) -> List[TreeEntry]:
        found: List[TreeEntry] = []
        self.read_list(name, recursive, found.append)
        return found

    def __iter__(self) -> Iterator[TreeEntry]:
        return iter(self.list())

    def open(
        self,
        name: Text = "",
        progress: Optional[Callable[[], bool]] = None,
        amounts: Optional[Callable[[int, Optional[int]], None]] = None,
    ) -> Reader:
        """The content of a file, or the path of a link, all of which has come when this returns.
        `amounts` hears how many bytes have come, and how many there are in all, or None."""
        asked = progress_object(progress or _yes, amounts)
        try:
            types = (_POINTER, _POINTER)
            return Reader(self._tree.pointer(7, types, text_in(name), asked.address))
        finally:
            asked.release()

    def read(self, name: Text = "") -> bytes:
        with self.open(name) as stream:
            return stream.read()

    def recorded_id(self, path: Text, progress: Optional[Callable[[], bool]] = None) -> str:
        """The content id that a file of a work tree would be recorded with as it lies there: equal
        to an entry's where the system calls the file unchanged. Empty where only the bytes tell."""
        files = self._tree.find(_IID_WORK_FILES)
        if files is None:
            return ""
        asked = progress_object(progress or _yes)
        try:
            return files.text(3, (_POINTER, _POINTER), text_in(path), asked.address)
        finally:
            asked.release()


class _Sink:
    def __init__(
        self,
        take: Callable[[TreeEntry], Optional[bool]],
        progress: Optional[Callable[[], bool]],
    ) -> None:
        def take_one(at: int) -> bool:
            item = _Item.from_address(at)
            return take(
                TreeEntry(
                    text_at(item.name),
                    text_at(item.content_id),
                    _KINDS.get(item.kind, "file"),
                    bool(item.flags & _EXECUTABLE),
                    item.size,
                    item.modified_time,
                    bool(item.flags & _KEYWORDS),
                    bool(item.flags & _LINE_ENDS),
                )
            ) is not False

        self._object = sink_object(_IID_TREE_SINK, take_one, progress or _yes)

    def __enter__(self) -> HostObject:
        return self._object

    def __exit__(self, *_: Any) -> None:
        self._object.release()


def open_tree(
    trees: Pointer,
    address: Text,
    revision: Optional[Text],
    progress: Optional[Callable[[], bool]],
) -> Tree:
    asked = progress_object(progress or _yes)
    try:
        types = (_POINTER, _POINTER, _POINTER)
        return Tree(trees.pointer(3, types, text_in(address), _optional(revision), asked.address))
    finally:
        asked.release()
