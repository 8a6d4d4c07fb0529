# SPDX-License-Identifier: Apache-2.0
"""The frames of a folder, and the names of their results, as `vastrelline batch` has them."""

from __future__ import annotations

import os
from typing import NamedTuple

from ._words import INPUT, WRONG_USE, ArchiveError, reason, shown

ENDINGS = (b".raw", b".pgm", b".png", b".tif", b".tiff", b".bmp")


class ListedFrame(NamedTuple):
    path: bytes  # whole: workers have folders of their own
    result: bytes  # relative to the folder of the results


def list_frames(source: bytes, target: bytes, ending: str) -> list[ListedFrame]:
    """Of the folder, and of those in it, the files that end as frames do, in the order of their paths. What begins with
    a dot and the folder of the results are passed over; a link to a file is followed, one to a folder is not."""
    if not os.path.isdir(source):
        there = os.path.lexists(source)
        raise ArchiveError(INPUT, shown(source), "is no folder" if there else "does not exist", "name a folder of frames")
    if os.path.realpath(source) == os.path.realpath(target):
        raise ArchiveError(WRONG_USE, "", f"the results would go to the folder of the frames: {shown(source)}",
                           "name another folder")
    names = sorted(_names(source, os.path.realpath(target)), key=lambda name: name.split(b"/"))
    if not names:
        raise ArchiveError(INPUT, shown(source), "holds no frame", "frames end in .raw, .pgm, .png, .tif or .bmp")
    wanted: dict[bytes, int] = {}
    for name in names:
        short = os.path.splitext(name)[0]
        wanted[short] = wanted.get(short, 0) + 1
    frames, taken = [], {}
    for name in names:
        # Two that differ in their ending alone keep it.
        short = os.path.splitext(name)[0]
        result = (short if wanted[short] == 1 else name) + b"." + ending.encode()
        path = os.path.join(source, name)
        if result in taken:
            raise ArchiveError(WRONG_USE, "", f"{shown(path)} and {shown(taken[result])} would both become {shown(result)}",
                               "rename one of them")
        taken[result] = path
        frames.append(ListedFrame(path, result))
    return frames


def _names(source: bytes, target: bytes):
    def fail(error: OSError) -> None:
        raise ArchiveError(INPUT, shown(os.fsencode(error.filename)), f"cannot be read: {reason(error)}") from error

    for folder, folders, files in os.walk(source, onerror=fail):
        folders[:] = [each for each in folders
                      if not each.startswith(b".") and os.path.realpath(os.path.join(folder, each)) != target]
        for leaf in files:
            path = os.path.join(folder, leaf)
            if not leaf.startswith(b".") and leaf.lower().endswith(ENDINGS) and os.path.isfile(path):
                yield os.path.relpath(path, source)
