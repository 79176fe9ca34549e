"""Answers that are kept so that they can be verified later."""

from __future__ import annotations

import ctypes
import os
from typing import Any, List, NamedTuple, Optional, Tuple

from . import _library as c
from ._texts import Handle, Text, check, encode

_byref = ctypes.byref


class Change(NamedTuple):
    """A name that means another file than it did; None stands for no file."""

    name: str
    before: Optional[str]
    after: Optional[str]


class Receipt(Handle):
    """Names, the files that they mean, and the state of the folders that were searched, which shows
    later whether the answers are still right.

    Threads may share a receipt; it never changes. It is saved as `searchpath find --receipt` does.
    """

    _free = staticmethod(c.receipt_free)

    @classmethod
    def load(cls, file: Text) -> Receipt:
        """Reads a saved receipt. Raises OSError when it cannot be read or is not complete."""
        receipt, error = ctypes.c_void_p(), c.Error()
        check(c.receipt_load(encode(file), _byref(receipt), _byref(error)), error, file)
        return cls(receipt)

    def save(self, file: Text) -> None:
        """Replaces the file in one step, or raises OSError and leaves it as it was."""
        error = c.Error()
        check(c.receipt_save(self._handle, encode(file), _byref(error)), error, file)

    def answers(self) -> List[Tuple[str, Optional[str]]]:
        """The names in the order in which they were asked for, each with the file that it meant."""
        answers, error = ctypes.c_void_p(), c.Error()
        check(c.receipt_answers(self._handle, _byref(answers), _byref(error)), error)
        try:
            return [
                (os.fsdecode(c.answers_name(answers, at).bytes), _path(c.answers_path(answers, at)))
                for at in range(c.answers_count(answers))
            ]
        finally:
            c.answers_free(answers)

    def verify(self) -> Changes:
        """Finds the names that mean another file now. When nothing has changed, this takes about
        one question to the disk for each folder."""
        changes, error = ctypes.c_void_p(), c.Error()
        check(c.receipt_verify(self._handle, _byref(changes), _byref(error)), error)
        return Changes(changes)


class Changes(List[Change]):
    """The names of a receipt that mean another file now."""

    def __init__(self, handle: ctypes.c_void_p) -> None:
        self._verified = _Verified(handle)
        super().__init__(
            Change(
                os.fsdecode(c.changes_name(handle, at).bytes),
                _path(c.changes_before(handle, at)),
                _path(c.changes_after(handle, at)),
            )
            for at in range(c.changes_count(handle))
        )

    def renew(self) -> Receipt:
        """A receipt for the same questions, with the changed answers."""
        receipt, error = ctypes.c_void_p(), c.Error()
        check(c.changes_renew(self._verified._handle, _byref(receipt), _byref(error)), error)
        return Receipt(receipt)


class _Verified(Handle):
    _free = staticmethod(c.changes_free)


def _path(view: Any) -> Optional[str]:
    return None if view.bytes is None else os.fsdecode(view.bytes)
