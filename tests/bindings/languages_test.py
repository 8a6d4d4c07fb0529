# SPDX-License-Identifier: Apache-2.0
"""A host in another language against the tool: the same library, the same frames, the same pixels.

    languages_test.py HOST...

HOST is the command of a host of tests/bindings/hosts, without its arguments FOLDER WIDTH HEIGHT. It calls all eight
functions on frame.raw in the folder and leaves results and facts. VASTRELLINE_TOOL names the built tool.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WIDTH, HEIGHT = 96, 128
GEOMETRY = ["--geometry", *map(str, (0, 0, 8, 12, WIDTH, HEIGHT, 0, 0, 0, 0))]
HOST = []


class HostTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.scratch.name) / "Gerät 1"
        cls.folder.mkdir()
        cls.tool("phantom", "--out", cls.folder / "frame.raw", "--size", f"{WIDTH}x{HEIGHT}", "--force")
        for name, kept in (("dental.ini", "täglich.ini"), ("fixed.ini", "fixed.ini"), ("extended.ini", "extended.ini")):
            shutil.copy(ROOT / "profiles" / name, cls.folder / kept)
        done = subprocess.run([*HOST, str(cls.folder), str(WIDTH), str(HEIGHT)], capture_output=True, text=True,
                              encoding="utf-8", errors="replace", check=False)
        if done.returncode:
            raise RuntimeError(f"{' '.join(HOST)} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
        cls.facts = dict(line.split(" ", 1) for line in (cls.folder / "facts.txt").read_text().splitlines())

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    @classmethod
    def tool(cls, *arguments):
        return subprocess.run([os.environ["VASTRELLINE_TOOL"], *map(str, arguments), "--quiet"], check=True,
                              capture_output=True, text=True, encoding="utf-8")

    def byTool(self, profile, section, export, *options, ending=".raw"):
        result = self.folder / f"by_tool{ending}"
        self.tool("run", self.folder / "frame.raw", "--size", f"{WIDTH}x{HEIGHT}", "--profile", self.folder / profile,
                  "--section", section, "--export", export, "--out", result, "--force", *options)
        return result.read_bytes()

    def test_pixels_are_those_of_the_tool(self):
        for file, arguments in (
                ("plain.raw", ("täglich.ini", "General", "ImageProcessing")),
                ("corrected.raw", ("täglich.ini", "General", "ImageProcessing", "--mapping", "--spot-correction")),
                ("s.raw", ("täglich.ini", "LowDose", "ImageProcessingS", *GEOMETRY)),
                ("cr.raw", ("fixed.ini", "Cr", "ImageProcessingCR"))):
            with self.subTest(file):
                raw = (self.folder / file).read_bytes()
                self.assertEqual(len(raw), 2 * WIDTH * HEIGHT)
                self.assertEqual(raw, self.byTool(*arguments))
                self.assertNotEqual(raw, (self.folder / "frame.raw").read_bytes())

    def test_bitmaps_are_those_of_the_tool(self):
        for file, arguments in (
                ("n.bmp", ("täglich.ini", "General", "ImageProcessing_N")),
                ("ns.bmp", ("täglich.ini", "LowDose", "ImageProcessing_NS", *GEOMETRY)),
                ("ne.bmp", ("extended.ini", "General", "ImageProcessing_NE"))):
            with self.subTest(file):
                self.assertEqual((self.folder / file).read_bytes(), self.byTool(*arguments, ending=".bmp"))

    def test_a_frame_is_turned_and_then_mirrored(self):
        frame = (self.folder / "frame.raw").read_bytes()
        # Clockwise and left to right: rows become columns.
        levels = [frame[2 * i:2 * i + 2] for i in range(WIDTH * HEIGHT)]
        expected = b"".join(levels[y * WIDTH + x] for x in range(WIDTH) for y in range(HEIGHT))
        self.assertEqual((self.folder / "turned.raw").read_bytes(), expected)

    def test_the_callers_frame_stays(self):
        self.assertEqual(self.facts["kept"], "yes")

    def test_the_figures_are_those_of_the_decision(self):
        self.assertEqual(self.facts["before"], "0")
        median, total, low, isLow, isRatio = map(int, self.facts["dose"].split())
        self.assertTrue(0 < median < 4096 and 0 < total <= WIDTH * HEIGHT and 0 <= low <= total and isLow in (0, 1))
        self.assertEqual(isRatio, 1)
        self.assertEqual(self.facts["empty"], "nan")

    def test_codes_and_texts_become_errors(self):
        expected = {"profile": "1", "bitmap": "5", "length": "frame", "null": "text", "long": "text",
                    "strange": "text", "pathless": "text text text"}
        self.assertEqual({name: self.facts[name] for name in expected}, expected)

    def test_a_path_of_260_units_is_the_longest(self):
        self.assertEqual(self.facts["border"], "none text")
        self.assertEqual((self.folder / "\U0001F9B7.bmp").read_bytes(), (self.folder / "ns.bmp").read_bytes())


if __name__ == "__main__":
    HOST = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
