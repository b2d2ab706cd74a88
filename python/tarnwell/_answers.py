"""Objects of the host's that the module calls: what it asks, answered by Python functions."""

from __future__ import annotations

import ctypes
import itertools
import os
from typing import Any, Callable, Dict, List, NamedTuple, Optional, Sequence, Tuple

from . import _com

_POINTER = ctypes.c_void_p
_S_OK = 0
_S_FALSE = 1


class CredentialsQuestion(NamedTuple):
    """For whom credentials are wanted; `perforce` tells Perforce from the others."""

    host: str
    user: str
    perforce: bool


class Credentials(NamedTuple):
    """An answer; empty texts mean "try without". `host` replaces the server that was asked for."""

    user: str = ""
    password: str = ""
    host: Optional[str] = None


# A method of an interface: its argument types behind the object, and what it does.
_Method = Tuple[Tuple[Any, ...], Callable[..., int]]

# Objects stay here, by their addresses' numbers, for as long as the module has references to them.
_alive: Dict[int, "HostObject"] = {}
_numbers = itertools.count()


class HostObject:
    """An object with a table of functions for each of its interfaces. Python's own reference goes
    with `release`; then the module's count keeps it."""

    def __init__(self, interfaces: Sequence[Tuple[bytes, Sequence[_Method]]]) -> None:
        self._count = 1
        self._number = next(_numbers)
        self._kept: List[Any] = []
        self._views = [(iid, self._view(methods)) for iid, methods in interfaces]
        _alive[self._number] = self

    @property
    def address(self) -> int:
        return self._views[0][1]

    def release(self) -> int:
        self._count -= 1
        if self._count == 0:
            _alive.pop(self._number, None)
        return self._count

    def _view(self, methods: Sequence[_Method]) -> int:
        functions = [
            _com.PROTOTYPE(_com.STATUS, _POINTER, _POINTER, _POINTER)(self._query),
            _com.PROTOTYPE(ctypes.c_uint32, _POINTER)(lambda _: self._add()),
            _com.PROTOTYPE(ctypes.c_uint32, _POINTER)(lambda _: self.release()),
        ]
        for types, body in methods:
            functions.append(_com.PROTOTYPE(_com.STATUS, _POINTER, *types)(_guarded(body)))
        table = (_POINTER * len(functions))(
            *[ctypes.cast(function, _POINTER) for function in functions]
        )
        view = _POINTER(ctypes.addressof(table))
        self._kept += [functions, table, view]
        return ctypes.addressof(view)

    def _add(self) -> int:
        self._count += 1
        return self._count

    def _query(self, _: int, iid: int, out: int) -> int:
        if not out:
            return _com.E_POINTER
        wanted = ctypes.string_at(iid, 16)
        for known, view in self._views:
            if wanted == known or wanted == _com.IID_UNKNOWN:
                _POINTER.from_address(out).value = view
                self._add()
                return _S_OK
        _POINTER.from_address(out).value = None
        return _com.E_NOINTERFACE


def _guarded(body: Callable[..., int]) -> Callable[..., int]:
    """No exception may pass through the module: it waits for the call to come back."""

    def call(_: int, *arguments: Any) -> int:
        try:
            return body(*arguments)
        except BaseException as raised:  # noqa: B902 KeyboardInterrupt, too, has to get through
            _com.raised.exception = raised
            return _com.E_FAIL

    return call


def _write(address: int, kind: Any, value: Any) -> None:
    if address:
        kind.from_address(address).value = value


class Answers(NamedTuple):
    credentials: Optional[Callable[[CredentialsQuestion], Optional[Credentials]]] = None
    refused: Optional[Callable[[str], None]] = None
    iterate_streams: bool = False


def host_object(answers: Answers) -> HostObject:
    """IHostWindow, IHostCredentials and IHostSettings."""

    def window(out: int) -> int:
        _write(out, _POINTER, None)
        return _S_OK

    def credentials(kind: int, host: int, user: int, *results: int) -> int:
        for result in results:
            _write(result, _POINTER, None)
        question = CredentialsQuestion(_com.text_at(host), _com.text_at(user), kind == 1)
        # Without an answer of the host's: right for servers that let everybody in, and Perforce's
        # client has settings of its own.
        answer: Optional[Credentials] = None
        if answers.credentials is not None:
            answer = answers.credentials(question)
        elif not question.perforce:
            answer = Credentials(question.user)
        if answer is None:
            return _com.E_FAIL
        host_to_use = question.host if answer.host is None else answer.host
        for result, text in zip(results, (answer.user, answer.password, host_to_use)):
            _write(result, _POINTER, _com.new_text(text))
        return _S_OK

    def forget(text: int) -> int:
        if answers.refused is not None:
            answers.refused(_com.text_at(text))
        return _S_OK

    def missing(kind: int, host: int, user: int) -> int:
        return _S_OK

    def reserved() -> int:
        return _com.E_NOTIMPL

    def setting(name: int, out: int) -> int:
        if _com.text_at(name) == "IterateStreams":
            _write(out, ctypes.c_int16, -1 if answers.iterate_streams else 0)
        return _S_OK

    number = ctypes.c_uint32
    return HostObject(
        [
            (_com.interface_id(0x674B8140), [((_POINTER,), window)]),
            (
                _com.interface_id(0x674B8142),
                [
                    ((number, *[_POINTER] * 5), credentials),
                    ((_POINTER,), forget),
                    ((number, _POINTER, _POINTER), missing),
                ],
            ),
            (
                _com.interface_id(0x674B8141),
                [((), reserved), ((), reserved), ((_POINTER, _POINTER), setting)],
            ),
        ]
    )


_AMOUNT_UNKNOWN = 0xFFFFFFFFFFFFFFFF


def _question(go_on: Callable[[], bool]) -> _Method:
    def query(out: int) -> int:
        # What raises cancels.
        _write(out, ctypes.c_int16, 0)
        if go_on():
            _write(out, ctypes.c_int16, -1)
        return _S_OK

    return (_POINTER,), query


def progress_object(
    go_on: Callable[[], bool],
    amounts: Optional[Callable[[int, Optional[int]], None]] = None,
) -> HostObject:
    """ICopyProgress, and with `amounts` also ICopyAmounts."""
    interfaces: List[Tuple[bytes, Sequence[_Method]]] = [
        (_com.interface_id(0x674B8143), [_question(go_on)])
    ]
    if amounts is not None:
        tell = amounts

        def report(done: int, total: int) -> int:
            tell(done, None if total == _AMOUNT_UNKNOWN else total)
            return _S_OK

        amount = ctypes.c_uint64
        interfaces.append((_com.interface_id(0x674B8147), [((amount, amount), report)]))
    return HostObject(interfaces)


def sink_object(
    iid: bytes, take: Callable[[int], bool], go_on: Callable[[], bool]
) -> HostObject:
    """IHistorySink or ITreeSink: `take` gets the address of what is given, and answers whether
    more is wanted."""

    def take_one(at: int) -> int:
        return _S_OK if take(at) else _S_FALSE

    return HostObject([(iid, [_question(go_on), ((_POINTER,), take_one)])])


def item_list(addresses: Sequence[_com.Text]) -> HostObject:
    """IItemList."""

    def count(out: int) -> int:
        _write(out, ctypes.c_int32, len(addresses))
        return _S_OK

    def item(index: int, out: int) -> int:
        _write(out, _POINTER, _com.new_text(os.fsdecode(addresses[index])))
        return _S_OK

    return HostObject(
        [
            (
                _com.interface_id(0x674B8144),
                [((_POINTER,), count), ((ctypes.c_int32, _POINTER), item)],
            )
        ]
    )
