# SPDX-License-Identifier: Apache-2.0
"""The coordinator: hands the frames of a folder out to Dask's workers, and alone writes what was done."""

from __future__ import annotations

import contextlib
import importlib
import os
import shutil
import signal
import threading
import time
from dataclasses import dataclass, field
from typing import Callable

from . import _worker
from ._frames import ListedFrame, list_frames
from ._manifest import Done, Manifest
from ._words import INPUT, OUTPUT, PROCESSING, WELL, WRONG_USE, ArchiveError, reason, shown

FORMATS = ("png", "bmp", "pgm", "tif", "raw")
RUN_MARK = b".archive-"
LOOK_SECONDS = 1.0  # how often the workers are counted
FETCH_SECONDS = 30.0  # for the few words of a worker about a frame
_FOR_WORKERS = ("see that the Python it is started with has Dask, and that a script calls archive.run only where "
                "__name__ is '__main__'")


@dataclass
class Outcome:
    """What became of one frame."""

    frame: str
    state: str  # done, before (by an earlier batch or archive, and nothing has changed since), failed
    exit: int
    result: str | None
    result_sha256: str | None
    width: int | None
    height: int | None
    elapsed_ms: float | None
    findings: list
    error: dict | None
    worker: str
    attempts: int


@dataclass
class Summary:
    """What became of all of them. `code` is the exit code of the tool's table: 0 only if no frame failed or is left."""

    frames: int = 0
    done: int = 0
    before: int = 0
    failed: int = 0
    code: int = WELL
    seconds: float = 0.0
    version: str = ""  # of the tool
    export: str = ""
    chain: str = ""
    findings: list = field(default_factory=list)  # about the profile
    scheduler: str = ""
    workers: int = 0  # when it began
    manifest: str = ""  # what --resume reads
    hashes: str = ""  # a line for each result that is there
    failures: list = field(default_factory=list)  # the outcomes
    error: ArchiveError | None = None  # what ended it before all frames were done

    @property
    def left(self) -> int:
        return self.frames - self.done - self.before - self.failed


@dataclass
class Wishes:
    """All that a caller asks for."""

    source: bytes
    target: bytes
    profile: bytes
    section: str
    scheduler: str | None
    jobs: int | None
    retries: int
    resume: bool
    force: bool
    keep_going: bool
    format: str
    options: list
    size: tuple | None
    tool: str | None
    wait_seconds: float
    on_frame: Callable[[Outcome, Summary], None] | None


def run(wishes: Wishes, summary: Summary) -> Summary:
    """Errors   ArchiveError before the first frame; afterwards everything is in `summary`, which the caller has also
    if he breaks it off."""
    start = time.monotonic()
    distributed = _engine_module()
    _test(wishes)
    profile = _read_profile(wishes.profile)
    frames = list_frames(wishes.source, wishes.target, wishes.format)
    manifest = Manifest(wishes.target, resume=wishes.resume, force=wishes.force)
    try:
        _test_names(wishes, frames, manifest)
        _remove_left(wishes.target)
        folder = _make_folder(wishes, profile)
        try:
            with _connect(distributed, wishes) as client:
                work = _Work(distributed, client, wishes, manifest, folder, summary)
                summary.frames = len(frames)
                summary.manifest = shown(manifest.path)
                try:
                    work.identify()
                    work.all(frames)
                finally:
                    summary.seconds = time.monotonic() - start
                    work.end()
        finally:
            # By this a worker that is late knows that nobody waits for it, and publishes nothing any more.
            shutil.rmtree(folder, ignore_errors=True)
            if summary.workers > 0:
                _write_hashes(manifest, summary)
    finally:
        manifest.close()
    return summary


def _write_hashes(manifest: Manifest, summary: Summary) -> None:
    try:
        summary.hashes = shown(manifest.write_hashes())
    except ArchiveError as error:
        summary.error = summary.error or error
        summary.code = max(summary.code, error.code)


class _Work:
    def __init__(self, distributed, client, wishes: Wishes, manifest: Manifest, folder: bytes, summary: Summary) -> None:
        self._distributed, self._client = distributed, client
        self._wishes, self._manifest, self._summary = wishes, manifest, summary
        self._job = {"source": wishes.source, "target": wishes.target, "run": folder, "profile": wishes.profile,
                     "section": wishes.section, "format": wishes.format, "options": wishes.options, "tool": wishes.tool,
                     "probeSize": wishes.size or (96, 128)}
        self._flying: dict = {}  # futures, with the frame's number, how often it may still fail, and the job
        self._seen = time.monotonic()  # when there last was a worker
        self._asked, self._threads = float("-inf"), 1

    def identify(self) -> None:
        """All workers make the same results, or nothing begins."""
        try:
            self._client.wait_for_workers(1, timeout=self._wishes.wait_seconds)
        except self._distributed.TimeoutError as error:
            raise self._no_worker() from error
        told = self._client.run(_worker.identify, self._job)
        first = None
        for one in told.values():
            if one["error"]:
                raise ArchiveError(one["exit"], *one["error"])
            first = first or one
            if one["settings"] != first["settings"]:
                raise ArchiveError(PROCESSING, one["worker"],
                                   f"has another library or sensor's profile than {first['worker']}",
                                   "install the same on all workers")
        self._job["settings"] = first["settings"]
        self._manifest.begin(first["settings"])
        summary = self._summary
        summary.version, summary.export, summary.chain = first["version"], first["export"], first["chain"]
        summary.findings = [{**finding, "file": shown(self._wishes.profile)} for finding in first["findings"]]
        summary.workers, summary.scheduler = len(told), self._client.scheduler.address

    def all(self, frames: list[ListedFrame]) -> None:
        waiting = enumerate(frames)
        while True:
            # Enough that no worker waits for the coordinator, and few enough that a stop comes soon.
            while not self._has_stopped() and len(self._flying) < self._width():
                number, frame = next(waiting, (0, None))
                if frame is None:
                    break
                self._begin(number, frame)
            if not self._flying:
                return
            for future in self._ended():
                self._take(future, *self._flying.pop(future))

    def end(self) -> None:
        try:
            self._client.cancel(list(self._flying), force=True)
        except Exception:  # the scheduler may be what has ended
            pass

    def _width(self) -> int:
        # The answer of a large cluster is long.
        if time.monotonic() - self._asked >= LOOK_SECONDS:
            self._threads = sum(worker["nthreads"] for worker in self._workers().values())
            self._asked = time.monotonic()
        return 2 * max(1, self._threads)

    def _workers(self) -> dict:
        return self._client.scheduler_info().get("workers", {})  # without a scheduler there is no such field

    def _has_stopped(self) -> bool:
        return self._summary.error is not None or (self._summary.failed > 0 and not self._wishes.keep_going)

    def _begin(self, number: int, frame: ListedFrame) -> None:
        job = {**self._job, "number": number, "frame": frame.path, "result": frame.result,
               "mayReplace": self._wishes.force or self._manifest.is_own(frame.result)}
        told = self._manifest.find_done(frame.result)
        if told:
            self._submit(_worker.check, {**job, "told": tuple(told)}, frame, 0)
        else:
            self._make(job, frame)

    def _make(self, job: dict, frame: ListedFrame) -> None:
        self._manifest.announce(frame.result)
        self._submit(_worker.process, job, frame, self._wishes.retries)

    def _submit(self, function, job: dict, frame: ListedFrame, retries: int) -> None:
        # Not pure: a frame that was tried is tried again, whatever Dask remembers.
        future = self._client.submit(function, job, pure=False, retries=0)
        self._flying[future] = (function, job, frame, retries)

    def _ended(self) -> list:
        """The futures that have ended, after a while none."""
        futures = list(self._flying)
        try:
            with self._client.as_current():
                self._distributed.wait(futures, timeout=LOOK_SECONDS, return_when="FIRST_COMPLETED")
        except self._distributed.TimeoutError:
            pass
        except self._distributed.CancelledError:
            pass
        ended = [future for future in futures if future.status in ("finished", "error")]
        if not ended and any(future.status in ("cancelled", "lost") for future in futures):
            self._give_up(ArchiveError(PROCESSING, self._summary.scheduler, "the scheduler is gone",
                                       "start it again and go on with --resume"))
        elif ended or self._workers():
            self._seen = time.monotonic()
        elif time.monotonic() - self._seen > self._wishes.wait_seconds:
            self._give_up(self._no_worker())
        return ended

    def _give_up(self, error: ArchiveError) -> None:
        self._summary.error = error
        self._summary.code = max(self._summary.code, error.code)
        self.end()
        self._flying.clear()

    def _no_worker(self) -> ArchiveError:
        return ArchiveError(PROCESSING, self._client.scheduler.address,
                            f"no worker for {self._wishes.wait_seconds:g} s", "start one there and go on with --resume")

    def _take(self, future, function, job: dict, frame: ListedFrame, retries: int) -> None:
        told = self._result(future, job)
        if told is None:  # not yet, or never
            if not self._summary.error:
                self._flying[future] = (function, job, frame, retries)
            return
        if function is _worker.check:
            if not told.get("same"):
                self._make(job, frame)
                return
            self._count("before", frame, told)
        elif told["exit"] == 0:
            self._manifest.tell_done(frame.result, frame.path, Done(told["frame"], told["result"]),
                                     {"version": self._summary.version, "worker": told["worker"],
                                      "attempts": told["attempts"]})
            self._count("done", frame, told)
        elif retries > 0 and told["exit"] != WRONG_USE and not self._summary.error:
            self._submit(function, job, frame, retries - 1)
            return
        else:
            self._count("failed", frame, told)
        for number in range(1, told["attempts"] + 1):
            shutil.rmtree(os.path.join(job["run"], b"%d-%d" % (job["number"], number)), ignore_errors=True)

    def _result(self, future, job: dict) -> dict | None:
        """What the worker says; where none could, what Dask says."""
        try:
            return future.result(timeout=FETCH_SECONDS)
        except self._distributed.scheduler.KilledWorker as error:
            what, remedy = f"{error.args[1] if len(error.args) > 1 else 'a worker'} and others died while they had it", ""
            attempts = sum(leaf.startswith(b"%d-" % job["number"]) for leaf in os.listdir(job["run"]))
        except self._distributed.TimeoutError:
            return None  # the worker that held it has died: another one makes it again
        except (self._distributed.CancelledError, OSError):
            self._give_up(ArchiveError(PROCESSING, self._summary.scheduler, "the scheduler is gone",
                                       "start it again and go on with --resume"))
            return None
        except Exception as error:  # Dask could not bring it to a worker and back
            what, remedy, attempts = f"Dask could not have it done: {error!r}", "", 0
        return {"exit": PROCESSING, "error": [shown(job["frame"]), what, remedy], "worker": "", "attempts": attempts}

    def _count(self, state: str, frame: ListedFrame, told: dict) -> None:
        summary = self._summary
        setattr(summary, state, getattr(summary, state) + 1)
        there = state != "failed"
        error = dict(zip(("where", "what", "remedy"), told["error"])) if told["error"] else None
        outcome = Outcome(
            frame=shown(frame.path), state=state, exit=told["exit"],
            result=shown(os.path.join(self._wishes.target, frame.result)) if there else None,
            result_sha256=told["result"] if there else None, width=told.get("width"), height=told.get("height"),
            elapsed_ms=told.get("elapsedMs"), findings=told.get("findings", []), error=error, worker=told["worker"],
            attempts=told["attempts"])
        summary.code = max(summary.code, outcome.exit)
        if state == "failed":
            summary.failures.append(outcome)
        if self._wishes.on_frame:
            self._wishes.on_frame(outcome, summary)


def _engine_module():
    try:
        import cloudpickle
        import distributed
    except ImportError as error:
        raise ArchiveError(WRONG_USE, "", f"there is no Dask: {error}", "install python3-distributed") from error
    cloudpickle.register_pickle_by_value(_worker)
    return distributed


def _test(wishes: Wishes) -> None:
    if wishes.format not in FORMATS:
        raise ArchiveError(WRONG_USE, "", f"there is no format '{wishes.format}'", "png, bmp, pgm, tif or raw")
    if wishes.retries < 0:
        raise ArchiveError(WRONG_USE, "", "--retries should be 0 or more")
    if wishes.jobs is not None and wishes.jobs < 1:
        raise ArchiveError(WRONG_USE, "", "--jobs should be 1 or more")
    if wishes.jobs is not None and wishes.scheduler:
        raise ArchiveError(WRONG_USE, "", "--jobs is for an archive without --scheduler", "start so many workers instead")


def _read_profile(path: bytes) -> bytes:
    """Read once: all workers get these bytes, whatever becomes of the file meanwhile."""
    try:
        with open(path, "rb") as file:
            return file.read()
    except FileNotFoundError as error:
        raise ArchiveError(INPUT, shown(path), "does not exist") from error
    except OSError as error:
        raise ArchiveError(INPUT, shown(path), f"cannot be read: {reason(error)}") from error


def _test_names(wishes: Wishes, frames: list[ListedFrame], manifest: Manifest) -> None:
    """Before the work: names that are taken by somebody else's files."""
    for frame in frames:
        path = os.path.join(wishes.target, frame.result)
        if not os.path.exists(path):
            continue
        for other, what in ((wishes.profile, "the profile"), (frame.path, f"a frame: {shown(path)}")):
            if os.path.exists(other) and os.path.samefile(path, other):
                raise ArchiveError(WRONG_USE, "", f"the result of {shown(frame.path)} would replace {what}",
                                   "name another folder")
        if not wishes.force and not manifest.is_own(frame.result):
            raise ArchiveError(OUTPUT, shown(path), "exists already", "--force replaces it")


def _remove_left(target: bytes) -> None:
    """Folders of archives that were killed: the lock says that none goes on."""
    for leaf in os.listdir(target):
        if leaf.startswith(RUN_MARK):
            shutil.rmtree(os.path.join(target, leaf), ignore_errors=True)


def _make_folder(wishes: Wishes, profile: bytes) -> bytes:
    """The folder of this run among the results, where workers see it and from where a draft becomes a result by a
    rename. It holds the profile as it was when the archive began."""
    folder = os.path.join(wishes.target, RUN_MARK + os.urandom(8).hex().encode())
    path = os.path.join(folder, _worker.PROFILE, os.path.basename(wishes.profile))
    try:
        os.makedirs(os.path.dirname(path))
        with open(path, "wb") as file:
            file.write(profile)
    except OSError as error:
        shutil.rmtree(folder, ignore_errors=True)
        raise ArchiveError(OUTPUT, shown(folder), f"cannot be written: {reason(error)}") from error
    return folder


@contextlib.contextmanager
def _interrupts_for_us_alone():
    """What is started inside does not hear the terminal's interrupt: the coordinator ends it in its turn."""
    is_main = threading.current_thread() is threading.main_thread()  # Python lets no other one set signals
    before = signal.signal(signal.SIGINT, signal.SIG_IGN) if is_main else None
    try:
        yield
    finally:
        if is_main:
            signal.signal(signal.SIGINT, before)


def _try_process(distributed, seconds: float) -> None:
    """Dask waits without end for a worker's process that comes up without Dask, or not at all. So one is started as Dask
    starts its own, and has to come to Dask's part for workers."""
    process = distributed.utils.get_mp_context().Process(target=importlib.import_module, args=("distributed.nanny",),
                                                         daemon=True)
    try:
        process.start()
        process.join(seconds)
        code = process.exitcode
    except (OSError, RuntimeError, AssertionError) as error:
        words = str(error).split("\n")[0] or type(error).__name__
        raise ArchiveError(PROCESSING, "", f"no worker's process can be started: {words}", _FOR_WORKERS) from error
    finally:
        if process.pid is not None and process.exitcode is None:
            process.kill()
            process.join()
    if code is None:
        raise ArchiveError(PROCESSING, "", f"a worker's process has not loaded Dask in {seconds:g} s", _FOR_WORKERS)
    if code != 0:
        raise ArchiveError(PROCESSING, "", f"a worker's process ended with {code} before it had loaded Dask", _FOR_WORKERS)


class _connect:
    """A client of the named scheduler, or of one with workers on this machine for as long as the work takes."""

    def __init__(self, distributed, wishes: Wishes) -> None:
        self._distributed, self._wishes = distributed, wishes
        self._cluster = None

    def __enter__(self):
        address = self._wishes.scheduler
        if not address:
            with _interrupts_for_us_alone():
                _try_process(self._distributed, self._wishes.wait_seconds)
                self._cluster = self._distributed.LocalCluster(
                    n_workers=self._wishes.jobs or os.cpu_count(), threads_per_worker=1, processes=True,
                    host="127.0.0.1", dashboard_address="127.0.0.1:0", silence_logs=50)
        try:
            self._client = self._distributed.Client(self._cluster or address, timeout=10, set_as_default=False)
        except (OSError, ValueError, self._distributed.TimeoutError) as error:
            if self._cluster is not None:
                self._cluster.close(timeout=10)
            raise ArchiveError(PROCESSING, address or "", "no scheduler answers there",
                               "start one by dask-scheduler, or leave --scheduler out for this machine alone") from error
        return self._client

    def __exit__(self, *_) -> None:
        try:
            self._client.close(timeout=10)
        except Exception:  # of a scheduler that has ended; what was done is in the manifest
            pass
        if self._cluster is not None:
            self._cluster.close(timeout=10)
