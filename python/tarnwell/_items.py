"""Items, what folders hold, and the content of files."""

from __future__ import annotations

import ctypes
import datetime
import io
from typing import Any, Callable, Iterator, Optional, Union

from ._com import Pointer, interface_id

_POINTER = ctypes.c_void_p
_NUMBER = ctypes.c_uint32
_TIME = ctypes.c_uint64
_FLAG = ctypes.c_int16

_IID_ARCHIVE_STREAM = interface_id(0x674B8112)
_IID_ITEM = interface_id(0x674B8120)
_IID_ITEM_EXT = interface_id(0x674B8121)
_IID_COMPARABLE = interface_id(0x674B8123)
_IID_FILE = interface_id(0x674B8124)
_IID_FOLDER = interface_id(0x674B8125)
_IID_SEQUENTIAL = bytes.fromhex("303a730c1c2ace11ade500aa0044773d")

READ, WRITE = 0x80000000, 0x40000000
CREATE_NEW, CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, TRUNCATE_EXISTING = 1, 2, 3, 4, 5

READ_ONLY, FOLDER, LINK = 0x1, 0x10, 0x400

_LONGEST_PIECE = 0x40000000
_EPOCH = datetime.datetime(1601, 1, 1, tzinfo=datetime.timezone.utc)


def truth(value: bool) -> int:
    return -1 if value else 0


def to_datetime(file_time: int) -> Optional[datetime.datetime]:
    """A time of the module's, 100-nanosecond intervals since 1601, to the microsecond; None for the
    unknown one, which is 0, and for what the calendar doesn't hold."""
    try:
        return _EPOCH + datetime.timedelta(microseconds=file_time // 10) if file_time else None
    except OverflowError:
        return None


def to_file_time(time: Optional[datetime.datetime]) -> int:
    """The other way round; 0 for None."""
    if time is None:
        return 0
    return (time.astimezone(datetime.timezone.utc) - _EPOCH) // datetime.timedelta(
        microseconds=1
    ) * 10


class Item:
    """A file or a folder. Facts are those found when they were first asked for."""

    def __init__(self, item: Pointer) -> None:
        self._item = item

    def __repr__(self) -> str:
        return f"<{type(self).__name__} {self.name!r}>"

    @property
    def modified_time(self) -> int:
        """In 100-nanosecond intervals since 1601; 0 if unknown."""
        return self._item.number(3, _TIME)

    @property
    def modified(self) -> Optional[datetime.datetime]:
        return to_datetime(self.modified_time)

    @property
    def attributes(self) -> int:
        return self._item.number(4, _NUMBER)

    @attributes.setter
    def attributes(self, value: int) -> None:
        self._item.call(5, (_NUMBER,), value)

    @property
    def name(self) -> str:
        return self._item.text(6)

    @property
    def parent_path(self) -> str:
        return self._item.text(7)

    @property
    def path(self) -> str:
        """The full address, a password in it included."""
        return self._item.text(8)

    @property
    def comparable_url(self) -> str:
        """The address without the part that tells the revision; not of local items."""
        return self._item.need(_IID_COMPARABLE).text(4)

    @property
    def is_folder(self) -> bool:
        return isinstance(self, Folder)

    def delete(
        self, recursive: bool = False, confirm: Optional[Callable[[str], bool]] = None
    ) -> bool:
        """Deletes it for good, without a question of the module's. `confirm`, if given, is asked
        before; the answer is whether the item went. With `recursive` a folder goes with all that is
        in it; without it a local item must be a file."""
        if confirm is not None and not confirm(self.path):
            return False
        self._item.call(9, (_FLAG, _FLAG), truth(True), truth(recursive))
        return True


class File(Item):
    def __init__(self, file: Pointer) -> None:
        super().__init__(file.need(_IID_ITEM))
        self._file = file

    @property
    def size(self) -> int:
        return self._file.number(4, _NUMBER) << 32 | self._file.number(3, _NUMBER)

    def open(self) -> "Reader":
        """The content, from its beginning."""
        return Reader(self._open(READ, OPEN_EXISTING))

    def create(self, disposition: int = CREATE_ALWAYS) -> "Writer":
        """The file made, or emptied, to be written."""
        return Writer(self._open(WRITE, disposition))

    def read(self) -> bytes:
        with self.open() as stream:
            return stream.read()

    def write(self, data: Any) -> None:
        """Any bytes-like object; returns when the file is closed."""
        with self.create() as stream:
            stream.write(data)

    def set_modified_time(self, file_time: int) -> None:
        """Local files only; this object goes on telling the old one."""
        self._item.need(_IID_ITEM_EXT).call(3, (_TIME,), file_time)

    def _open(self, access: int, disposition: int) -> Pointer:
        return self._file.pointer(5, (_NUMBER, _NUMBER), access, disposition)


class Folder(Item):
    def __init__(self, folder: Pointer) -> None:
        super().__init__(folder.need(_IID_ITEM))
        self._folder = folder

    def __iter__(self) -> Iterator[Union[File, "Folder"]]:
        """The items that it holds now."""
        contents = self._folder.pointer(3, ())
        for index in range(contents.number(3, _NUMBER)):
            yield _item_of(contents.pointer(4, (ctypes.c_int32,), index))

    def create(self, recursive: bool = False) -> None:
        """With `recursive` its missing ancestors, too, and then it may be there already."""
        self._folder.call(4, (_FLAG,), truth(recursive))


def _item_of(item: Pointer) -> Union[File, Folder]:
    folder = item.find(_IID_FOLDER)
    return Folder(folder) if folder is not None else File(item.need(_IID_FILE))


class _Stream(io.RawIOBase):
    """What the io module wraps; closing tells a failure, and so does the end of a with block."""

    def __init__(self, stream: Pointer) -> None:
        super().__init__()
        self._stream = stream
        self._bytes = stream.need(_IID_SEQUENTIAL)
        self._archive = stream.find(_IID_ARCHIVE_STREAM)

    def seekable(self) -> bool:
        return self._archive is not None

    def seek(self, offset: int, whence: int = 0) -> int:
        if self._archive is None:
            raise io.UnsupportedOperation("seek")
        types = (ctypes.c_int64, _NUMBER)
        return self._archive.number(4, _TIME, types, offset, whence)

    def close(self) -> None:
        if not self.closed:
            super().close()
            self._stream.call(3, ())


class Reader(_Stream):
    def readable(self) -> bool:
        return True

    def readinto(self, buffer: Any) -> int:
        view = memoryview(buffer).cast("B")
        room = (ctypes.c_char * len(view)).from_buffer(view)
        wanted = min(len(view), _LONGEST_PIECE)
        return self._bytes.number(3, _NUMBER, (_POINTER, _NUMBER), room, wanted)

    def read(self, size: Optional[int] = -1) -> bytes:
        return super().read(-1 if size is None else size) or b""


class Writer(_Stream):
    def writable(self) -> bool:
        return True

    def write(self, data: Any) -> int:
        """All of it, in one or more calls."""
        left = memoryview(data).cast("B")
        size = len(left)
        while left:
            piece = bytes(left[:_LONGEST_PIECE])
            written = self._bytes.number(4, _NUMBER, (_POINTER, _NUMBER), piece, len(piece))
            if written == 0:
                raise OSError("The file takes no more data.")
            left = left[written:]
        return size
