"""Answers that are kept together with what they rest on."""

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
    """Names, the files that they mean, and what these answers rest on, so that it can be found out later
    whether they still hold.

    Threads may share it. It never changes. The files are those of `searchpath find --receipt`.
    """

    _free = staticmethod(c.receipt_free)

    @classmethod
    def load(cls, file: Text) -> Receipt:
        """Raises OSError for what is no whole receipt, or cannot be read."""
        receipt, error = ctypes.c_void_p(), c.Error()
        check(c.receipt_load(encode(file), _byref(receipt), _byref(error)), error, file)
        return cls(receipt)

    def save(self, file: Text) -> None:
        """Replaces the file in one step, or raises OSError and leaves it as it was."""
        error = c.Error()
        check(c.receipt_save(self._handle, encode(file), _byref(error)), error, file)

    def answers(self) -> List[Tuple[str, Optional[str]]]:
        """The names in the order in which they were asked, and the files that they meant."""
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
        """The names that mean another file now. As a rule it costs a question to the disk for each
        folder."""
        changes, error = ctypes.c_void_p(), c.Error()
        check(c.receipt_verify(self._handle, _byref(changes), _byref(error)), error)
        return Changes(changes)


class Changes(List[Change]):
    """What has changed since a receipt was made."""

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
        """The receipt of the same questions, with these changes."""
        receipt, error = ctypes.c_void_p(), c.Error()
        check(c.changes_renew(self._verified._handle, _byref(receipt), _byref(error)), error)
        return Receipt(receipt)


class _Verified(Handle):
    _free = staticmethod(c.changes_free)


def _path(view: Any) -> Optional[str]:
    return None if view.bytes is None else os.fsdecode(view.bytes)
