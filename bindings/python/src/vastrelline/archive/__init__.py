# SPDX-License-Identifier: Apache-2.0
"""A folder of frames over the machines of a Dask cluster, as `vastrelline batch` does it on one.

    from vastrelline import archive

    summary = archive.run("scans", "results", "dental.ini", "General", scheduler="tcp://node1:8786", resume=True)
    print(summary.done, summary.before, summary.failed, summary.code)

    python3 -m vastrelline.archive scans results --profile dental.ini --section General --scheduler tcp://node1:8786

The folders of frames and results are shared: every worker sees them under one path. The workers need Dask and the tool
of the same version, and not this package. docs/archives.md tells the rest.
"""

from __future__ import annotations

import os
import re
from typing import Callable, Sequence

from ._engine import Outcome, Summary, Wishes
from ._engine import run as _run
from ._words import WRONG_USE, ArchiveError

__all__ = ["ArchiveError", "Outcome", "Summary", "run"]


def run(source, target, profile, section: str, *, scheduler: str | None = None, jobs: int | None = None,
        retries: int = 2, resume: bool = False, force: bool = False, keep_going: bool = False, format: str = "png",
        size: str | None = None, options: Sequence[str] = (), tool: str | None = None, wait_seconds: float = 300.0,
        on_frame: Callable[[Outcome, Summary], None] | None = None, summary: Summary | None = None) -> Summary:
    """Makes a result of every frame in the folder `source` and in those below it.

    scheduler      of the cluster, such as tcp://node1:8786; None: `jobs` worker processes of this machine
    retries        how often a frame is tried again that failed; a worker that dies is no failure of its frame
    resume         does only what an earlier archive or batch has not done, or what has changed since
    force          begins anew, and replaces files that exist
    keep_going     goes on after a frame that failed
    size           "1300x1668", of raw frames; None: as their names or the profile tell
    options        more options of `vastrelline batch`, such as ["--mapping", "--timeout", "30"]
    tool           the tool on the workers; None: VASTRELLINE_TOOL of their environment, else `vastrelline`
    wait_seconds   how long it waits for a first worker, and later for another one when all are gone
    on_frame       called with the outcome of each frame, and the summary so far
    summary        filled while the work goes on, for a caller who breaks it off

    A frame that fails raises nothing: Summary.code is then the tool's exit code, and never 0. Raises ArchiveError for
    what ends the work before the first frame.
    """
    match = None
    if size is not None:
        match = re.fullmatch(r"([1-9][0-9]{0,8})[xX]([1-9][0-9]{0,8})", size)
        if not match or int(match[1]) * int(match[2]) >= 2**29:
            raise ArchiveError(WRONG_USE, "", f"'{size}' is no size", "write it as in 1300x1668")
        options = ["--size", size, *options]
    whole = [os.path.abspath(os.fsencode(path)) for path in (source, target, profile)]
    return _run(Wishes(*whole, section=section, scheduler=scheduler, jobs=jobs, retries=retries, resume=resume,
                       force=force, keep_going=keep_going, format=format, options=list(options),
                       size=(int(match[1]), int(match[2])) if match else None, tool=tool, wait_seconds=wait_seconds,
                       on_frame=on_frame), summary if summary is not None else Summary())
