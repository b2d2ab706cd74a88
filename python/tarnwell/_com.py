"""Calls through the tables of functions that the module's interfaces are: texts, failures, owners."""

from __future__ import annotations

import ctypes
import os
import threading
import uuid
from typing import Any, Callable, Dict, Optional, Tuple, Union

from ._library import WINDOWS, open_library
from ._library import LoadFailure as LoadFailure

Text = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]

PROTOTYPE: Any = getattr(ctypes, "WINFUNCTYPE", ctypes.CFUNCTYPE)
STATUS = ctypes.c_int32

E_NOTIMPL = -0x7FFFBFFF
E_FAIL = -0x7FFFBFFB
E_ACCESSDENIED = -0x7FF8FFFB
E_NOINTERFACE = -0x7FFFBFFE
E_POINTER = -0x7FFFBFFD

_QUERY_INTERFACE, _RELEASE = 0, 2
_CREATE_INSTANCE = 3
_GET_DESCRIPTION = 5


def guid(text: str) -> bytes:
    return uuid.UUID(text).bytes_le


def interface_id(first: int) -> bytes:
    return guid(f"{first:08x}-c961-4751-84b9-ea3b67e048a3")


def class_id(last: int) -> bytes:
    return guid(f"f4f3f5{last:02x}-dbdc-4f6d-b86b-cd5cf1c963cb")


IID_UNKNOWN = guid("00000000-0000-0000-c000-000000000046")
_IID_CLASS_FACTORY = guid("00000001-0000-0000-c000-000000000046")


class Failure(OSError):
    """A call that failed. `status` is what it returned; str() is the text for the user."""

    def __init__(self, status: int, text: str) -> None:
        super().__init__(text)
        self.status = status & 0xFFFFFFFF
        self.text = text

    def __str__(self) -> str:
        return self.text

    def __reduce__(self) -> Tuple[Any, ...]:
        return type(self), (self.status, self.text)


class NotFound(Failure, FileNotFoundError):
    pass


class Denied(Failure, PermissionError):
    pass


class Exists(Failure, FileExistsError):
    pass


class NotOffered(Failure, NotImplementedError):
    pass


# Statuses that Python has an exception of its own for.
_KINDS: Dict[int, Any] = {
    0x80070002: NotFound,
    0x80070003: NotFound,
    0x80070005: Denied,
    0x80070050: Exists,
    0x800700B7: Exists,
    0x80004001: NotOffered,
    # The path isn't in the history, or not in the revision.
    0x80040203: NotFound,
}


class _Module:
    def __init__(self, path: "os.PathLike[str] | str | None") -> None:
        library = open_library(path)
        texts = ctypes.WinDLL("oleaut32") if WINDOWS else library  # type: ignore[attr-defined]
        pointer = ctypes.c_void_p
        # Prototypes of its own, so that others who use the same library are left alone.
        self.class_object = PROTOTYPE(STATUS, pointer, pointer, pointer)(
            ("DllGetClassObject", library)
        )
        self.make_text = PROTOTYPE(pointer, pointer, ctypes.c_uint32)(("SysAllocStringLen", texts))
        self.free_text = PROTOTYPE(None, pointer)(("SysFreeString", texts))
        self.text_length = PROTOTYPE(ctypes.c_uint32, pointer)(("SysStringLen", texts))
        self.get_error = PROTOTYPE(STATUS, ctypes.c_uint32, pointer)(("GetErrorInfo", texts))
        self.set_error = PROTOTYPE(STATUS, ctypes.c_uint32, pointer)(("SetErrorInfo", texts))


_module: Optional[_Module] = None


def load(path: "os.PathLike[str] | str | None" = None) -> None:
    """Loads the module, once for the process: from `path`, or from where TARNWELL_MODULE says, or
    from where it is installed. The first use of anything here does the latter by itself."""
    global _module
    if _module is not None and path is not None:
        raise LoadFailure("The module is loaded already.")
    if _module is None:
        _module = _Module(path)


def module() -> _Module:
    if _module is None:
        load()
    assert _module is not None
    return _module


def units(text: Text) -> bytes:
    """UTF-16 of a text or a path. Bytes of a name that are no text travel as lone surrogates, here
    as in the module."""
    plain = os.fsdecode(text)
    if "\0" in plain:
        raise ValueError("embedded null character")
    return plain.encode("utf-16-le", "surrogatepass")


def text_in(text: Text) -> Any:
    """A terminated text for a call's argument."""
    return ctypes.create_string_buffer(units(text) + b"\0")


def text_at(address: Optional[int]) -> str:
    """A terminated text that the module hands in."""
    if not address:
        return ""
    end = address
    while ctypes.string_at(end, 2) != b"\0\0":
        end += 2
    return ctypes.string_at(address, end - address).decode("utf-16-le", "surrogatepass")


def new_text(text: str) -> Optional[int]:
    """A text for the module to free."""
    encoded = units(text)
    made: Optional[int] = module().make_text(encoded, len(encoded) // 2)
    return made


def take_text(address: Optional[int]) -> str:
    """A text that the module handed out, which goes."""
    if not address:
        return ""
    found = ctypes.string_at(address, 2 * module().text_length(address))
    module().free_text(address)
    return found.decode("utf-16-le", "surrogatepass")


def _address_of(pointer: int, slot: int) -> int:
    table = ctypes.c_void_p.from_address(pointer).value
    assert table is not None
    address = ctypes.c_void_p.from_address(table + slot * ctypes.sizeof(ctypes.c_void_p)).value
    assert address is not None
    return address


_prototypes: Dict[Tuple[Any, ...], Any] = {}


def _method(pointer: int, slot: int, types: Tuple[Any, ...]) -> Callable[..., int]:
    if types not in _prototypes:
        _prototypes[types] = PROTOTYPE(STATUS, ctypes.c_void_p, *types)
    found: Callable[..., int] = _prototypes[types](_address_of(pointer, slot))
    return found


class _Raised(threading.local):
    """What the host's own functions raised while the module called them on this thread, for the
    call that asked."""

    exception: Optional[BaseException] = None

    def take(self) -> Optional[BaseException]:
        taken, self.exception = self.exception, None
        return taken


raised = _Raised()


def check(call: Callable[[], int]) -> None:
    """Makes a call; a failed status becomes an exception with the published text."""
    module().set_error(0, None)
    raised.take()
    status = call()
    exception = raised.take()
    if exception is not None:
        raise exception
    if status < 0:
        raise _failure(status)


def _failure(status: int) -> Failure:
    unsigned = status & 0xFFFFFFFF
    text = ""
    info = ctypes.c_void_p()
    if module().get_error(0, ctypes.byref(info)) == 0 and info.value:
        description = ctypes.c_void_p()
        owner = Pointer(info.value)
        _method(owner.value, _GET_DESCRIPTION, (ctypes.c_void_p,))(
            owner.value, ctypes.byref(description)
        )
        text = take_text(description.value)
    kind = _KINDS.get(unsigned, Failure)
    made: Failure = kind(unsigned, text or _plain_text(unsigned))
    return made


def _plain_text(status: int) -> str:
    if status == 0x80004001:
        return "The file system doesn't offer this operation."
    return f"The call failed with status 0x{status:08X}."


class Pointer:
    """Owns one reference to an interface."""

    def __init__(self, value: int) -> None:
        self.value = value

    def __del__(self, method: Any = _method) -> None:
        method(self.value, _RELEASE, ())(self.value)

    def call(self, slot: int, types: Tuple[Any, ...], *arguments: Any) -> None:
        """Calls a method by its place in the table. Raises Failure."""
        check(lambda: _method(self.value, slot, types)(self.value, *arguments))

    def pointer(self, slot: int, types: Tuple[Any, ...], *arguments: Any) -> "Pointer":
        """The interface that a method puts into its last argument."""
        out = ctypes.c_void_p()
        self.call(slot, (*types, ctypes.c_void_p), *arguments, ctypes.byref(out))
        assert out.value is not None
        return Pointer(out.value)

    def text(self, slot: int, types: Tuple[Any, ...] = (), *arguments: Any) -> str:
        out = ctypes.c_void_p()
        self.call(slot, (*types, ctypes.c_void_p), *arguments, ctypes.byref(out))
        return take_text(out.value)

    def number(self, slot: int, kind: Any, types: Tuple[Any, ...] = (), *arguments: Any) -> int:
        out = kind()
        self.call(slot, (*types, ctypes.c_void_p), *arguments, ctypes.byref(out))
        found: int = out.value
        return found

    def find(self, iid: bytes) -> "Optional[Pointer]":
        """The same object by another interface, if it has that."""
        out = ctypes.c_void_p()
        _method(self.value, _QUERY_INTERFACE, (ctypes.c_void_p, ctypes.c_void_p))(
            self.value, iid, ctypes.byref(out)
        )
        return Pointer(out.value) if out.value else None

    def need(self, iid: bytes) -> "Pointer":
        found = self.find(iid)
        if found is None:
            raise NotOffered(E_NOTIMPL, _plain_text(0x80004001))
        return found


def create(clsid: bytes, iid: bytes) -> Pointer:
    """A new object of a class."""
    factory = ctypes.c_void_p()
    made = ctypes.byref(factory)
    check(lambda: int(module().class_object(clsid, _IID_CLASS_FACTORY, made)))
    assert factory.value is not None
    pointer = ctypes.c_void_p
    return Pointer(factory.value).pointer(_CREATE_INSTANCE, (pointer, pointer), None, iid)
