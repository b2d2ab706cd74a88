"""File systems and revisions."""

from __future__ import annotations

import ctypes
import datetime
import os
from typing import Any, Callable, Iterator, List, NamedTuple, Optional, Sequence

from ._answers import (
    Answers,
    Credentials,
    CredentialsQuestion,
    host_object,
    item_list,
    progress_object,
)
from ._com import Failure, Pointer, Text, class_id, create, interface_id, text_in
from ._items import File, Folder, to_datetime, truth
from ._past import IID_HISTORY, IID_TREES, HistoryEntry, Tree, open_tree, read_history

_POINTER = ctypes.c_void_p
_NUMBER = ctypes.c_uint32
_FLAG = ctypes.c_int16

_IID_INIT = interface_id(0x674B8100)
_IID_SYSTEM = interface_id(0x674B8101)
_IID_COPY_EX = interface_id(0x674B8102)
_IID_REVISIONS = interface_id(0x674B8103)

# The last byte of the first word of each class's identifier.
CLASSES = {"local": 0x01, "p4": 0x05, "ftp": 0x0D, "svn": 0x11, "hg": 0x17, "git": 0x19}

_SCHEMES = {
    "svn://": "svn",
    "svnhttp://": "svn",
    "svnhttps://": "svn",
    "svnfile://": "svn",
    "svn+ssh://": "svn",
    "p4://": "p4",
    "ftp://": "ftp",
    "git:": "git",
    "hg:": "hg",
}


class Revision(NamedTuple):
    """One version of an item. `address` opens it in the same file system; the working copy's is a
    local path. Times are 100-nanosecond intervals since 1601, 0 if unknown."""

    id: str
    description: str
    author: str
    modified_time: int
    revision_time: int
    address: str

    @property
    def modified(self) -> Optional[datetime.datetime]:
        return to_datetime(self.modified_time)

    @property
    def recorded(self) -> Optional[datetime.datetime]:
        return to_datetime(self.revision_time)


class FileSystem:
    """One file system, made by filesystem()."""

    def __init__(self, kind: str, answers: Answers) -> None:
        start = create(class_id(CLASSES[kind]), _IID_INIT)
        host = host_object(answers)
        try:
            start.call(3, (_POINTER,), host.address)
        finally:
            host.release()
        self.kind = kind
        self._system = start.need(_IID_SYSTEM)

    def file(self, address: Text, must_exist: bool = False) -> File:
        """With `must_exist` a missing file is a failure here, else at its first use. Git and
        Mercurial can't tell whether a file exists."""
        types = (_POINTER, _FLAG)
        return File(self._system.pointer(4, types, text_in(address), truth(must_exist)))

    def folder(self, address: Text, must_exist: bool = False) -> Folder:
        types = (_POINTER, _FLAG)
        return Folder(self._system.pointer(3, types, text_in(address), truth(must_exist)))

    def copy(
        self,
        source: Text,
        destination: Text,
        progress: Optional[Callable[[], bool]] = None,
        flags: int = 0,
        amounts: Optional[Callable[[int, Optional[int]], None]] = None,
    ) -> bool:
        """Copies one file over another. `progress` is asked at each step and cancels with False;
        the answer is whether the copy was made. `amounts` hears, before each question, how many
        bytes have arrived and how many there are in all, or None. `flags` are those of the
        platform's copy."""
        cancelled = False

        def go_on() -> bool:
            nonlocal cancelled
            cancelled = progress is not None and not progress()
            return not cancelled

        asked = progress_object(go_on, amounts)
        texts = text_in(source), text_in(destination)
        try:
            if flags:
                copier = self._system.need(_IID_COPY_EX)
                copier.call(3, (_POINTER, _POINTER, _NUMBER, _POINTER), *texts, flags, asked.address)
            else:
                self._system.call(5, (_POINTER, _POINTER, _POINTER), *texts, asked.address)
        except Failure:
            # Whether a cancelled copy is a failure differs between the ways of copying.
            if not cancelled:
                raise
        finally:
            asked.release()
        return not cancelled

    def create_temp_file(self, address: Text) -> str:
        """A new empty file beside `address`, the caller's to remove or to rename. Local only."""
        return self._system.text(6, (_POINTER,), text_in(address))

    def delete_items(
        self,
        addresses: Sequence[Text],
        recursive: bool = False,
        confirm: Optional[Callable[[str], bool]] = None,
    ) -> None:
        """Moves local items to the recycle bin or trash; FTP items go for good. `confirm` is asked
        for each before anything goes; only those that it lets go do."""
        chosen = [a for a in addresses if confirm is None or confirm(os.fsdecode(a))]
        items = item_list(chosen)
        try:
            types = (_POINTER, _FLAG, _FLAG)
            self._system.call(7, types, items.address, truth(True), truth(recursive))
        finally:
            items.release()

    def combine(self, folder: Text, name: Text) -> str:
        """The address of an item in a folder, put together as text."""
        return self._system.text(9, (_POINTER, _POINTER), text_in(folder), text_in(name))

    def has_revisions(self, address: Text) -> bool:
        types = (_POINTER, _NUMBER)
        revisions = self._system.need(_IID_REVISIONS)
        return revisions.number(3, _FLAG, types, text_in(address), 0) != 0

    def revisions(self, address: Text) -> Iterator[Revision]:
        """The latest first. None also if they can't be found out: the module hides why."""
        types = (_POINTER, _NUMBER)
        revisions = self._system.need(_IID_REVISIONS)
        found = revisions.pointer(4, types, text_in(address), 0)
        for index in range(found.number(3, _NUMBER)):
            yield _revision(found.pointer(4, (ctypes.c_int32,), index))

    @property
    def has_history(self) -> bool:
        """Whether `history` can be asked; else there is `revisions`."""
        return self._system.find(IID_HISTORY) is not None

    def read_history(
        self,
        address: Text,
        take: Callable[[HistoryEntry], Optional[bool]],
        *,
        revision: Optional[Text] = None,
        skip: int = 0,
        count: int = 0,
        since: Optional[datetime.datetime] = None,
        until: Optional[datetime.datetime] = None,
        follow: bool = False,
        working_copy: bool = False,
        progress: Optional[Callable[[], bool]] = None,
    ) -> None:
        """Gives the revisions of an item to `take`, the latest first, each as soon as it is there;
        it answers False for "enough". With a `revision`, at which to begin, all of the address is a
        path. `count` 0 is all. `progress` is asked at least ten times a second and cancels with
        False. What fails, and a cancelled history, raises Failure, and what was taken is a part of
        an answer that there is none of."""
        history = self._system.need(IID_HISTORY)
        read_history(
            history,
            address,
            take,
            revision,
            skip,
            count,
            since,
            until,
            follow,
            working_copy,
            progress,
        )

    def history(self, address: Text, **options: Any) -> List[HistoryEntry]:
        """The same, when all are there. The options are those of read_history."""
        found: List[HistoryEntry] = []
        self.read_history(address, found.append, **options)
        return found

    @property
    def has_trees(self) -> bool:
        """Whether `tree` can be asked."""
        return self._system.find(IID_TREES) is not None

    def tree(
        self,
        address: Text,
        revision: Optional[Text] = None,
        progress: Optional[Callable[[], bool]] = None,
    ) -> Tree:
        """What an item was in a revision: `files.tree("git:/src#v1.0").list()`."""
        return open_tree(self._system.need(IID_TREES), address, revision, progress)


def _revision(entry: Pointer) -> Revision:
    return Revision(
        id=entry.text(3),
        description=entry.text(4),
        author=entry.text(5),
        modified_time=entry.number(6, ctypes.c_uint64),
        revision_time=entry.number(7, ctypes.c_uint64),
        address=entry.text(8),
    )


def kind_of(address: Text) -> str:
    """The file system that an address belongs to, by its scheme; what has none is a local path."""
    text = os.fsdecode(address).lower()
    return next((kind for start, kind in _SCHEMES.items() if text.startswith(start)), "local")


def filesystem(
    address: Text,
    *,
    credentials: Optional[Callable[[CredentialsQuestion], Optional[Credentials]]] = None,
    refused: Optional[Callable[[str], None]] = None,
    iterate_streams: bool = False,
) -> FileSystem:
    """A new file system for an address.

    `credentials` is asked for each connection or client run whose address names no user, or "*" as
    its password; None as its answer is a refusal, and without it none are used. `refused` hears
    that what it gave was refused. `iterate_streams` lists named data streams of local files.
    """
    return FileSystem(kind_of(address), Answers(credentials, refused, iterate_streams))
