"""A path of folders, and the questions that it answers."""

from __future__ import annotations

import binascii
import ctypes
import errno
import json
import os
import select
import threading
from types import TracebackType
from typing import Any, Dict, Iterable, List, Optional, Type

from . import _library as c
from ._receipt import Receipt
from ._texts import Handle, Text, check, encode, encode_all, listed, lookup

_byref = ctypes.byref
_decode = os.fsdecode


class Environment(Handle):
    """A search path, and what names mean on it.

    `folders` are searched in their order, with all folders below them where `recursive` is true.
    `rules` are "environment", "plain", "program" or "include". Relative folders and names, also in
    later calls, are below the working folder at the time when the environment is made. A folder
    that cannot be searched counts as empty.

    A `name` is a file name or a partial pathname. It is tried with each of the `extensions`, which
    are given with or without their dot. With `from_folder`, the folder of the code that asks, the
    files of its private folder come first.

    Texts are str, bytes or os.PathLike; paths are returned as `os.fsdecode` decodes them. A folder
    is read when it is first searched; whether later changes are seen is not certain: see `watch`.

    Threads may share an environment. While it answers one of them, the others keep running.

    Raises ValueError for an argument that is not valid; OSError for a `from_folder` that cannot be
    used, and when the system has no memory, descriptor or thread left.
    """

    _free = staticmethod(c.environment_free)

    def __init__(
        self, folders: Iterable[Text], recursive: bool = False, rules: str = "environment"
    ) -> None:
        if not isinstance(rules, str):
            raise TypeError(f"rules are a str, not {rules!r}")
        given = encode_all(listed(folders, "folders"))
        super().__init__(ctypes.c_void_p())
        error = c.Error()
        status = c.environment_open(
            given, len(given), bool(recursive), encode(rules), _byref(self._handle), _byref(error)
        )
        check(status, error)

    def find(
        self,
        name: Text,
        *,
        extensions: Iterable[Text] = (),
        from_folder: Optional[Text] = None,
        ignore_case: bool = False,
    ) -> Optional[str]:
        """The path of the file that the name means; None when there is none."""
        files = self._ask(c.find, lookup(name, extensions, from_folder, ignore_case))
        try:
            return _decode(c.files_path(files, 0).bytes) if c.files_count(files) else None
        finally:
            c.files_free(files)

    def find_all(
        self,
        name: Text,
        *,
        extensions: Iterable[Text] = (),
        from_folder: Optional[Text] = None,
        ignore_case: bool = False,
    ) -> List[str]:
        """The file that the name means, then those that it hides, in path order."""
        files = self._ask(c.find_all, lookup(name, extensions, from_folder, ignore_case))
        try:
            return _paths(files)
        finally:
            c.files_free(files)

    def explain(
        self,
        name: Text,
        *,
        extensions: Iterable[Text] = (),
        from_folder: Optional[Text] = None,
        ignore_case: bool = False,
    ) -> Dict[str, Any]:
        """The folders that were searched, in order, what was found in each, and the rule that
        decided: the object that `searchpath find --explain --json` prints."""
        explanation = self._ask(c.explain, lookup(name, extensions, from_folder, ignore_case))
        try:
            text = c.explanation_json(explanation).bytes
        finally:
            c.explanation_free(explanation)
        explained: Dict[str, Any] = json.loads(text, object_hook=_with_names)
        explained["name"] = _decode(name)
        return explained

    def shadows(
        self, *, extensions: Iterable[Text] = (), ignore_case: bool = False
    ) -> List[Dict[str, Any]]:
        """The names whose files hide others: what `searchpath shadows --json` prints."""
        shadows = self._ask(c.find_shadows, lookup("", extensions, None, ignore_case))
        try:
            return [_shadow(shadows, at) for at in range(c.shadows_count(shadows))]
        finally:
            c.shadows_free(shadows)

    def find_with_receipt(
        self,
        names: Iterable[Text],
        *,
        extensions: Iterable[Text] = (),
        from_folder: Optional[Text] = None,
        ignore_case: bool = False,
    ) -> Receipt:
        """The answers of `find` for all these names, kept so that they can be verified later."""
        tried = listed(extensions, "extensions")
        asked = [lookup(each, tried, from_folder, ignore_case) for each in listed(names, "names")]
        receipt, error = ctypes.c_void_p(), c.Error()
        status = c.find_with_receipt(
            self._handle,
            (c.Lookup * len(asked))(*asked),
            len(asked),
            _byref(receipt),
            _byref(error),
        )
        check(status, error, from_folder)
        return Receipt(receipt)

    def watch(self) -> Watch:
        """Watches the disk for changes to the path: `with environment.watch() as watch`."""
        return Watch(self)

    def _ask(self, question: Any, asked: c.Lookup) -> ctypes.c_void_p:
        answer, error = ctypes.c_void_p(), c.Error()
        status = question(self._handle, _byref(asked), _byref(answer), _byref(error))
        check(status, error, asked.from_folder)
        return answer


class Watch:
    """Watches the disk for changes to the path of an environment, for programs that keep running.

    Threads may share a watch. `close` waits for calls of `environment` in other threads.
    """

    def __init__(self, environment: Environment) -> None:
        handle, error = ctypes.c_void_p(), c.Error()
        check(c.watch_open(environment._handle, _byref(handle), _byref(error)), error)
        self._watched: Optional[_Watched] = _Watched(handle)
        self._lock = threading.Lock()

    def environment(self) -> Environment:
        """An environment for the path as the disk is now. Takes one system call when nothing has
        changed; otherwise all folders are listed again."""
        with self._lock:
            made = Environment.__new__(Environment)
            Handle.__init__(made, ctypes.c_void_p())
            error = c.Error()
            handle = self._open()._handle
            check(c.watch_environment(handle, _byref(made._handle), _byref(error)), error)
            return made

    def fileno(self) -> int:
        """A descriptor for `select`, `selectors` and event loops: readable once something may have
        changed, until the next call of `environment`. The kernel reports no changes on network
        file systems: with folders there, call `environment` from time to time as well. Negative
        when the kernel reports no changes at all."""
        with self._lock:
            return int(c.watch_descriptor(self._open()._handle))

    def wait(self, timeout: Optional[float] = None) -> bool:
        """Waits until something may have changed, for at most `timeout` seconds; None means without
        a limit. Returns whether something may have changed. Raises `OSError` when the kernel reports
        no changes: then call `environment` from time to time instead."""
        descriptor = self.fileno()
        if descriptor < 0:
            raise OSError(errno.ENOTSUP, "the kernel reports no changes of folders here")
        waiting = select.poll()
        waiting.register(descriptor, select.POLLIN)
        return bool(waiting.poll(None if timeout is None else timeout * 1000))

    def close(self) -> None:
        with self._lock:
            self._watched = None

    def __enter__(self) -> Watch:
        self._open()
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        self.close()

    def _open(self) -> _Watched:
        if self._watched is None:
            raise ValueError("the watch is closed")
        return self._watched


class _Watched(Handle):
    _free = staticmethod(c.watch_free)


def _with_names(found: Dict[str, Any]) -> Dict[str, Any]:
    """Decodes the texts of `found`, which may be file names, as `os.fsdecode` does. Where a text is
    not UTF-8, JSON has its bytes in Base64 as well: "pathBytes" beside "path"."""
    exact = {key[:-5]: binascii.a2b_base64(found.pop(key)) for key in [*found] if key[-5:] == "Bytes"}
    for key, value in found.items():
        if isinstance(value, str):
            found[key] = _decode(exact.get(key) or value.encode())
    return found


def _paths(files: Any) -> List[str]:
    return [_decode(c.files_path(files, at).bytes) for at in range(c.files_count(files))]


def _shadow(shadows: Any, at: int) -> Dict[str, Any]:
    winner, *hidden = _paths(c.shadows_files(shadows, at))
    # JSON has the same words, with hyphens for blanks.
    kinds = [c.shadows_kind(shadows, at, file + 1).bytes.decode() for file in range(len(hidden))]
    return {
        "name": _decode(c.shadows_name(shadows, at).bytes),
        "path": winner,
        "hidden": [
            {"path": path, "kind": kind.replace(" ", "-")} for path, kind in zip(hidden, kinds)
        ],
    }
