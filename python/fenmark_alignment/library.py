"""Finds the shared library, loads it, and gives every function its argument and result types.

The library is taken from the environment variable FENMARK_ALIGNMENT_LIBRARY (the path of the file), else from the
prefix that this module was installed to, else from the loader's usual places.
"""

import ctypes
import ctypes.util
import os
import pathlib
from typing import Any

from .functions import Argument, prototypes
from .records import Element, IpCurve, IpEntry, MoniList

SONAME = "libfenmark-alignment.so.1"


def _installed() -> list[str]:
    """The library beside an installed module: PREFIX/lib/python3/dist-packages/fenmark_alignment."""
    lib = pathlib.Path(__file__).resolve().parents[3]
    return [str(p) for p in (lib / SONAME, *lib.glob(f"*-linux-gnu/{SONAME}")) if p.exists()]


def _load() -> ctypes.CDLL:
    path = os.environ.get("FENMARK_ALIGNMENT_LIBRARY")
    if path:
        return ctypes.CDLL(path)
    for name in (*_installed(), SONAME, ctypes.util.find_library("fenmark-alignment")):
        try:
            if name:
                return ctypes.CDLL(name)
        except OSError:
            pass
    raise ImportError(
        f"{SONAME} was not found: install the library, or set FENMARK_ALIGNMENT_LIBRARY to the path of the file"
    )


class _InArray:
    """Argument type `const double name[n]`: takes a ctypes array, or any sequence of at least n numbers."""

    size = 0

    @classmethod
    def from_param(cls, values: Any) -> Any:
        if isinstance(values, ctypes.Array):
            if values._type_ is not ctypes.c_double or len(values) < cls.size:
                raise TypeError(f"needs {cls.size} reals")
            return values
        values = tuple(values)
        if len(values) < cls.size:
            raise TypeError(f"needs {cls.size} reals")
        return (ctypes.c_double * len(values))(*values)


def _in_array(size: int) -> type[_InArray]:
    return type(f"InArray{size}", (_InArray,), {"size": size})


_IN_ARRAYS = {2: _in_array(2), 4: _in_array(4)}
_VALUES: dict[str, Any] = {"int": ctypes.c_int, "double": ctypes.c_double, "const char*": ctypes.c_char_p, "void": None}
_POINTERS: dict[str, Any] = {
    "double": ctypes.c_double,
    "int": ctypes.c_int,
    "Calelm": Element,
    "AliMoniList": MoniList,
    "AliIpEntry": IpEntry,
    "AliIpCurve": IpCurve,
}


def _argument_type(argument: Argument) -> Any:
    plain = argument.type.removeprefix("const ").removesuffix("*")
    if argument.size and argument.type == "const double":
        return _IN_ARRAYS[argument.size]
    if argument.size or (argument.type.endswith("*") and argument.type not in _VALUES):
        return ctypes.POINTER(_POINTERS[plain])
    return _VALUES[argument.type]


library = _load()


class Raw:
    """Every exported function as an attribute, with the arguments of the C header.

    `const double p[2]` takes any pair of numbers; records are `Element` objects; other outputs are ctypes values by
    reference, as in `raw.ali_onl(element, 10.0, (c_double * 2)(), byref(c_double()))`. The integer that a function
    returns stays as it is: `status(result)` reads its low 16 bits.
    """

    def __init__(self) -> None:
        self.prototypes = {p.name: p for p in prototypes()}
        for prototype in self.prototypes.values():
            function = getattr(library, prototype.name)
            function.restype = _VALUES[prototype.result]
            function.argtypes = [_argument_type(a) for a in prototype.arguments]
            setattr(self, prototype.name, function)

    def __getattr__(self, name: str) -> Any:
        """Only for names that are no function of the table."""
        raise AttributeError(f"the library has no function {name}")


def status(result: int) -> int:
    """The status in the low 16 bits of a function's result, read as a signed value."""
    low = result & 0xFFFF
    return low - 0x10000 if low >= 0x8000 else low


class AlignmentError(ValueError):
    """A function of the library gave no result. `function` is its name, `status` its status, `text` what that means."""

    def __init__(self, function: str, status: int, text: str) -> None:
        super().__init__(f"{function}: {text} (status {status})")
        self.function = function
        self.status = status
        self.text = text


raw = Raw()


def status_text(function: str, value: int) -> str:
    """What a status of a function means, in English."""
    text: bytes = raw.ali_statusText(function.encode(), value)
    return text.decode()


def call(function: str, *arguments: Any, accept: tuple[int, ...] = (0,)) -> int:
    """Calls a status function by name and returns the status; raises AlignmentError for one that is not accepted."""
    value = status(getattr(raw, function)(*arguments))
    if value not in accept:
        raise AlignmentError(function, value, status_text(function, value))
    return value
