"""What callers hand over, as C takes it, and what C says, as callers get it."""

from __future__ import annotations

import ctypes
import functools
import os
from typing import Any, Iterable, Optional, Tuple, Union

from . import _library as c

Text = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


def encode(text: Text) -> bytes:
    """The bytes of a name. One that holds NUL would mean another name in C."""
    encoded = os.fsencode(text)
    if b"\0" in encoded:
        raise ValueError(f"a name cannot hold NUL: {text!r}")
    return encoded


def listed(texts: Iterable[Text], what: str) -> Tuple[Text, ...]:
    """Several texts; one text is not taken for its letters."""
    if isinstance(texts, (str, bytes, os.PathLike)):
        raise TypeError(f"{what} are a list of texts, not the text {texts!r}")
    return tuple(texts)


def encode_all(texts: Tuple[Text, ...]) -> "ctypes.Array[ctypes.c_char_p]":
    return (ctypes.c_char_p * len(texts))(*map(encode, texts))


_extensions = functools.lru_cache(maxsize=64)(encode_all)  # the same ones come again and again


def lookup(
    name: Text, extensions: Iterable[Text], from_folder: Optional[Text], ignore_case: bool
) -> c.Lookup:
    if extensions == () and from_folder is None and not ignore_case:
        return c.Lookup(encode(name))
    tried = _extensions(listed(extensions, "extensions"))
    asker = None if from_folder is None else encode(from_folder)
    return c.Lookup(encode(name), tried, len(tried), asker, bool(ignore_case))


def check(status: int, error: c.Error, subject: Optional[Text] = None) -> None:
    """Raises what a status other than 0 means. It is about `subject`, where there is one."""
    if status == 0:
        return
    message = os.fsdecode(error.message)
    if status == c.INVALID:
        raise ValueError(message)
    raise OSError(message if subject is None else f"{os.fsdecode(subject)!r}: {message}")


class Handle:
    """Owns something of the library's and frees it in the end."""

    _free: Any = None  # a function of the library

    def __init__(self, handle: ctypes.c_void_p) -> None:
        self._handle = handle

    def __del__(self) -> None:
        self._free(self.__dict__.pop("_handle", None))
