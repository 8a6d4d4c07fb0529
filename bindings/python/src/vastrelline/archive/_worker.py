# SPDX-License-Identifier: Apache-2.0
"""What a worker does. The coordinator sends these functions along, so that a worker needs Dask and the tool, and not
this package; they take and give plain values and lean on nothing but the standard library.

Each frame goes through the tool, `vastrelline batch` of this one frame: whatever the library meets ends a process that
holds nothing else, workers may have any number of threads though the library's state is the process's, and pixels,
private copies of profiles, limits and texts are the tool's own.
"""

from __future__ import annotations

import errno
import hashlib
import json
import os
import shutil
import socket
import subprocess

PROFILE = b"profile"  # the folder in that of the run which holds the profile
INPUT, PROCESSING, OUTPUT = 3, 4, 5  # exit codes of the tool's table


class Fault(Exception):
    """Ends one task: the exit code, where, what, remedy. It stays on the worker, and is told as plain values."""


def guarded(work, job: dict) -> dict:
    """`work` with whatever it meets told in words: nothing but a dying worker makes Dask try again by itself."""
    outcome = {"exit": 0, "error": None, "worker": _own_name(), "attempts": 0}
    try:
        work(job, outcome)
    except Fault as fault:
        outcome["exit"], *outcome["error"] = fault.args
    except OSError as error:
        where = error.filename if error.filename is not None else job["run"]
        outcome["exit"] = OUTPUT
        outcome["error"] = [_shown(where), f"cannot be written: {os.strerror(error.errno or 0)}", ""]
    except Exception as error:  # a fault of ours costs one frame, and not the archive
        outcome["exit"] = PROCESSING
        outcome["error"] = [outcome["worker"], f"the worker failed: {error!r}", ""]
    return outcome


def identify(job: dict) -> dict:
    """What this worker would make results of: a frame of one level shows it, and that the worker sees both folders."""
    return guarded(_identify, job)


def check(job: dict) -> dict:
    """Whether the result that the manifest tells of is there, whole and made of this very frame: field `same`."""
    return guarded(_check, job)


def process(job: dict) -> dict:
    """Makes one result, whole or not at all, and gives the hashes of frame and result."""
    return guarded(_process, job)


def _identify(job: dict, outcome: dict) -> None:
    if not os.path.isdir(job["source"]):
        raise Fault(INPUT, outcome["worker"], f"does not see the frames: {_shown(job['source'])}",
                    "all workers need the folder, under one path")
    if not os.path.isfile(_profile(job)):
        raise Fault(OUTPUT, outcome["worker"], f"does not see the folder of the results: {_shown(job['target'])}",
                    "all workers need the folder, under one path")
    folder = os.path.join(job["run"], b"probe-%s-%d" % (os.urandom(4).hex().encode(), os.getpid()))
    os.mkdir(folder)
    try:
        frame = os.path.join(folder, b"probe.pgm")
        width, height = job["probeSize"]
        with open(frame, "wb") as file:
            file.write(b"P5 %d %d 65535\n" % (width, height) + bytes(2 * width * height))
        results = os.path.join(folder, b"out")
        os.mkdir(results)
        _, summary = _batch(job, outcome, frame, results, job["options"])
        outcome["settings"] = _settings(results)
        outcome.update({name: summary[name] for name in ("version", "export", "chain", "findings")})
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def _check(job: dict, outcome: dict) -> None:
    try:
        outcome["result"] = _hash(os.path.join(job["target"], job["result"]))
        outcome["frame"] = _hash(job["frame"])
        outcome["same"] = (outcome["frame"], outcome["result"]) == tuple(job["told"])
    except OSError:
        outcome["same"] = False  # who makes it anew tells what is wrong


def _process(job: dict, outcome: dict) -> None:
    folder = _begin_attempt(job, outcome)
    try:
        # Before the frame is read: one that changes meanwhile counts as another one later.
        try:
            outcome["frame"] = _hash(job["frame"])
        except OSError as error:
            what = "does not exist" if error.errno == errno.ENOENT else f"cannot be read: {os.strerror(error.errno or 0)}"
            raise Fault(INPUT, _shown(job["frame"]), what, "") from error
        told, _ = _batch(job, outcome, job["frame"], folder, job["options"])
        if _settings(folder) != job["settings"]:
            raise Fault(PROCESSING, outcome["worker"], "has another library or sensor's profile than the others",
                        "install the same on all workers")
        draft, = (os.path.join(folder, leaf) for leaf in os.listdir(folder) if not leaf.endswith(b".jsonl"))
        outcome["result"] = _hash(draft)
        outcome.update({name: told[name] for name in ("width", "height", "elapsedMs", "findings")})
        if not _is_wanted(job):
            raise Fault(PROCESSING, _shown(job["frame"]), "came too late: the archive has ended", "")
        _publish(job, draft, outcome["result"])
    finally:
        if _is_wanted(job):
            # The empty folder stays until the coordinator has heard of it: it counts the attempt.
            for leaf in os.listdir(folder):
                os.unlink(os.path.join(folder, leaf))
        else:
            shutil.rmtree(job["run"], ignore_errors=True)


def _is_wanted(job: dict) -> bool:
    """Whether the coordinator is still there: at its end it takes the folder of its run away."""
    return os.path.isfile(_profile(job))


def _begin_attempt(job: dict, outcome: dict) -> bytes:
    """A folder of the attempt's own. Those of workers that died are there still, so that their number tells how many
    attempts there were."""
    for number in range(1, 1000):
        folder = os.path.join(job["run"], b"%d-%d" % (job["number"], number))
        outcome["attempts"] = number
        try:
            os.mkdir(folder)
            return folder
        except FileExistsError:
            continue
    raise Fault(PROCESSING, _shown(job["frame"]), "was tried too often", "")


def _publish(job: dict, draft: bytes, result_hash: str) -> None:
    path = os.path.join(job["target"], job["result"])
    try:
        os.makedirs(os.path.dirname(path), exist_ok=True)
        path = os.path.realpath(path)  # a link stays, and the file that it names is replaced
        if not job["mayReplace"]:
            try:
                # In one step, so that a file that came up meanwhile is not lost.
                os.link(draft, path)
                return
            except FileExistsError:
                # Of an attempt whose worker died before it could say so: the same frame gives the same bytes.
                if os.path.isfile(path) and _hash(path) == result_hash:
                    return
                raise Fault(OUTPUT, _shown(path), "exists already", "--force replaces it") from None
            except OSError as error:
                if error.errno not in (errno.EPERM, errno.ENOSYS, errno.EOPNOTSUPP, errno.EMLINK):
                    raise
                if os.path.lexists(path) and not (os.path.isfile(path) and _hash(path) == result_hash):
                    raise Fault(OUTPUT, _shown(path), "exists already", "--force replaces it") from None
        os.replace(draft, path)
    except OSError as error:
        raise Fault(OUTPUT, _shown(path), f"cannot be written: {os.strerror(error.errno or 0)}", "") from error


def _batch(job: dict, outcome: dict, frame: bytes, folder: bytes, options: list) -> tuple[dict, dict]:
    """The tool's lines about one frame, and about all of the call. It works within the folder that gets the result: a
    tool that outlives its worker, and the archive, must not make that folder again."""
    lines = _call(job, outcome, ["batch", frame, "--profile", _profile(job), "--section", job["section"], "--out", ".",
                                 "--format", job["format"], "--jobs", "1", "--json", "--quiet", *options], folder)
    told = next((line for line in lines if line.get("type") == "frame"), lines[-1])
    if told["exit"] == 0:
        return told, lines[-1]
    # Names as the user knows them, not those of the attempt.
    error = told.get("error") or {}
    where = error.get("where", "")
    if where == "." or where.startswith("./"):
        where = _shown(os.path.join(job["target"], job.get("result", b"")))
    elif where == _shown(_profile(job)):
        where = _shown(job["profile"])
    elif not where:
        where = _shown(frame)
    raise Fault(told["exit"], where, error.get("what", "the tool failed"), error.get("remedy", ""))


def _call(job: dict, outcome: dict, arguments: list, folder: bytes) -> list[dict]:
    """The objects that the tool prints."""
    tool = job["tool"] or os.environ.get("VASTRELLINE_TOOL") or "vastrelline"
    program = os.path.abspath(tool) if os.path.dirname(tool) else tool
    try:
        done = subprocess.run([program, *arguments], cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                              check=False)
    except OSError as error:
        raise Fault(PROCESSING, outcome["worker"], f"cannot start '{tool}': {os.strerror(error.errno or 0)}",
                    "install the tool there, or name it by --tool or VASTRELLINE_TOOL") from error
    text = done.stdout.decode("utf-8", "replace")
    try:
        if text.startswith("{\n"):  # an error before the first frame
            return [json.loads(text)]
        lines = [json.loads(line) for line in text.splitlines() if line.startswith("{")]
    except ValueError:
        lines = []
    if not lines:
        words = done.stderr.decode("utf-8", "replace").strip().splitlines()
        how = f"was ended by signal {-done.returncode}" if done.returncode < 0 else f"ended with code {done.returncode}"
        raise Fault(PROCESSING, outcome["worker"], f"'{tool}' {how}" + (f": {words[-1]}" if words else ""), "")
    return lines


def _settings(folder: bytes) -> dict:
    """What the tool says that decides a result beside the frame."""
    with open(os.path.join(folder, b"batch-manifest.jsonl"), "rb") as file:
        began = json.loads(file.readline())
    return {name: began[name] for name in ("profileSha256", "section", "librarySha256", "options")}


def _profile(job: dict) -> bytes:
    return os.path.join(job["run"], PROFILE, os.path.basename(job["profile"]))


def _hash(path: bytes) -> str:
    sha256 = hashlib.sha256()
    with open(path, "rb") as file:
        while piece := file.read(1 << 20):
            sha256.update(piece)
    return sha256.hexdigest()


def _own_name() -> str:
    from distributed import get_worker
    return f"{socket.gethostname()} {get_worker().address}"


def _shown(path) -> str:
    return os.fsencode(path).decode("utf-8", "replace")
