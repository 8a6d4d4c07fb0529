# SPDX-License-Identifier: Apache-2.0
"""Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image.

    import numpy, vastrelline

    frame = numpy.fromfile("tooth_1300x1668.raw", dtype="<u2").reshape(1668, 1300)
    picture = vastrelline.process(frame, "dental.ini", "General")

A frame is an array of two dimensions, rows from the top, of unsigned 16-bit levels (0 to 4095 at the usual 12
bits). The library's functions change the frame that they get: these work on a copy, unless they are called with
`in_place=True`.

A call reads its profile anew. The configured chain also writes the sensor's values into section Settings of the
profile and, where it is switched on, a log beside it: give it a profile of your own that may be written. Calls of one
process run one after the other, whatever the thread; use processes for several frames at a time.

The library is the file that VASTRELLINE_LIBRARY names in the environment, else the one beside this file, else the
system's. It is loaded with the first call.
"""

from __future__ import annotations

import ctypes
import enum
import functools
import os
import sys
from dataclasses import astuple, dataclass
from pathlib import Path
from typing import NamedTuple, Union

import numpy
import numpy.typing

__all__ = ["Exposure", "Flip", "InvalidFrame", "ProcessingError", "Rotation", "SensorGeometry", "exposure",
           "library_path", "process", "process_cr", "process_s", "rotate", "save_bitmap", "save_bitmap_ne",
           "save_bitmap_s"]

Frame = numpy.typing.NDArray[numpy.uint16]
FilePath = Union[str, bytes, "os.PathLike[str]"]

_MOST_PIXELS = 2**29 - 1
_FILE_NAMES = ["Vastrelline.dll"] if sys.platform == "win32" else ["libvastrelline.so.1"]
_TEXTS = {
    1: "the profile cannot be opened and read: {profile}",
    2: "there is no input",
    3: "there is no output",
    4: "the profile selects a chain that needs a section, and none is named",
    5: "the frame was processed, but the bitmap could not be saved: {bitmap}",
    6: "memory ran out, or the system failed to read the profile: {profile}",
}


class ProcessingError(RuntimeError):
    """The library returned a code other than 0; `code` has it."""

    def __init__(self, function: str, code: int, profile: str = "", bitmap: str = "") -> None:
        text = _TEXTS.get(code, "an unknown code").format(profile=profile, bitmap=bitmap)
        super().__init__(f"{function} returned {code}: {text}")
        self.function = function
        self.code = code


class InvalidFrame(ValueError):
    """What was given is no frame: not of two dimensions, not of 16-bit levels, or too large."""


class Rotation(enum.IntEnum):
    """How `rotate` turns a frame."""

    NONE = 0
    CLOCKWISE = 1
    COUNTERCLOCKWISE = 2
    HALF = 3


class Flip(enum.IntEnum):
    """How `rotate` mirrors a frame, after it was turned."""

    NONE = 0
    LEFT_TO_RIGHT = 1
    TOP_TO_BOTTOM = 2
    BOTH = 3


@dataclass(frozen=True)
class SensorGeometry:
    """How the delivered frame lies on the sensor: pixels of the full sensor frame, but for rotation and flip.

    rotation 0, 1 or 2, flip 0 to 3: how the frame was turned and mirrored. cut_off, cut_off_radius: size of chamfer and
    rounding of both rounded corners, 0 for none. frame_width, frame_height: before anything was cut off at the
    sides, which the last four tell.
    """

    rotation: int
    flip: int
    cut_off: int
    cut_off_radius: int
    frame_width: int
    frame_height: int
    cut_left: int = 0
    cut_top: int = 0
    cut_right: int = 0
    cut_bottom: int = 0


class Exposure(NamedTuple):
    """The figures of the last exposure decision; all zero before the first one."""

    object_median: int
    object_total: int
    low_signal: int
    low_ratio: float
    is_low: bool


class _Geometry(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int32) for name in (
        "Rotation", "Flip", "RCCutOff", "RCCutOffR", "FrameWidth", "FrameHeight", "ImgCutLeft", "ImgCutTop",
        "ImgCutRight", "ImgCutBottom")]


def process(frame: Frame, profile: FilePath, section: str, *, mapping: bool = False, spot_correction: bool = False,
            in_place: bool = False) -> Frame:
    """The enhanced frame, by ImageProcessing. PROCMODE in the section selects the chain.

    mapping           squeezes the levels of the result into 1228 to 2905
    spot_correction   evens out the brightness of the frame first
    in_place          lets the library change `frame` itself, which must be contiguous and writable

    Raises ProcessingError for every code but 0, InvalidFrame, TypeError for a text of another type, ValueError for a
    text with a null character, or one that the code page of the calling thread cannot hold (Windows).
    """
    levels = _input(frame, in_place)
    output = numpy.zeros_like(levels)
    code = _library().ImageProcessing(_pixels(levels), _pixels(output), *_size(levels), _path(profile), _text(section),
                                      int(mapping), int(spot_correction))
    _require("ImageProcessing", code, profile)
    return output


def process_s(frame: Frame, profile: FilePath, section: str, *, geometry: SensorGeometry | None = None,
              mapping: bool = False, spot_correction: bool = False, in_place: bool = False) -> Frame:
    """As `process`, by ImageProcessingS: with the sensor's geometry of the caller in place of the profile's, and with
    the chain that decides whether the exposure was too low (PROCMODE 3). `exposure` has its figures afterwards."""
    levels = _input(frame, in_place)
    output = numpy.zeros_like(levels)
    code = _library().ImageProcessingS(_pixels(levels), _pixels(output), *_size(levels), _path(profile), _text(section),
                                       int(mapping), int(spot_correction), _geometry(geometry))
    _require("ImageProcessingS", code, profile)
    return output


def process_cr(frame: Frame, profile: FilePath, section: str) -> Frame:
    """The enhanced frame of a sensor without rounded corners, by ImageProcessingCR: the fixed chain without its
    pyramid. `frame` is only read."""
    levels = _input(frame, in_place=False)
    output = numpy.zeros_like(levels)
    code = _library().ImageProcessingCR(_pixels(levels), _pixels(output), *_size(levels), _path(profile), _text(section))
    _require("ImageProcessingCR", code, profile)
    return output


def save_bitmap(frame: Frame, profile: FilePath, section: str, bitmap: FilePath, *, mapping: bool = False,
                spot_correction: bool = False, in_place: bool = False) -> None:
    """As `process`, by ImageProcessing_N: the result becomes an 8-bit bitmap file, which replaces one that is there."""
    levels = _input(frame, in_place)
    code = _library().ImageProcessing_N(_pixels(levels), *_size(levels), _path(profile), _text(section), int(mapping),
                                        int(spot_correction), _path(_named(bitmap)))
    _require("ImageProcessing_N", code, profile, bitmap)


def save_bitmap_s(frame: Frame, profile: FilePath, section: str, bitmap: FilePath, *,
                  geometry: SensorGeometry | None = None, mapping: bool = False, spot_correction: bool = False,
                  in_place: bool = False) -> None:
    """As `process_s`, by ImageProcessing_NS: the result becomes a bitmap. A text of more than 260 UTF-16 units counts
    as empty in the library, so that it is refused here."""
    levels = _input(frame, in_place)
    texts = [_utf8(text) for text in (profile, section, _named(bitmap))]
    code = _library().ImageProcessing_NS(_pixels(levels), *_size(levels), texts[0], texts[1], int(mapping),
                                         int(spot_correction), texts[2], _geometry(geometry))
    _require("ImageProcessing_NS", code, profile, bitmap)


def save_bitmap_ne(frame: Frame, profile: FilePath, section: str, bitmap: FilePath, *, sensor_folder: str = "",
                   sensor_mode: int = 0, mapping: bool = False, spot_correction: bool = False,
                   in_place: bool = False) -> None:
    """As `save_bitmap`, by ImageProcessing_NE: for a sensor that the caller names by the folder of its own profile. A
    `sensor_mode` of 2 means a frame of twice the resolution."""
    levels = _input(frame, in_place)
    code = _library().ImageProcessing_NE(_pixels(levels), *_size(levels), _path(profile), _text(section), int(mapping),
                                         int(spot_correction), _path(_named(bitmap)), _text(sensor_folder), sensor_mode)
    _require("ImageProcessing_NE", code, profile, bitmap)


def exposure() -> Exposure:
    """The figures of the last decision about the exposure, by Getdose_ImageInfo: of the last `process_s` or
    `save_bitmap_s` of this process with a PROCMODE of 3. The ratio is not a number where there was no object."""
    median, total, low, is_low = (ctypes.c_int32() for _ in range(4))
    ratio = ctypes.c_double()
    _library().Getdose_ImageInfo(*(ctypes.byref(each) for each in (median, total, low, ratio, is_low)))
    return Exposure(median.value, total.value, low.value, ratio.value, bool(is_low.value))


def rotate(frame: Frame, rotation: Rotation = Rotation.NONE, flip: Flip = Flip.NONE, *, in_place: bool = False) -> Frame:
    """The frame, turned and then mirrored, by RotateImage. After a quarter turn width and height are exchanged.

    With `in_place` the pixels of `frame` change, and the result is a view of them in its new shape.
    """
    levels = _input(frame, in_place)
    # Two calls: after a quarter turn the library's mirror would still take the old width.
    if not _library().RotateImage(_pixels(levels), *_size(levels), int(rotation), 0):
        raise MemoryError("RotateImage had no memory")
    if rotation in (Rotation.CLOCKWISE, Rotation.COUNTERCLOCKWISE):
        levels = levels.reshape(levels.shape[::-1])
    if not _library().RotateImage(_pixels(levels), *_size(levels), 0, int(flip)):
        raise MemoryError("RotateImage had no memory")
    return levels


def library_path() -> str:
    """The file of the library that the calls use, or its name where the system looks for it."""
    named = os.environ.get("VASTRELLINE_LIBRARY")
    if named:
        return named
    beside = [Path(__file__).with_name(name) for name in _FILE_NAMES]
    return next((str(path) for path in beside if path.is_file()), _FILE_NAMES[0])


@functools.lru_cache(maxsize=None)
def _library() -> ctypes.CDLL:
    try:
        library = ctypes.CDLL(library_path())
    except OSError as error:
        raise OSError(f"{error}; name the library's file by VASTRELLINE_LIBRARY") from error
    pixels, number, text, flag = ctypes.POINTER(ctypes.c_uint16), ctypes.c_int32, ctypes.c_char_p, ctypes.c_uint8
    whole, frame = ctypes.POINTER(number), [pixels, number, number, text, text, flag, flag]
    both = [pixels, *frame]
    geometry = ctypes.POINTER(_Geometry)
    for name, result, arguments in (
            ("ImageProcessing", number, both), ("ImageProcessingS", number, [*both, geometry]),
            ("ImageProcessing_N", number, [*frame, text]), ("ImageProcessing_NS", number, [*frame, text, geometry]),
            ("ImageProcessing_NE", number, [*frame, text, text, number]),
            ("ImageProcessingCR", number, both[:6]),
            ("Getdose_ImageInfo", None, [whole, whole, whole, ctypes.POINTER(ctypes.c_double), whole]),
            ("RotateImage", number, [pixels, number, number, number, number])):
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library


def _input(frame: Frame, in_place: bool) -> Frame:
    """The pixels that the library gets: `frame` itself, or a copy of it."""
    if not isinstance(frame, numpy.ndarray) or frame.ndim != 2:
        raise InvalidFrame("a frame is an array of two dimensions, rows from the top")
    if frame.dtype.kind != "u" or frame.dtype.itemsize != 2:
        raise InvalidFrame(f"a frame has unsigned 16-bit levels, not {frame.dtype}")
    if not 0 < frame.size <= _MOST_PIXELS:
        raise InvalidFrame(f"a frame has between 1 and {_MOST_PIXELS} pixels, not {frame.size}")
    if not in_place:
        return numpy.array(frame, dtype=numpy.uint16, order="C", copy=True)
    if not (frame.dtype.isnative and frame.flags.c_contiguous and frame.flags.writeable and frame.flags.aligned):
        raise InvalidFrame("in_place needs a contiguous, writable array in the machine's byte order")
    return frame


def _pixels(levels: Frame):
    return levels.ctypes.data_as(ctypes.POINTER(ctypes.c_uint16))


def _size(levels: Frame) -> tuple[int, int]:
    return levels.shape[1], levels.shape[0]


def _path(path: FilePath) -> bytes:
    """As the library takes it: the code page of Windows, elsewhere the bytes of the name."""
    return _text(os.fspath(path))


def _named(bitmap: FilePath) -> FilePath:
    """The library takes an empty path for "no bitmap": it processes the frame, saves nothing and tells success."""
    if not os.fspath(bitmap):
        raise ValueError("the path of the bitmap is empty")
    return bitmap


def _text(text: str | bytes) -> bytes:
    if not isinstance(text, (str, bytes)):
        raise TypeError(f"a text is needed, not {type(text).__name__}")
    return _without_null(_in_thread_page(os.fsdecode(text)) if sys.platform == "win32" else os.fsencode(text))


class _CodePage(ctypes.Structure):
    """CPINFOEXW of Windows."""

    _fields_ = [("MaxCharSize", ctypes.c_uint32), ("DefaultChar", ctypes.c_uint8 * 2), ("LeadByte", ctypes.c_uint8 * 12),
                ("UnicodeDefaultChar", ctypes.c_uint16), ("CodePage", ctypes.c_uint32),
                ("CodePageName", ctypes.c_uint16 * 260)]


def _in_thread_page(text: str) -> bytes:
    """In the code page that the library reads the texts of this thread by; Python's own "mbcs" is the machine's."""
    thread_page, utf8_page, no_best_fit = 3, 65001, 0x400
    kernel = ctypes.WinDLL("kernel32")
    page = _CodePage(CodePage=thread_page)
    kernel.GetCPInfoExW(thread_page, 0, ctypes.byref(page))
    if page.CodePage == utf8_page:  # which the system converts with other flags
        return text.encode("utf-8")
    wide = text.encode("utf-16-le", "surrogatepass")
    is_cut = ctypes.c_int32()

    def convert(narrow: ctypes.Array | None, size: int) -> int:
        return kernel.WideCharToMultiByte(page.CodePage, no_best_fit, wide, len(wide) // 2, narrow, size, None,
                                          ctypes.byref(is_cut))

    size = convert(None, 0)
    narrow = ctypes.create_string_buffer(max(size, 1))
    if wide and (size <= 0 or is_cut.value or convert(narrow, size) != size or is_cut.value):
        raise ValueError(f"{text!r} has letters outside of the code page; save_bitmap_s takes all")
    return narrow.raw[:size]


def _utf8(text: FilePath) -> bytes:
    """UTF-8 on every system, and short enough for the library. Elsewhere than on Windows a name need be no UTF-8: a byte
    that is no part of it counts there as one unit, as one of Python's surrogates."""
    strange = "strict" if sys.platform == "win32" else "surrogateescape"
    text = os.fspath(text)
    if isinstance(text, str):
        text = text.encode("utf-8", strange)
    if len(text.decode("utf-8", strange).encode("utf-16-le", "surrogatepass")) > 2 * 260:
        raise ValueError("the text has more than 260 characters, which ImageProcessing_NS does not take")
    return _without_null(text)


def _without_null(text: bytes) -> bytes:
    if b"\0" in text:
        raise ValueError("the text has a null character in it")
    return text


def _geometry(geometry: SensorGeometry | None):
    return None if geometry is None else ctypes.byref(_Geometry(*astuple(geometry)))


def _require(function: str, code: int, profile: FilePath, bitmap: FilePath = "") -> None:
    if code:
        raise ProcessingError(function, code, os.fsdecode(profile), os.fsdecode(bitmap))
