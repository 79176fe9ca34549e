"""Turns the arguments of callers into those of C functions, and failures in C into exceptions."""

from __future__ import annotations

import ctypes
import functools
import os
from typing import Any, Iterable, Optional, Tuple, Union

from . import _library as c

Text = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


def encode(text: Text) -> bytes:
    """The bytes of a name. NUL is refused: in C the name would end there."""
    encoded = os.fsencode(text)
    if b"\0" in encoded:
        raise ValueError(f"a name cannot hold NUL: {text!r}")
    return encoded


def listed(texts: Iterable[Text], what: str) -> Tuple[Text, ...]:
    """The texts as a tuple. A single text is refused: it would be taken for a list of letters."""
    if isinstance(texts, (str, bytes, os.PathLike)):
        raise TypeError(f"{what} are a list of texts, not the text {texts!r}")
    return tuple(texts)


def encode_all(texts: Tuple[Text, ...]) -> "ctypes.Array[ctypes.c_char_p]":
    return (ctypes.c_char_p * len(texts))(*map(encode, texts))


_extensions = functools.lru_cache(maxsize=64)(encode_all)  # most callers repeat the same few


def lookup(
    name: Text, extensions: Iterable[Text], from_folder: Optional[Text], ignore_case: bool
) -> c.Lookup:
    if extensions == () and from_folder is None and not ignore_case:
        return c.Lookup(encode(name))
    tried = _extensions(listed(extensions, "extensions"))
    folder = None if from_folder is None else encode(from_folder)
    return c.Lookup(encode(name), tried, len(tried), folder, bool(ignore_case))


def check(status: int, error: c.Error, subject: Optional[Text] = None) -> None:
    """Raises the exception for a status other than 0. An OSError names `subject`, if given."""
    if status == 0:
        return
    message = os.fsdecode(error.message)
    if status == c.INVALID:
        raise ValueError(message)
    raise OSError(message if subject is None else f"{os.fsdecode(subject)!r}: {message}")


class Handle:
    """Owns an object of the library, and frees it when it is itself destroyed."""

    _free: Any = None  # the library's function that frees such an object

    def __init__(self, handle: ctypes.c_void_p) -> None:
        self._handle = handle

    def __del__(self) -> None:
        # None, which C takes for null, when the constructor has failed early.
        self._free(self.__dict__.pop("_handle", None))
