# SPDX-License-Identifier: Apache-2.0
"""Archives over a real scheduler and its workers, all of them on the loopback address: nothing lost, nothing done twice,
and the same results and words as of `vastrelline batch`.

VASTRELLINE_TOOL names the built tool. Nothing here depends on how long something takes: what has to happen is waited
for, and the limits only end a test that would hang.
"""

import collections
import contextlib
import fcntl
import hashlib
import json
import logging
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PACKAGE = ROOT / "bindings" / "python" / "src"
sys.path.insert(0, str(PACKAGE))

sys.dont_write_bytecode = True  # the tree stays as it is

from vastrelline import archive  # noqa: E402

TOOL = os.environ.get("VASTRELLINE_TOOL", "")
LIMIT_SECONDS = 240
NO_PAGES = ("--no-dashboard", "--dashboard-address", "127.0.0.1:0")

# Stands in front of the tool. It writes down who had which frame, and does to a frame what its name asks for.
WRAPPER = """#!/bin/sh
if [ "$1" = batch ]; then
    base=$(cat 'BASE')  # each test has a folder of its own: nobody waits for a gate of another one
    printf '%s %s\\n' "$PPID" "${2##*/}" >>"$base/calls"
    case "$2" in
        *gate*) if mkdir "$base/held" 2>/dev/null; then
                    echo "$PPID $$" >"$base/draft" && mv "$base/draft" "$base/waiting"
                    left=6000
                    while [ ! -e "$base/open" ] && [ $left -gt 0 ]; do sleep 0.05; left=$((left - 1)); done
                fi ;;
        *vanish*) rm -f "$2" ;;
        *crash*) kill -9 $$ ;;
        *murder*)
            kill -9 $PPID
            left=6000
            while [ -d "$PWD" ] && [ $left -gt 0 ]; do sleep 0.05; left=$((left - 1)); done
            TOOL "$@"  # when the archive has ended
            touch "$base/late-$$"
            exit 1 ;;
        *full*) trap '' XFSZ; ulimit -f 1 ;;
        *once*) mkdir "$base/tried" 2>/dev/null && exit 7 ;;
    esac
fi
exec TOOL "$@"
"""


def waitFor(what, condition):
    end = time.monotonic() + LIMIT_SECONDS
    while not (found := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"{what} did not come")
        time.sleep(0.02)
    return found


def hashOf(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


def environment(**more):
    return {**os.environ, "PYTHONPATH": str(PACKAGE), "PYTHONDONTWRITEBYTECODE": "1", **more}


class Started:
    """A process with all that it starts, and the proof that none of it is left."""

    def __init__(self, arguments, **options):
        self.process = subprocess.Popen(list(map(str, arguments)), stdin=subprocess.DEVNULL, start_new_session=True,
                                        **options)

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait(LIMIT_SECONDS)

    def end(self):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.communicate(timeout=LIMIT_SECONDS)
        waitFor("the end of a process group", self.isGone)

    def isGone(self):
        try:
            os.killpg(self.process.pid, 0)
        except ProcessLookupError:
            return True
        return False


class Cluster:
    """A scheduler and workers, each a process without a nanny: what is killed stays dead."""

    def __init__(self, folder, **more):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir()
        self.started = []
        file = self.folder / "scheduler.json"
        self.scheduler = self._start("dask_scheduler", "--host", "127.0.0.1", "--port", "0", *NO_PAGES,
                                     "--scheduler-file", file, **more)
        self.address = waitFor("the scheduler", lambda: self._address(file))

    @staticmethod
    def _address(file):
        with contextlib.suppress(OSError, ValueError):
            return json.loads(file.read_text())["address"]
        return None

    def _start(self, program, *arguments, **more):
        number = len(self.started)
        with open(self.folder / f"{program}-{number}.log", "wb") as log:
            started = Started([sys.executable, "-m", f"distributed.cli.{program}", *arguments], stdout=log, stderr=log,
                              env=environment(**more), cwd=self.folder)
        self.started.append(started)
        return started

    def worker(self, tool):
        # Without this package: a worker does not need it.
        return self._start("dask_worker", self.address, "--host", "127.0.0.1", "--nthreads", "1", "--no-nanny",
                           *NO_PAGES, "--local-directory", self.folder / f"local-{len(self.started)}",
                           VASTRELLINE_TOOL=str(tool), PYTHONPATH="")

    def end(self):
        for started in reversed(self.started):
            started.end()


class ArchiveTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.base = pathlib.Path(tempfile.mkdtemp(prefix="archive test "))
        cls.addClassCleanup(shutil.rmtree, cls.base)
        logging.disable(logging.CRITICAL)  # of Dask
        cls.frames = []
        for seed in range(24):
            frame = cls.base / "made" / f"t{seed:02}_96x128.raw"
            frame.parent.mkdir(exist_ok=True)
            cls.tool("phantom", "--out", frame, "--size", "96x128", "--seed", seed + 1)
            cls.frames.append(frame)
        cls.expected = {}  # what the tool's `run` makes of each
        for frame in cls.frames:
            picture = cls.base / "made" / "by-run.raw"
            cls.tool("run", frame, "--profile", ROOT / "profiles/dental.ini", "--section", "General", "--out", picture,
                     "--force")
            cls.expected[frame.name] = hashOf(picture)
        assert len(set(cls.expected.values())) == len(cls.frames)
        (cls.base / "made" / "by-run.raw").unlink()
        cls.wrapper = cls.base / "wrapper"
        cls.wrapper.write_text(WRAPPER.replace("BASE", str(cls.base / "mark of the test")).replace("TOOL", f"'{TOOL}'"))
        cls.wrapper.chmod(0o755)
        cls.cluster = Cluster(cls.base / "cluster")
        cls.addClassCleanup(cls.cluster.end)
        for _ in range(2):
            cls.cluster.worker(cls.wrapper)

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=self.base))
        self.source, self.target = self.folder / "scans", self.folder / "results"
        self.source.mkdir()
        self.profile = shutil.copy(ROOT / "profiles" / "dental.ini", self.folder / "my profile.ini")
        self.mark = self.folder / "mark"  # where the wrapper writes
        self.mark.mkdir()
        self.addCleanup((self.mark / "open").touch)
        (self.base / "mark of the test").write_text(str(self.mark))

    @classmethod
    def tool(cls, *arguments, check=True):
        return subprocess.run([TOOL, *map(str, arguments), "--quiet"], check=check, capture_output=True,
                              timeout=LIMIT_SECONDS)

    def take(self, count, name=None):
        """Frames in the folder: the first ones, the last of them under another name."""
        taken = [shutil.copy(frame, self.source / frame.name) for frame in self.frames[:count]]
        if name:
            os.rename(taken[-1], self.source / name)

    def command(self, *arguments, scheduler=True):
        where = ["--scheduler", self.cluster.address] if scheduler else []
        return [sys.executable, "-m", "vastrelline.archive", self.source, self.target, "--profile", self.profile,
                "--section", "General", "--format", "raw", "--json", *where, *arguments]

    def start(self, *arguments, **more):
        started = Started(self.command(*arguments, **more), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          env=environment())
        self.addCleanup(started.end)
        return started

    def finish(self, started):
        """Exit code, the lines about frames, the summary, the words."""
        out, words = started.process.communicate(timeout=LIMIT_SECONDS)
        lines = [json.loads(line) for line in out.splitlines()]
        waitFor("the end of all that it started", started.isGone)
        return started.process.returncode, lines[:-1], lines[-1] if lines else None, words.decode()

    def run_archive(self, **options):
        """In this process."""
        options = {"scheduler": self.cluster.address, "format": "raw", "wait_seconds": LIMIT_SECONDS, **options}
        return archive.run(options.pop("source", self.source), options.pop("target", self.target),
                           options.pop("profile", self.profile), options.pop("section", "General"), **options)

    def journal(self):
        with contextlib.suppress(OSError):
            return [json.loads(line) for line in (self.target / "batch-manifest.jsonl").read_bytes().splitlines()]
        return []

    def told(self):
        return [line["result"] for line in self.journal() if "result" in line]

    def calls(self):
        """The frames that the tool was started for, with the process that did."""
        with contextlib.suppress(OSError):
            lines = (self.mark / "calls").read_text().splitlines()
            return [tuple(line.split(" ", 1)) for line in lines if not line.endswith("probe.pgm")]
        return []

    def requireResults(self, names):
        """The pixels of `run`, told once, and nothing else in the folder."""
        for name, frame in names.items():
            self.assertEqual(hashOf(self.target / name), self.expected[frame], name)
        lines = [json.loads(line) for line in (self.target / "archive-hashes.jsonl").read_text().splitlines()]
        self.assertEqual([line["result"] for line in lines], sorted(names))
        for line in lines:
            self.assertEqual(line["resultSha256"], self.expected[names[line["result"]]])
            self.assertEqual(line["frameSha256"], hashOf(line["frame"]))
            self.assertEqual(line["profileSha256"], hashOf(self.profile))
        there = {str(path.relative_to(self.target)) for path in self.target.rglob("*") if path.is_file()}
        self.assertEqual(there, {*names, "archive-hashes.jsonl", "batch-manifest.jsonl"})
        self.assertEqual(list(self.target.glob(".*")), [])
        return lines

    def requireError(self, code, text, **options):
        with self.assertRaises(archive.ArchiveError) as raised:
            self.run_archive(**options)
        self.assertIn(text, str(raised.exception))
        self.assertEqual(raised.exception.code, code)

    def test_a_worker_that_is_killed_loses_nothing_and_doubles_nothing(self):
        self.take(7, "gate_96x128.raw")
        for frame in self.frames[7:]:
            shutil.copy(frame, self.source / frame.name)
        names = {frame.name: frame.name for frame in self.frames}
        del names[self.frames[6].name]
        names["gate_96x128.raw"] = self.frames[6].name
        started = self.start()
        worker, shell = map(int, waitFor("the frame in the middle", self.waiting).split())
        # All that this worker has done is told, and some of the others' work, too.
        waitFor("the worker's results", lambda: {frame for process, frame in self.calls() if int(process) == worker}
                - set(self.told()) == {"gate_96x128.raw"})
        waitFor("five results", lambda: len(self.told()) >= 5)
        dead, = (each for each in self.cluster.started if each.process.pid == worker)
        dead.kill()
        os.kill(shell, signal.SIGKILL)  # it was to become the tool, and its worker is gone
        code, lines, summary, words = self.finish(started)
        self.assertEqual((code, words), (0, ""))
        self.assertEqual([line["state"] for line in lines], ["done"] * 24)
        self.assertEqual((summary["done"], summary["failed"], summary["left"], summary["exit"]), (24, 0, 0, 0))
        hashes = self.requireResults(names)
        self.assertEqual(sorted(self.told()), sorted(names))
        calls = collections.Counter(frame for _, frame in self.calls())
        self.assertEqual(calls, {name: 2 if name.startswith("gate") else 1 for name in names})
        self.assertEqual({line["result"]: line["attempts"] for line in hashes}, calls)

        # Once more: all is read, and nothing done.
        before = (self.target / "archive-hashes.jsonl").read_bytes()
        (self.mark / "calls").unlink()
        again = self.run_archive(resume=True)
        self.assertEqual((again.done, again.before, again.code), (0, 24, 0))
        self.assertEqual(self.calls(), [])
        self.assertEqual((self.target / "archive-hashes.jsonl").read_bytes(), before)
        self.cluster.worker(self.wrapper)  # the other tests want two

    def waiting(self):
        with contextlib.suppress(OSError):
            return (self.mark / "waiting").read_text()
        return ""

    def test_a_coordinator_that_is_killed_is_followed_by_another(self):
        self.take(8, "gate_96x128.raw")
        names = {**{frame.name: frame.name for frame in self.frames[:7]}, "gate_96x128.raw": self.frames[7].name}
        started = self.start()
        waitFor("the frame in the middle", self.waiting)
        waitFor("two results", lambda: len(self.told()) >= 2)
        started.kill()
        told = self.told()
        (self.mark / "open").touch()
        self.addCleanup(started.process.communicate)
        code, lines, summary, words = self.finish(self.start("--resume"))
        self.assertEqual((code, words), (0, ""))
        self.assertEqual({line["result"] for line in lines if line["state"] == "before"},
                         {str(self.target / name) for name in told})
        self.assertEqual((summary["done"], summary["before"]), (8 - len(told), len(told)))
        self.requireResults(names)
        calls = collections.Counter(frame for _, frame in self.calls())
        self.assertEqual({calls[name] for name in told}, {1})

    def test_what_has_changed_is_made_anew(self):
        self.take(4)
        self.run_archive()
        (self.target / self.frames[0].name).write_bytes(b"spoilt")
        shutil.copy(self.frames[5], self.source / self.frames[1].name)
        summary = self.run_archive(resume=True)
        self.assertEqual((summary.done, summary.before), (2, 2))
        names = {frame.name: frame.name for frame in self.frames[:4]}
        self.requireResults({**names, self.frames[1].name: self.frames[5].name})
        with open(self.profile, "ab") as file:
            file.write(b"; of no effect\n")
        summary = self.run_archive(resume=True)
        self.assertEqual((summary.done, summary.before), (4, 0))
        summary = self.run_archive(resume=True, section="Endodontic")
        self.assertEqual((summary.done, summary.before), (4, 0))
        self.assertNotEqual(hashOf(self.target / self.frames[0].name), self.expected[self.frames[0].name])
        summary = self.run_archive(force=True)
        self.assertEqual((summary.done, summary.before), (4, 0))

    def test_frames_that_fail_are_told_and_the_others_done(self):
        self.take(3)
        (self.source / "short_96x128.raw").write_bytes(b"few")
        (self.source / "page.png").write_bytes(b"%PDF-1.4 no picture")
        for name in ("vanish", "crash", "full"):
            shutil.copy(self.frames[0], self.source / f"{name}_96x128.raw")
        (self.source / "sub").mkdir()
        shutil.copy(self.frames[0], self.source / "sub" / self.frames[0].name)
        self.target.mkdir()
        (self.target / "sub").write_text("somebody's file")
        code, lines, summary, words = self.finish(self.start("--keep-going", "--retries", "1"))
        self.assertEqual((code, summary["exit"], summary["done"], summary["failed"]), (5, 5, 3, 6))
        failed = {pathlib.Path(line["frame"]).name: line for line in lines if line["state"] == "failed"}
        texts = {"short_96x128.raw": (3, "the file has 3"), "page.png": (3, "PDF"), "vanish_96x128.raw": (3, "does not exist"),
                 "crash_96x128.raw": (4, "was ended by signal 9"), "full_96x128.raw": (5, "cannot be written: File too large"),
                 self.frames[0].name: (5, "cannot be written: ")}
        self.assertEqual(set(failed), set(texts))
        for name, (code, text) in texts.items():
            self.assertEqual(failed[name]["exit"], code, name)
            self.assertIn(text, failed[name]["error"]["what"])
            self.assertEqual(failed[name]["attempts"], 2, name)
            self.assertIsNone(failed[name]["result"])
            self.assertIn(text, words)
        self.assertEqual(failed[self.frames[0].name]["error"]["where"], str(self.target / "sub" / self.frames[0].name))
        self.assertTrue(words.startswith("6 of 9 frames failed:\n"), words)
        (self.target / "sub").unlink()
        self.requireResults({frame.name: frame.name for frame in self.frames[:3]})

    def test_without_keep_going_the_first_failure_ends_it(self):
        self.take(6)
        (self.source / "a_96x128.raw").write_bytes(b"few")
        summary = self.run_archive(retries=0)
        self.assertEqual((summary.code, summary.failed, summary.frames), (3, 1, 7))
        self.assertEqual(summary.done + summary.left, 6)
        self.assertEqual(summary.failures[0].attempts, 1)
        os.unlink(self.source / "a_96x128.raw")
        self.assertEqual(self.run_archive(resume=True).code, 0)
        self.requireResults({frame.name: frame.name for frame in self.frames[:6]})

    def test_a_frame_that_fails_once_is_tried_again(self):
        self.take(2, "once_96x128.raw")
        outcomes = []
        summary = self.run_archive(retries=1, on_frame=lambda outcome, _: outcomes.append(outcome))
        self.assertEqual((summary.code, summary.done), (0, 2))
        self.assertEqual({pathlib.Path(each.frame).name: each.attempts for each in outcomes},
                         {self.frames[0].name: 1, "once_96x128.raw": 2})

    def test_names_are_those_of_batch_which_goes_on_with_the_archive(self):
        raw = os.fsencode(self.source)
        odd = [b"a b_96x128.raw", "täglich_96x128.raw".encode(), b"no\xfftf8_96x128.raw", b"back\\slash_96x128.raw",
               b"line\nend_96x128.raw", b"sub/deep/same.raw", b"pat*[tern_96x128.raw", b"-x_96x128.RAW"]
        (self.source / "sub" / "deep").mkdir(parents=True)
        for name, frame in zip(odd, self.frames):
            shutil.copy(frame, os.path.join(raw, name.replace(b"same", b"same_96x128")))
        self.tool("convert", self.frames[8], self.source / "sub" / "deep" / "same_96x128.pgm")
        self.tool("convert", self.frames[9], self.source / "grey.png", "--png16")
        (self.source / ".hidden").mkdir()
        shutil.copy(self.frames[0], self.source / ".hidden" / "not_96x128.raw")
        outside = self.folder / "outside"
        outside.mkdir()
        shutil.copy(self.frames[10], outside / "linked_96x128.raw")
        (self.source / "linked_96x128.raw").symlink_to(outside / "linked_96x128.raw")
        (self.source / "folder").symlink_to(outside)
        (self.source / "round").symlink_to(self.source)
        (self.source / "broken_96x128.raw").symlink_to(outside / "none.raw")
        self.target = self.source / "results"  # inside of the frames: passed over
        summary = self.run_archive(format="png", options=["--png16"])
        self.assertEqual((summary.code, summary.done), (0, len(odd) + 3), summary.failures)
        batch = ["batch", self.source, "--profile", self.profile, "--section", "General", "--png16", "--json"]
        done = self.tool(*batch, "--out", self.target, "--resume")
        last = json.loads(done.stdout.splitlines()[-1])
        self.assertEqual((last["done"], last["before"]), (0, len(odd) + 3))
        shutil.move(self.target, self.folder / "results")
        self.target = self.folder / "results"
        self.tool(*batch, "--out", self.folder / "by batch")

        def tree(folder):
            folder = os.fsencode(folder)
            return {os.path.relpath(os.path.join(place, leaf), folder): hashOf(os.fsdecode(os.path.join(place, leaf)))
                    for place, _, leaves in os.walk(folder) for leaf in leaves if not leaf.endswith(b".jsonl")}

        self.assertEqual(tree(self.target), tree(self.folder / "by batch"))
        self.assertEqual(len(tree(self.target)), len(odd) + 3)
        # And the other way round: the archive takes what a batch has done.
        summary = self.run_archive(target=self.folder / "by batch", format="png", options=["--png16"], resume=True)
        self.assertEqual((summary.code, summary.done, summary.before), (0, 0, len(odd) + 3))

    def test_what_cannot_be_is_told_before_the_first_frame(self):
        empty = self.folder / "empty"
        empty.mkdir()
        self.requireError(3, f"{empty}: holds no frame; frames end in", source=empty)
        self.requireError(3, "none: does not exist; name a folder of frames", source=self.folder / "none")
        self.requireError(3, "my profile.ini: is no folder", source=self.profile)
        self.take(2)
        self.requireError(2, "the results would go to the folder of the frames", target=self.source)
        self.requireError(3, "none.ini: does not exist", profile=self.folder / "none.ini")
        self.requireError(3, "cannot be read: Is a directory", profile=self.folder)
        self.requireError(2, "did you mean 'General'?", section="Generl")
        self.requireError(2, "there is no format 'jpg'; png, bmp, pgm, tif or raw", format="jpg")
        self.requireError(2, "'9' is no size", size="9")
        self.requireError(4, "cannot start '/no/tool': No such file or directory; install the tool there", tool="/no/tool")
        self.requireError(4, "no scheduler answers there; start one", scheduler="tcp://127.0.0.1:1")
        self.requireError(5, "cannot be written", target=os.path.join(self.profile, "below"))
        self.assertEqual(self.told(), [])
        os.rename(self.profile, self.folder / "moved.ini")
        self.profile = self.folder / "moved.ini"
        (self.target / self.frames[0].name).write_text("somebody's file")
        self.requireError(5, "exists already; --force replaces it", resume=True)
        self.assertEqual((self.target / self.frames[0].name).read_text(), "somebody's file")
        with open(self.target / "batch-manifest.jsonl", "rb") as file:
            fcntl.flock(file, fcntl.LOCK_EX)
            self.requireError(5, "another batch works in this folder; wait for its end", resume=True)
        self.assertEqual(self.run_archive(force=True).code, 0)
        self.requireResults({frame.name: frame.name for frame in self.frames[:2]})
        self.requireError(5, "holds the results of an earlier batch; --resume goes on with it")
        self.assertEqual(self.calls()[2:], [])

    def other_tool(self):
        """The tool with another file of the library."""
        version = subprocess.run([TOOL, "version", "--json"], check=True, capture_output=True, timeout=LIMIT_SECONDS)
        other = self.folder / "other"
        other.mkdir()
        copy = pathlib.Path(shutil.copy(json.loads(version.stdout)["library"]["file"], other / "libvastrelline.so.1"))
        with open(copy, "ab") as file:
            file.write(b"\0")  # behind all that a loader reads
        shell = self.folder / "other-tool"
        shell.write_text(f"#!/bin/sh\nexport LD_LIBRARY_PATH='{other}'\nexec '{self.wrapper}' \"$@\"\n")
        shell.chmod(0o755)
        return shell

    def test_workers_with_different_libraries_do_not_begin(self):
        self.take(2)
        cluster = Cluster(self.folder / "cluster")
        self.addCleanup(cluster.end)
        cluster.worker(self.wrapper)
        cluster.worker(self.other_tool())
        waitFor("both workers", lambda: sum("Registered to" in log.read_text() for log in
                                            cluster.folder.glob("dask_worker-*.log")) == 2)
        self.requireError(4, "has another library or sensor's profile than", scheduler=cluster.address)
        self.assertEqual(self.told(), [])

    def test_a_worker_with_another_library_that_comes_later_leaves_no_result(self):
        self.take(1, "a-gate_96x128.raw")
        for frame in self.frames[1:8]:
            shutil.copy(frame, self.source / frame.name)
        cluster = Cluster(self.folder / "cluster")
        self.addCleanup(cluster.end)
        cluster.worker(self.wrapper)
        started = self.start("--scheduler", cluster.address, "--keep-going", "--retries", "0", scheduler=False)
        waitFor("the first frame", self.waiting)
        with open(self.profile, "ab") as file:
            file.write(b"[General]\nFunctionCount=0\n")  # of no effect on what has begun
        other = cluster.worker(self.other_tool())
        waitFor("a frame of the other", lambda: any(int(process) == other.process.pid for process, _ in self.calls()))
        (self.mark / "open").touch()
        code, lines, summary, words = self.finish(started)
        self.assertEqual((code, summary["done"] + summary["failed"]), (4, 8))
        self.assertIn("has another library or sensor's profile than the others; install the same on all workers", words)
        for line in lines:
            if line["state"] == "done":
                name = pathlib.Path(line["result"]).name
                self.assertEqual(line["resultSha256"], self.expected[name if "gate" not in name else self.frames[0].name])
            else:
                self.assertIn("another library", line["error"]["what"])
                self.assertFalse((self.target / pathlib.Path(line["frame"]).name).exists())

    def test_a_frame_that_kills_its_workers_fails(self):
        self.take(3, "a-murder_96x128.raw")
        cluster = Cluster(self.folder / "cluster", DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES="1")
        self.addCleanup(cluster.end)
        for _ in range(3):
            cluster.worker(self.wrapper)
        summary = self.run_archive(scheduler=cluster.address, keep_going=True, retries=0)
        self.assertEqual((summary.code, summary.done, summary.failed), (4, 2, 1))
        self.assertIn("died while they had it", summary.failures[0].error["what"])
        self.assertEqual(summary.failures[0].attempts, 2)
        waitFor("the tools of the workers that died", lambda: len(list(self.mark.glob("late-*"))) == 2)
        self.requireResults({frame.name: frame.name for frame in self.frames[:2]})

    def test_a_cluster_that_goes_away_is_told(self):
        self.take(3, "gate_96x128.raw")
        cluster = Cluster(self.folder / "cluster")
        self.addCleanup(cluster.end)
        self.requireError(4, "no worker for 0.1 s; start one there and go on with --resume", scheduler=cluster.address,
                          wait_seconds=0.1)
        cluster.worker(self.wrapper)
        started = self.start("--scheduler", cluster.address, "--resume", scheduler=False)
        waitFor("the last frame", self.waiting)
        cluster.scheduler.kill()
        code, _, summary, words = self.finish(started)
        (self.mark / "open").touch()
        self.assertEqual((code, summary["exit"]), (4, 4))
        self.assertIn(f"{cluster.address}: the scheduler is gone; start it again and go on with --resume", words)
        self.assertGreater(summary["left"], 0)
        self.assertEqual(self.run_archive(resume=True).code, 0)
        self.requireResults({**{frame.name: frame.name for frame in self.frames[:2]},
                             "gate_96x128.raw": self.frames[2].name})

    def test_without_a_scheduler_this_machine_does_it(self):
        self.take(3)
        arguments = self.command("--jobs", "2", "--tool", TOOL, scheduler=False)
        started = Started(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment())
        self.addCleanup(started.end)
        code, lines, summary, words = self.finish(started)
        self.assertEqual((code, words), (0, ""))
        self.assertEqual((len(lines), summary["workers"]), (3, 2))
        self.requireResults({frame.name: frame.name for frame in self.frames[:3]})

    def test_workers_without_dask_are_told_before_the_first_frame(self):
        self.take(1)
        call = f"archive.run({str(self.source)!r}, {str(self.target)!r}, {str(self.profile)!r}, 'General', jobs=1)\n"
        lacking = self.folder / "python-without-dask"
        lacking.write_text("#!/bin/sh\nexit 3\n")
        lacking.chmod(0o755)
        for program, code in (
                # Each process that is started runs the script again, and comes to the same line.
                (f"from vastrelline import archive\n{call}", 1),
                ("import multiprocessing\nfrom vastrelline import archive\n"
                 f"multiprocessing.set_executable({str(lacking)!r})\nif __name__ == '__main__':\n    {call}", 3)):
            script = self.folder / "script.py"
            script.write_text(program)
            started = Started([sys.executable, script], stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment())
            self.addCleanup(started.end)
            words = started.process.communicate(timeout=LIMIT_SECONDS)[1].decode()
            self.assertEqual(started.process.returncode, 1)
            self.assertIn(f"ArchiveError: a worker's process ended with {code} before it had loaded Dask; see that ",
                          words.splitlines()[-1])
            self.assertEqual(list(self.target.glob(".*")), [])

    def test_an_interrupt_ends_it_by_its_code(self):
        self.take(3, "gate_96x128.raw")
        started = self.start()
        waitFor("a frame", self.waiting)
        started.process.send_signal(signal.SIGTERM)
        code, _, summary, words = self.finish(started)
        (self.mark / "open").touch()
        self.assertEqual((code, summary["exit"], words), (130, 130, "cancelled\n"))
        self.assertGreater(summary["left"], 0)
        # The worker goes on with the frame that it has. Nobody waits for it, and it leaves nothing.
        waitFor("the end of the tool", lambda: not pathlib.Path(f"/proc/{self.waiting().split()[1]}").exists())
        waitFor("a tidy folder", lambda: not list(self.target.glob(".*")))
        self.assertFalse((self.target / "gate_96x128.raw").exists())

    def test_the_interrupt_of_a_terminal_gives_one_word(self):
        self.take(2, "gate_96x128.raw")
        started = self.start("--jobs", "1", "--tool", self.wrapper, scheduler=False)
        waitFor("a frame", self.waiting)
        os.killpg(started.process.pid, signal.SIGINT)  # to all that it started, too
        started.process.wait(LIMIT_SECONDS)
        (self.mark / "open").touch()
        code, _, summary, words = self.finish(started)
        self.assertEqual((code, summary["exit"], words), (130, 130, "cancelled\n"))
        self.assertEqual(summary["left"], 2 - summary["done"])

    def test_wrong_use_is_one_line(self):
        done = subprocess.run([sys.executable, "-m", "vastrelline.archive", "scans"], capture_output=True, text=True,
                              env=environment(), timeout=LIMIT_SECONDS, check=False)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertRegex(done.stderr, r"^the following arguments are required: .*; see .* --help\n$")

    def test_the_package_stays_importable_without_dask(self):
        program = ("import sys; sys.modules['distributed'] = None\n"
                   "from vastrelline import archive\n"
                   "try:\n    archive.run('s', 't', 'p', 'General')\n"
                   "except archive.ArchiveError as error:\n    print(error.code, error)")
        done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, env=environment(),
                              timeout=LIMIT_SECONDS, check=False)
        self.assertRegex(done.stdout, "^2 there is no Dask: .*; install python3-distributed\n$", done.stderr)


if __name__ == "__main__":
    unittest.main(warnings="ignore")  # of Dask
