# SPDX-License-Identifier: Apache-2.0
"""The scripts of examples/archive, as a user runs them; what a Slurm array says to its tasks is said by hand.

VASTRELLINE_TOOL names the built tool.
"""

import hashlib
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SCRIPTS = ROOT / "examples" / "archive"
TOOL = pathlib.Path(os.environ["VASTRELLINE_TOOL"])
LIMIT_SECONDS = 240
NAMES = ["scans/a_96x128.raw", "scans/b c_96x128.raw", "scans/sub/a_96x128.raw", "scans/täglich_96x128.raw",
         "scans/sub/$x '_96x128.raw"]


def hashOf(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


class RecipeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="recipe ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "scans" / "sub").mkdir(parents=True)
        shutil.copy(ROOT / "profiles" / "dental.ini", self.folder / "dental.ini")
        self.expected = {}
        for seed, name in enumerate(NAMES, 1):
            self.tool("phantom", "--out", name, "--size", "96x128", "--seed", seed)
            self.tool("run", name, "--profile", "dental.ini", "--section", "General", "--out", "by-run.png", "--force")
            self.expected[name] = hashOf(self.folder / "by-run.png")
        self.assertEqual(len(set(self.expected.values())), len(NAMES))

    def tool(self, *arguments):
        subprocess.run([TOOL, *map(str, arguments), "--quiet"], check=True, capture_output=True, cwd=self.folder,
                       timeout=LIMIT_SECONDS)

    def script(self, name, *arguments, **environment):
        """Exit code and words."""
        path = f"{TOOL.parent}{os.pathsep}{os.environ['PATH']}"
        done = subprocess.run([SCRIPTS / name, *map(str, arguments)], capture_output=True, text=True, cwd=self.folder,
                              env={**os.environ, "PATH": path, **environment}, check=False, timeout=LIMIT_SECONDS)
        return done.returncode, done.stdout + done.stderr

    def parallel(self):
        return self.script("gnu-parallel.sh", "scans", "results", "dental.ini", "General", "--jobs", "2")

    def requireParallel(self, names):
        for name in names:
            result = self.folder / "results" / (name.removeprefix("scans/") + ".png")
            self.assertEqual(hashOf(result), self.expected[name], name)
        there = [path for path in (self.folder / "results").rglob("*") if path.is_file()]
        self.assertEqual(len(there), len(names) + 1)

    def attempts(self):
        return len((self.folder / "results" / "joblog").read_text().splitlines()) - 1

    @unittest.skipUnless(shutil.which("parallel"), "GNU parallel is not installed")
    def test_parallel_does_all_and_goes_on_with_what_failed(self):
        broken = self.folder / NAMES[2]
        whole = broken.read_bytes()
        broken.write_bytes(b"few")
        code, words = self.parallel()
        self.assertEqual(code, 3, words)
        self.assertIn("the file has 3", words)
        self.requireParallel([name for name in NAMES if name != NAMES[2]])
        broken.write_bytes(whole)
        attempts = self.attempts()
        self.assertEqual(self.parallel(), (0, ""))
        self.requireParallel(NAMES)
        self.assertEqual(self.attempts(), attempts + 1)
        self.assertEqual(self.parallel(), (0, ""))
        self.assertEqual(self.attempts(), attempts + 1)

    def share(self, number, list_file="frames.txt"):
        return self.script("slurm-array.sh", list_file, "results", "dental.ini", "General", SLURM_ARRAY_TASK_ID=str(number + 5),
                           SLURM_ARRAY_TASK_MIN="5", SLURM_ARRAY_TASK_COUNT="3", SLURM_CPUS_PER_TASK="1")

    def check(self):
        return self.script("slurm-check.sh", "frames.txt", "results", 3)

    def list_frames(self, names):
        (self.folder / "frames.txt").write_text("".join(name + "\n" for name in names))

    def requireShares(self, names):
        for line, name in enumerate(names):
            result = self.folder / "results" / f"share-{line % 3}" / name
            self.assertEqual(hashOf(result.with_suffix(".png")), self.expected[name], name)

    def test_all_shares_of_a_slurm_array_make_the_whole(self):
        self.list_frames(NAMES[:4])
        codes = [self.share(number)[0] for number in range(3)]
        self.assertEqual(codes, [0, 0, 0])
        self.requireShares(NAMES[:4])
        self.assertEqual(self.check(), (0, "frames   4: 4 results in results\n"))
        # A new frame at the end of the list leaves the others where they are, and done.
        self.list_frames(NAMES)
        code, words = self.check()
        self.assertEqual(code, 5)
        self.assertIn("results: 1 results are missing; send the array again", words)
        words = [self.share(number)[1] for number in range(3)]
        self.assertEqual(["0 done, 2 done before" in words[0], "1 done, 1 done before" in words[1],
                          "0 done, 1 done before" in words[2]], [True] * 3, words)
        self.requireShares(NAMES)
        self.assertEqual(self.check()[0], 0)

    def test_a_share_that_fails_or_never_ends_is_told(self):
        self.list_frames(NAMES)
        (self.folder / NAMES[0]).write_bytes(b"few")
        (self.folder / NAMES[1]).unlink()
        self.assertEqual(self.share(0)[0], 3)
        code, words = self.share(1)
        self.assertEqual(code, 3)
        self.assertIn(f"{NAMES[1]}: does not exist", words)
        code, words = self.check()
        self.assertEqual(code, 4)
        for text in ("results/share-0: ended with code 3", "results/share-1: ended with code 3",
                     "results/share-2: ended with code 4"):
            self.assertIn(text, words)

    def test_wrong_use_is_told(self):
        for name in ("gnu-parallel.sh", "slurm-array.sh", "slurm-check.sh"):
            code, words = self.script(name)
            self.assertEqual(code, 2)
            self.assertIn("usage: ", words)
        self.list_frames(["../" + self.folder.name + "/" + NAMES[0]])
        code, words = self.share(0)
        self.assertEqual(code, 2)
        self.assertIn("goes up by '..'", words)

    @unittest.skipUnless(shutil.which("shellcheck"), "shellcheck is not installed")
    def test_shellcheck_finds_nothing(self):
        done = subprocess.run(["shellcheck", *sorted(SCRIPTS.glob("*.sh"))], capture_output=True, text=True, check=False,
                              timeout=LIMIT_SECONDS)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
