"""Finding and loading the module's file."""

from __future__ import annotations

import ctypes
import os
import pathlib
import sys
from typing import Any, List

WINDOWS = os.name == "nt"
# Without the number only where development files are installed.
_NAMES = ["tarnwell.dll"] if WINDOWS else ["libtarnwell.so.1", "libtarnwell.so"]


class LoadFailure(OSError):
    """There is no module, or what is there isn't one."""


def candidates() -> List[str]:
    """Where a module may lie: where TARNWELL_MODULE says and nowhere else, or inside of this
    package, beside the interpreter, where the system keeps libraries."""
    named = os.environ.get("TARNWELL_MODULE")
    if named:
        return [os.path.abspath(named)]
    prefix = pathlib.Path(sys.prefix)
    folders = [pathlib.Path(__file__).parent, prefix / "lib", prefix / "bin"]
    found = [str(folder / name) for folder in folders for name in _NAMES]
    # Bare, for the system to find.
    return [path for path in found if os.path.exists(path)] + _NAMES


def open_library(path: "os.PathLike[str] | str | None") -> Any:
    tried = [os.path.abspath(path)] if path else candidates()
    reasons = []
    for name in tried:
        try:
            library = ctypes.CDLL(name)
            library.DllGetClassObject  # raises for what is another library
            return library
        except (OSError, AttributeError) as failure:
            reasons.append(f"{name}: {failure}")
    raise LoadFailure("Can't load the tarnwell module: " + "; ".join(reasons))
