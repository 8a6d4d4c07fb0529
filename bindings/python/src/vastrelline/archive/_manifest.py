# SPDX-License-Identifier: Apache-2.0
"""What was done in a folder of results: the manifest of `vastrelline batch`, line for line, so that a batch goes on
where an archive ended and the other way round."""

from __future__ import annotations

import json
import os
from typing import NamedTuple

from ._words import OUTPUT, WRONG_USE, ArchiveError, plain_text, reason, shown

LEAF = b"batch-manifest.jsonl"
HASHES_LEAF = b"archive-hashes.jsonl"
SETTINGS = ("profileSha256", "section", "librarySha256", "options")


class Done(NamedTuple):
    frame: str
    result: str


class Manifest:
    """Lines of JSON, each written in one piece and only ever added; a line that is not whole is passed over. A result is
    announced before a worker may make it and told as done afterwards, so that a file that no line announces is somebody
    else's. As long as the object lives no other archive or batch works in the folder."""

    def __init__(self, folder: bytes, *, resume: bool, force: bool) -> None:
        try:
            import fcntl
        except ImportError as error:
            raise ArchiveError(WRONG_USE, "", "an archive is kept by a system with POSIX locks",
                               "use 'vastrelline batch' here") from error
        self.path = os.path.join(folder, LEAF)
        self._folder = folder
        self._anew = force and not resume
        self._lines: dict[str, dict | None] = {}  # by result: announced, and perhaps done
        self._settings: dict = {}
        try:
            os.makedirs(folder, exist_ok=True)
            self._file = os.open(self.path, os.O_RDWR | os.O_CREAT | os.O_APPEND | os.O_CLOEXEC, 0o666)
        except OSError as error:
            raise ArchiveError(OUTPUT, shown(folder), f"cannot be written: {reason(error)}") from error
        try:
            # The lock goes with the process, however that ends.
            fcntl.flock(self._file, fcntl.LOCK_EX | fcntl.LOCK_NB)
            if not resume and not force and os.fstat(self._file).st_size > 0:
                raise ArchiveError(OUTPUT, shown(folder), "holds the results of an earlier batch",
                                   "--resume goes on with it, --force begins anew")
            self._read()
        except BlockingIOError as error:
            os.close(self._file)
            raise ArchiveError(OUTPUT, shown(folder), "another batch works in this folder", "wait for its end") from error
        except OSError as error:
            os.close(self._file)
            raise ArchiveError(OUTPUT, shown(self.path), f"cannot be locked or read: {reason(error)}",
                               "results go to a file system with locks") from error
        except BaseException:
            os.close(self._file)
            raise

    def begin(self, settings: dict) -> None:
        """settings   what decides a result beside the frame, in the words of the tool's own manifest"""
        self._settings = {name: settings[name] for name in SETTINGS}
        self._append({"began": "anew" if self._anew else "batch", **self._settings})
        if self._anew:
            self._lines = dict.fromkeys(self._lines)

    def is_own(self, result: bytes) -> bool:
        """Whether a result of this name was announced before."""
        return plain_text(result) in self._lines

    def find_done(self, result: bytes) -> Done | None:
        """What is told of a result that was done with the same settings."""
        line = self._lines.get(plain_text(result))
        if line is None or any(line.get(name) != value for name, value in self._settings.items()):
            return None
        return Done(str(line.get("frameSha256")), str(line.get("resultSha256")))

    def announce(self, result: bytes) -> None:
        self._append({"announced": plain_text(result)})
        self._lines[plain_text(result)] = None

    def tell_done(self, result: bytes, frame: bytes, hashes: Done, more: dict) -> None:
        line = {"result": plain_text(result), "frame": plain_text(frame), "frameSha256": hashes.frame, **self._settings,
                "resultSha256": hashes.result, **more}
        self._append(line)
        self._lines[plain_text(result)] = line

    def write_hashes(self) -> bytes:
        """A line for each result that is done, in the order of their names, in a file that is whole or as it was."""
        path = os.path.join(self._folder, HASHES_LEAF)
        draft = path + b".draft"  # nobody else writes here as long as the lock is held
        lines = sorted((name, line) for name, line in self._lines.items() if line is not None)
        try:
            with open(draft, "w", encoding="utf-8") as file:
                file.writelines(_text(line) for _, line in lines)
                file.flush()
                os.fsync(file.fileno())
            os.replace(draft, path)
        except OSError as error:
            raise ArchiveError(OUTPUT, shown(path), f"cannot be written: {reason(error)}") from error
        return path

    def close(self) -> None:
        try:
            os.fsync(self._file)
        finally:
            os.close(self._file)

    def _read(self) -> None:
        with open(self.path, "rb") as file:
            for line in file:
                self._take(line)
        # What follows must not grow together with a line that was cut off.
        size = os.fstat(self._file).st_size
        if size > 0 and os.pread(self._file, 1, size - 1) != b"\n":
            self._write(b"\n")

    def _take(self, line: bytes) -> None:
        if not line.endswith(b"\n"):
            return
        try:
            value = json.loads(line)
        except ValueError:
            return
        if not isinstance(value, dict):
            return
        if value.get("began") == "anew":
            self._lines = dict.fromkeys(self._lines)
        if isinstance(value.get("announced"), str):
            self._lines[value["announced"]] = None
        if isinstance(value.get("result"), str):
            self._lines[value["result"]] = value

    def _append(self, line: dict) -> None:
        self._write(_text(line).encode())

    def _write(self, rest: bytes) -> None:
        try:
            while rest:
                rest = rest[os.write(self._file, rest):]
        except OSError as error:
            raise ArchiveError(OUTPUT, shown(self.path), f"cannot be written: {reason(error)}") from error


def _text(line: dict) -> str:
    return json.dumps(line, ensure_ascii=False, separators=(",", ":")) + "\n"
