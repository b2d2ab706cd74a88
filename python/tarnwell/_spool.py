"""A stream that only reads on, made seekable."""

from __future__ import annotations

import io
import tempfile
from typing import Any

_IN_MEMORY = 1 << 24
_BLOCK = 1 << 16


class Spool(io.RawIOBase):
    """Keeps what it has read of `source`, in memory or in a file without a name. Nothing is read
    before it is wanted; the size is known when the end has been."""

    def __init__(self, source: Any) -> None:
        super().__init__()
        self._source = source
        self._kept = tempfile.SpooledTemporaryFile(_IN_MEMORY)
        self._length = 0
        self._complete = False
        self._position = 0

    def readable(self) -> bool:
        return True

    def seekable(self) -> bool:
        return True

    def tell(self) -> int:
        return self._position

    def seek(self, offset: int, whence: int = 0) -> int:
        if whence == 2:
            self._fetch(None)
        start = {0: 0, 1: self._position, 2: self._length}[whence]
        if start + offset < 0:
            raise ValueError("negative seek position")
        self._position = start + offset
        return self._position

    def readinto(self, buffer: Any) -> int:
        view = memoryview(buffer).cast("B")
        self._fetch(self._position + len(view))
        self._kept.seek(self._position)
        data = self._kept.read(len(view))
        view[: len(data)] = data
        self._position += len(data)
        return len(data)

    def close(self) -> None:
        if not self.closed:
            super().close()
            self._kept.close()
            self._source.close()

    def _fetch(self, end: "int | None") -> None:
        while not self._complete and (end is None or self._length < end):
            data = self._source.read(_BLOCK)
            self._complete = not data
            self._kept.seek(self._length)
            self._kept.write(data)
            self._length += len(data)
