"""The C interface for Python: loads its library, and declares the types of its functions."""

from __future__ import annotations

import ctypes
import os
from ctypes import POINTER, c_char, c_char_p, c_int, c_size_t, c_void_p
from typing import Any, Callable, List, Optional, cast

NAME = "libsearchpath-c.so.0"
LEAST_VERSION = 2
VARIABLE = "SEARCHPATH_C_LIBRARY"

INVALID = 1  # the status for an argument that is not valid; all others mean an OSError


class Error(ctypes.Structure):
    _fields_ = [("message", c_char * 256)]


class View(ctypes.Structure):
    """A text that belongs to the library. Reading `bytes` makes a copy; None where C has a null."""

    _fields_ = [("bytes", c_char_p), ("size", c_size_t)]


class Lookup(ctypes.Structure):
    _fields_ = [
        ("name", c_char_p),
        ("extensions", POINTER(c_char_p)),
        ("extension_count", c_size_t),
        ("from_folder", c_char_p),
        ("ignore_case", c_int),
    ]


def _places() -> List[str]:
    """Where to look for the library, in this order. The user's choice is the only place; without
    one, beside this module, then where the loader looks."""
    if os.environ.get(VARIABLE):
        return [os.environ[VARIABLE]]
    # This module is in lib/python3/dist-packages/searchpath.
    lib = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../.."))
    machine = os.uname().machine + "-linux-gnu"  # Debian's folder for libraries
    folders = [lib, os.path.join(lib, machine), lib + "64"]
    beside = [os.path.join(folder, NAME) for folder in folders]
    return [file for file in beside if os.path.exists(file)] + [NAME]


def _load() -> ctypes.CDLL:
    reasons = []
    for place in _places():
        try:
            library = ctypes.CDLL(place)
            version = int(library.searchpath_version())
        except (OSError, AttributeError) as failure:
            reasons.append(str(failure))
            continue
        if version >= LEAST_VERSION:
            return library
        reasons.append(f"{place}: its interface has version {version}, {LEAST_VERSION} is needed")
    raise ImportError(
        f"searchpath needs {NAME}, which is not beside it ({'; '.join(reasons)}); "
        f"install it, or set {VARIABLE} to its path"
    )


_library = _load()


def _declare(name: str, result: Optional[type], *arguments: Any) -> Callable[..., Any]:
    function = getattr(_library, "searchpath_" + name)
    function.restype = result
    function.argtypes = arguments
    return cast(Callable[..., Any], function)


_Out = POINTER(c_void_p)
_Failure = POINTER(Error)
_Question = (c_void_p, POINTER(Lookup), _Out, _Failure)

environment_open = _declare(
    "environment_open", c_int, POINTER(c_char_p), c_size_t, c_int, c_char_p, _Out, _Failure
)
environment_free = _declare("environment_free", None, c_void_p)
find = _declare("find", c_int, *_Question)
find_all = _declare("find_all", c_int, *_Question)
files_count = _declare("files_count", c_size_t, c_void_p)
files_path = _declare("files_path", View, c_void_p, c_size_t)
files_free = _declare("files_free", None, c_void_p)
explain = _declare("explain", c_int, *_Question)
explanation_json = _declare("explanation_json", View, c_void_p)
explanation_free = _declare("explanation_free", None, c_void_p)
find_shadows = _declare("find_shadows", c_int, *_Question)
shadows_count = _declare("shadows_count", c_size_t, c_void_p)
shadows_name = _declare("shadows_name", View, c_void_p, c_size_t)
shadows_files = _declare("shadows_files", c_void_p, c_void_p, c_size_t)
shadows_kind = _declare("shadows_kind", View, c_void_p, c_size_t, c_size_t)
shadows_free = _declare("shadows_free", None, c_void_p)
watch_open = _declare("watch_open", c_int, c_void_p, _Out, _Failure)
watch_descriptor = _declare("watch_descriptor", c_int, c_void_p)
watch_environment = _declare("watch_environment", c_int, c_void_p, _Out, _Failure)
watch_free = _declare("watch_free", None, c_void_p)
find_with_receipt = _declare(
    "find_with_receipt", c_int, c_void_p, POINTER(Lookup), c_size_t, _Out, _Failure
)
receipt_load = _declare("receipt_load", c_int, c_char_p, _Out, _Failure)
receipt_save = _declare("receipt_save", c_int, c_void_p, c_char_p, _Failure)
receipt_free = _declare("receipt_free", None, c_void_p)
receipt_answers = _declare("receipt_answers", c_int, c_void_p, _Out, _Failure)
answers_count = _declare("answers_count", c_size_t, c_void_p)
answers_name = _declare("answers_name", View, c_void_p, c_size_t)
answers_path = _declare("answers_path", View, c_void_p, c_size_t)
answers_free = _declare("answers_free", None, c_void_p)
receipt_verify = _declare("receipt_verify", c_int, c_void_p, _Out, _Failure)
changes_count = _declare("changes_count", c_size_t, c_void_p)
changes_name = _declare("changes_name", View, c_void_p, c_size_t)
changes_before = _declare("changes_before", View, c_void_p, c_size_t)
changes_after = _declare("changes_after", View, c_void_p, c_size_t)
changes_renew = _declare("changes_renew", c_int, c_void_p, _Out, _Failure)
changes_free = _declare("changes_free", None, c_void_p)
