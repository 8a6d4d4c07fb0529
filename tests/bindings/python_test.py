# SPDX-License-Identifier: Apache-2.0
"""The Python package against the tool: the same library, the same frames, the same pixels.

VASTRELLINE_LIBRARY and VASTRELLINE_TOOL name the built files.
"""

import contextlib
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest
import unittest.mock
import zipfile

import numpy

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "bindings" / "python" / "src"))

sys.dont_write_bytecode = True  # the tree stays as it is

import vastrelline  # noqa: E402

WIDTH, HEIGHT = 96, 128
GEOMETRY = vastrelline.SensorGeometry(0, 0, 8, 12, WIDTH, HEIGHT)


def hashOf(levels):
    return hashlib.sha256(numpy.ascontiguousarray(levels).astype("<u2").tobytes()).hexdigest()


class Kernel32:
    """What the package asks of Windows, with the system's own conditions on the arguments."""

    def __init__(self, page):
        self.page = page

    def GetCPInfoExW(self, identifier, flags, record):
        if identifier != 3 or flags:
            return 0
        record._obj.CodePage = self.page
        return 1

    def WideCharToMultiByte(self, page, flags, wide, length, narrow, size, letter, isCut):
        if page == 65001 or page != self.page or flags != 0x400 or not 2 * length == len(wide) > 0 or letter is not None:
            return 0
        text = wide.decode("utf-16-le", "replace")
        made = text.encode(f"cp{page}", "replace")
        isCut._obj.value = int(made.decode(f"cp{page}") != text)
        if narrow is not None:
            if size < len(made):
                return 0
            narrow[:len(made)] = made
        return len(made)


def windowsOfPage(page):
    """Python as it would be on Windows, on a thread of this code page."""
    stack = contextlib.ExitStack()
    stack.enter_context(unittest.mock.patch.object(sys, "platform", "win32"))
    stack.enter_context(unittest.mock.patch.object(vastrelline.ctypes, "WinDLL", lambda name: Kernel32(page),
                                                   create=True))
    return stack


class BindingTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.file = self.folder / f"tooth_{WIDTH}x{HEIGHT}.raw"
        self.tool("phantom", "--out", self.file, "--size", f"{WIDTH}x{HEIGHT}")
        self.frame = numpy.fromfile(self.file, dtype="<u2").reshape(HEIGHT, WIDTH)
        self.dental = self.profile("dental.ini")
        self.fixed = self.profile("fixed.ini")

    def profile(self, name):
        """A copy that may be written."""
        return shutil.copy(ROOT / "profiles" / name, self.folder / name)

    def tool(self, *arguments):
        subprocess.run([os.environ["VASTRELLINE_TOOL"], *map(str, arguments), "--quiet"], check=True,
                       capture_output=True)

    def byTool(self, ending, profile, section, export, *options):
        """What the tool makes of the same frame."""
        result = self.folder / f"by_tool{ending}"
        self.tool("run", self.file, "--profile", profile, "--section", section, "--export", export, "--out", result,
                  "--force", *options)
        return result.read_bytes()

    def python(self, program, **environment):
        """The program in a process of its own, where the package can be found."""
        environment = {**os.environ, "PYTHONPATH": str(ROOT / "bindings" / "python" / "src"),
                       "PYTHONDONTWRITEBYTECODE": "1", **environment}
        return subprocess.run([sys.executable, "-c", program], env=environment, capture_output=True, text=True,
                              check=False)

    def requirePixels(self, picture, raw):
        self.assertEqual(picture.shape, self.frame.shape)
        self.assertEqual(picture.dtype, numpy.uint16)
        self.assertEqual(hashOf(picture), hashlib.sha256(raw).hexdigest())
        self.assertNotEqual(hashOf(picture), hashOf(self.frame))

    def test_process_gives_the_pixels_of_the_tool(self):
        before = hashOf(self.frame)
        self.requirePixels(vastrelline.process(self.frame, self.dental, "General"),
                           self.byTool(".raw", self.dental, "General", "ImageProcessing"))
        self.requirePixels(
            vastrelline.process(self.frame, self.dental, "General", mapping=True, spot_correction=True),
            self.byTool(".raw", self.dental, "General", "ImageProcessing", "--mapping", "--spot-correction"))
        self.assertEqual(hashOf(self.frame), before)

    def test_process_s_takes_the_geometry_and_leaves_the_exposure(self):
        options = ["--geometry", *map(str, (0, 0, 8, 12, WIDTH, HEIGHT, 0, 0, 0, 0))]
        self.requirePixels(vastrelline.process_s(self.frame, self.dental, "LowDose", geometry=GEOMETRY),
                           self.byTool(".raw", self.dental, "LowDose", "ImageProcessingS", *options))
        figures = vastrelline.exposure()
        self.assertGreater(figures.object_total, 0)
        self.assertLessEqual(figures.object_total, WIDTH * HEIGHT)
        self.assertEqual(figures.low_ratio, figures.low_signal / figures.object_total)
        self.assertGreater(figures.object_median, 0)
        self.assertIsInstance(figures.is_low, bool)

    def test_before_the_first_decision_the_figures_are_zero(self):
        done = self.python("import vastrelline; print(tuple(vastrelline.exposure()))")
        self.assertEqual(done.stdout, "(0, 0, 0, 0.0, False)\n", done.stderr)

    def test_process_cr_only_reads(self):
        before = hashOf(self.frame)
        self.frame.flags.writeable = False
        self.requirePixels(vastrelline.process_cr(self.frame, self.fixed, "Cr"),
                           self.byTool(".raw", self.fixed, "Cr", "ImageProcessingCR"))
        self.assertEqual(hashOf(self.frame), before)

    def test_bitmaps_are_those_of_the_tool(self):
        bitmap = self.folder / "täglich.bmp"
        extended = self.profile("extended.ini")
        for call, profile, section, export, options in (
                (vastrelline.save_bitmap, self.dental, "General", "ImageProcessing_N", ()),
                (vastrelline.save_bitmap_s, self.dental, "LowDose", "ImageProcessing_NS", ()),
                (vastrelline.save_bitmap_ne, extended, "General", "ImageProcessing_NE", ())):
            with self.subTest(export):
                bitmap.unlink(missing_ok=True)
                call(self.frame, profile, section, bitmap)
                self.assertEqual(bitmap.read_bytes(), self.byTool(".bmp", profile, section, export, *options))

    def test_in_place_changes_the_frame(self):
        copy = vastrelline.process(self.frame, self.dental, "General")
        own = numpy.ascontiguousarray(self.frame).astype(numpy.uint16)
        own[0, 0] = 4095  # the exposure curve clips it
        before = own.copy()
        vastrelline.process(own, self.dental, "General", in_place=True)
        self.assertFalse(numpy.array_equal(own, before))
        self.assertEqual(hashOf(vastrelline.process(self.frame, self.dental, "General")), hashOf(copy))

    def test_any_layout_is_copied_and_none_changed_in_place(self):
        expected = hashOf(vastrelline.process(self.frame, self.dental, "General"))
        wide = numpy.zeros((HEIGHT, 2 * WIDTH), dtype=numpy.uint16)
        wide[:, ::2] = self.frame
        for layout in (wide[:, ::2], numpy.asfortranarray(self.frame), self.frame.astype(">u2")):
            self.assertEqual(hashOf(vastrelline.process(layout, self.dental, "General")), expected)
            with self.assertRaisesRegex(vastrelline.InvalidFrame, "contiguous"):
                vastrelline.process(layout, self.dental, "General", in_place=True)

    def test_what_is_no_frame_is_refused(self):
        for frame in (self.frame.astype(numpy.int16), self.frame.astype(float), self.frame.ravel(), [[1, 2]],
                      numpy.zeros((0, 4), dtype=numpy.uint16), None):
            with self.assertRaises(vastrelline.InvalidFrame):
                vastrelline.process(frame, self.dental, "General")
        # 2^29 pixels without the memory: every row is the same one.
        large = numpy.broadcast_to(numpy.zeros(2**15, dtype=numpy.uint16), (2**14, 2**15))
        with self.assertRaisesRegex(vastrelline.InvalidFrame, "between 1 and 536870911"):
            vastrelline.process(large, self.dental, "General")

    def test_codes_are_told_in_words(self):
        with self.assertRaisesRegex(vastrelline.ProcessingError, "ImageProcessing returned 1: .*none.ini") as raised:
            vastrelline.process(self.frame, self.folder / "none.ini", "General")
        self.assertEqual(raised.exception.code, 1)
        with self.assertRaises(vastrelline.ProcessingError) as raised:
            vastrelline.save_bitmap(self.frame, self.dental, "General", self.folder / "no" / "such.bmp")
        self.assertEqual(raised.exception.code, 5)
        with self.assertRaises(vastrelline.ProcessingError) as raised:
            vastrelline.process_cr(self.frame, self.folder, "Cr")
        self.assertEqual(raised.exception.code, 1)

    def test_texts_the_library_would_cut_are_refused(self):
        with self.assertRaisesRegex(ValueError, "null"):
            vastrelline.process(self.frame, self.dental, "Gen\0eral")
        with self.assertRaises(TypeError):
            vastrelline.process(self.frame, self.dental, None)
        with self.assertRaisesRegex(ValueError, "260"):
            vastrelline.save_bitmap_s(self.frame, self.dental, "S" * 261, self.folder / "a.bmp")

    def test_texts_are_counted_as_the_library_does(self):
        for name, units in ((b"a", 1), (b"\xC3\xA4", 1), (b"\xE2\x82\xAC", 1), (b"\xF0\x9F\xA6\xB7", 2), (b"\x80", 1),
                            (b"\xC3", 1), (b"\xE2\x82", 2), (b"\xF0\x9F\xA6", 3), (b"\xF0\x9F\xA6x", 4),
                            (b"\xE0\x9F\xBF", 3), (b"\xED\xA0\x80", 3), (b"\xF4\x90\x80\x80", 4)):
            for length, isTaken in ((259, True), (260, True), (261, False)):
                folder = os.fsencode(self.folder)
                path = folder + b"/" * (length - len(folder) - units) + name
                for bitmap in (path, os.fsdecode(path)):
                    with self.subTest(name=name, length=length, type=type(bitmap)):
                        if isTaken:
                            vastrelline.save_bitmap_s(self.frame, self.dental, "LowDose", bitmap, geometry=GEOMETRY)
                            os.remove(bitmap)  # it is there
                        else:
                            with self.assertRaisesRegex(ValueError, "260"):
                                vastrelline.save_bitmap_s(self.frame, self.dental, "LowDose", bitmap, geometry=GEOMETRY)
                            self.assertFalse(os.path.exists(bitmap))

    def test_a_bitmap_without_a_path_is_refused(self):
        for call in (vastrelline.save_bitmap, vastrelline.save_bitmap_s, vastrelline.save_bitmap_ne):
            for path in ("", b""):
                with self.assertRaisesRegex(ValueError, "path of the bitmap is empty"):
                    call(self.frame, self.dental, "General", path)

    def test_windows_converts_by_the_page_of_the_thread(self):
        for page, text, expected in ((1252, "täglich", b"t\xE4glich"), (1252, "", b""), (932, "歯.bmp", b"\x8E\x95.bmp"),
                                     (65001, "歯🦷", "歯🦷".encode())):
            with self.subTest(page=page), windowsOfPage(page):
                self.assertEqual(vastrelline._path(text), expected)
        for page, text in ((1252, "歯"), (932, "täglich"), (1252, "\uD83E"), (65001, "\uD83E"), (1252, "Gen\0eral")):
            with self.subTest(page=page, refused=text), windowsOfPage(page), self.assertRaises(ValueError):
                vastrelline._path(text)
        with windowsOfPage(1252):
            self.assertEqual(vastrelline._utf8("歯"), "歯".encode())
            for text in (b"\xE2\x82", "\uDCE2"):  # where no file can have such a name
                with self.assertRaises(ValueError):
                    vastrelline._utf8(text)

    def test_rotate_turns_then_mirrors(self):
        frame = numpy.array([[1, 2, 3], [4, 5, 6]], dtype=numpy.uint16)
        turned = {
            (1, 0): [[4, 1], [5, 2], [6, 3]],
            (2, 0): [[3, 6], [2, 5], [1, 4]],
            (3, 0): [[6, 5, 4], [3, 2, 1]],
            (0, 1): [[3, 2, 1], [6, 5, 4]],
            (0, 2): [[4, 5, 6], [1, 2, 3]],
            (0, 3): [[6, 5, 4], [3, 2, 1]],
            (1, 1): [[1, 4], [2, 5], [3, 6]],
            (1, 2): [[6, 3], [5, 2], [4, 1]],
        }
        for (rotation, flip), expected in turned.items():
            result = vastrelline.rotate(frame, vastrelline.Rotation(rotation), vastrelline.Flip(flip))
            self.assertEqual(result.tolist(), expected)
        self.assertEqual(frame.tolist(), [[1, 2, 3], [4, 5, 6]])
        view = vastrelline.rotate(frame, vastrelline.Rotation.CLOCKWISE, in_place=True)
        self.assertTrue(numpy.shares_memory(view, frame))
        self.assertEqual(view.tolist(), turned[1, 0])

    def test_threads_give_the_same_pixels(self):
        expected = hashOf(vastrelline.process(self.frame, self.dental, "General"))
        found = []
        threads = [threading.Thread(target=lambda: found.append(
            hashOf(vastrelline.process(self.frame, self.dental, "General")))) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(found, [expected] * 4)

    def test_a_library_that_is_not_there_is_told(self):
        done = self.python("import vastrelline; vastrelline.exposure()",
                           VASTRELLINE_LIBRARY=str(self.folder / "none.so"))
        self.assertEqual(done.returncode, 1)
        self.assertIn("name the library's file by VASTRELLINE_LIBRARY", done.stderr)

    def test_the_wheel_has_the_library_inside(self):
        project = shutil.copytree(ROOT / "bindings" / "python", self.folder / "project")
        subprocess.run([sys.executable, "-m", "build", "--no-isolation", project], check=True, capture_output=True)
        wheel, = (project / "dist").glob("*.whl")
        self.assertRegex(wheel.name, r"^vastrelline-[0-9a-z.]+-py3-none-linux_")
        zipfile.ZipFile(wheel).extractall(self.folder / "installed")
        done = self.python("import vastrelline.archive; print(vastrelline.library_path(), vastrelline.exposure().is_low)",
                           VASTRELLINE_LIBRARY="", PYTHONPATH=str(self.folder / "installed"))
        inside = self.folder / "installed" / "vastrelline" / "libvastrelline.so.1"
        self.assertEqual(done.stdout, f"{inside} False\n", done.stderr)
        self.assertEqual(inside.read_bytes(), pathlib.Path(os.environ["VASTRELLINE_LIBRARY"]).read_bytes())

    def test_package_and_library_have_one_version(self):
        package = re.search(r'^version = "(.*)"$', (ROOT / "bindings/python/pyproject.toml").read_text(), re.M)[1]
        header = (ROOT / "include" / "vastrelline.h").read_text()
        library = re.search(r'^#define VASTRELLINE_VERSION_STRING "(.*)"$', header, re.M)[1]
        self.assertEqual(package, library.replace("-dev", ".dev0"))


if __name__ == "__main__":
    unittest.main()
