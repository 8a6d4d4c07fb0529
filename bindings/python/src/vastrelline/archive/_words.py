# SPDX-License-Identifier: Apache-2.0
"""The words of the tool: how it ends, and how it says what is wrong."""

from __future__ import annotations

import os

WELL, WRONG_USE, INPUT, PROCESSING, OUTPUT, CANCELLED = 0, 2, 3, 4, 5, 130
CODE_NAMES = {WRONG_USE: "use", INPUT: "input", PROCESSING: "processing", OUTPUT: "output"}


class ArchiveError(Exception):
    """What ends the work: where, what, and what to do about it. `code` is the exit code of the tool's table."""

    def __init__(self, code: int, where: str, what: str, remedy: str = "") -> None:
        super().__init__(sentence(where, what, remedy))
        self.code, self.where, self.what, self.remedy = code, where, what, remedy


def sentence(where: str, what: str, remedy: str) -> str:
    """In one line: "frame.raw: is a folder, not a file; name a file"."""
    return (where + ": " if where else "") + what + ("; " + remedy if remedy else "")


def shown(path: bytes) -> str:
    """For people and in the lines for programs."""
    return path.decode("utf-8", "replace")


def plain_text(path: bytes) -> str:
    """For manifests. Paths need not be UTF-8, and JSON must be; different paths give different texts."""
    path = path.replace(b"\\", b"\\\\")
    try:
        return path.decode("utf-8")
    except UnicodeDecodeError:
        return "".join(chr(byte) if byte < 0x80 else f"\\x{byte:02X}" for byte in path)


def one_line(text: str) -> str:
    """A name may hold a line end, and a terminal obeys what is no letter."""
    return "".join("?" if ord(letter) < 32 or ord(letter) == 127 else letter for letter in text.rstrip("\n"))


def reason(error: OSError) -> str:
    return os.strerror(error.errno) if error.errno else str(error)
