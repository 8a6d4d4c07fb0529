# SPDX-License-Identifier: Apache-2.0
"""python3 -m vastrelline.archive"""

from __future__ import annotations

import argparse
import logging
import os
import signal
import sys
import warnings

from . import ArchiveError, Summary, run
from ._report import Report
from ._words import CANCELLED, OUTPUT, PROCESSING, WRONG_USE, shown

EXIT_CODES = """\
Exit codes: 0 well, 2 wrong use, 3 input, 4 processing, 5 output, 130 cancelled: the highest of those of the frames
that failed. With --json each frame is a line, and the last line is a summary. The folder of the results has the
manifest of vastrelline batch, by which --resume of either knows what is done, and archive-hashes.jsonl, a line for
each result.
"""
# Options of the tool that decide what a result is, and how long it may take.
VALUES = (("--size", "WxH", "size of raw frames; without it the size in a frame's name, or the sensor's in the profile"),
          ("--window", "LOW:HIGH", "levels that become black and white in a .png"),
          ("--export", "EXPORT", "the library's function"),
          ("--geometry", "TEN,NUMBERS", "how the frame lies on the sensor"),
          ("--sensor-folder", "NAME", "name of the sensor, for ImageProcessing_NE"),
          ("--sensor-mode", "NUMBER", "mode of the sensor, for ImageProcessing_NE"),
          ("--timeout", "SECONDS", "the time that one frame gets"),
          ("--memory", "MIB", "the memory that one frame gets"))
FLAGS = (("--png16", "keep all 16 bits in a .png"),
         ("--mapping", "squeeze the result into the levels 1228 to 2905"),
         ("--spot-correction", "even out the frame's brightness first"),
         ("--force-section", "run also if the section or its settings are missing"))


class Parser(argparse.ArgumentParser):
    """One line that says what is wrong, as the tool does."""

    def error(self, message: str):
        Report(json_lines=False, quiet=False).fail(
            ArchiveError(WRONG_USE, "", message, f"see {self.prog} --help"), WRONG_USE, "")
        raise SystemExit(WRONG_USE)


def main() -> int:
    parser = make_parser()
    wanted = parser.parse_args()
    options = [text for name, _, _ in VALUES if name != "--size" and (value := _of(wanted, name)) is not None
               for text in (name, value)]
    options += [name for name, _ in FLAGS if _of(wanted, name)]
    signal.signal(signal.SIGTERM, _interrupt)
    # What matters of Dask's words is said in ours.
    logging.disable(logging.CRITICAL)
    warnings.simplefilter("ignore")
    report, summary = Report(json_lines=wanted.json, quiet=wanted.quiet), Summary()
    try:
        run(wanted.source, wanted.target, wanted.profile, wanted.section, scheduler=wanted.scheduler, jobs=wanted.jobs,
            retries=wanted.retries, resume=wanted.resume, force=wanted.force, keep_going=wanted.keep_going,
            format=wanted.format, size=wanted.size, options=options, tool=wanted.tool, wait_seconds=wanted.wait,
            on_frame=report.frame, summary=summary)
    except BrokenPipeError:
        # Nobody reads what is done: nothing more is done, and the interpreter shall not try to tell, too.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return OUTPUT
    except ArchiveError as error:
        summary.code = max(summary.code, error.code)
        report.fail(error, summary.code, summary.version)
        return summary.code
    except Exception as error:  # of Dask, mostly: as the tool ends, not by a code that means something else
        summary.code = PROCESSING
        report.fail(ArchiveError(PROCESSING, "", f"failed: {error!r}", "go on with --resume"), PROCESSING, summary.version)
        return PROCESSING
    except KeyboardInterrupt:
        summary.code, summary.error = CANCELLED, ArchiveError(CANCELLED, "", "cancelled")
    kind = wanted.format if not options else f"{wanted.format}, {' '.join(options)}"
    report.finish(summary, wanted.profile, wanted.section, shown(os.fsencode(wanted.target)), kind)
    return summary.code


def make_parser() -> Parser:
    parser = Parser(prog="python3 -m vastrelline.archive", epilog=EXIT_CODES, allow_abbrev=False,
                    formatter_class=argparse.RawDescriptionHelpFormatter,
                    description="Process a folder of frames with one section of a profile, over a Dask cluster.",
                    usage="%(prog)s SOURCE TARGET --profile PROFILE --section SECTION [OPTIONS]")
    parser.add_argument("source", metavar="SOURCE", help="folder of frames, also in folders below it")
    parser.add_argument("target", metavar="TARGET", help="folder of the results; it is made if it is missing")
    parser.add_argument("--profile", required=True, metavar="PROFILE", help="the profile file; it stays as it is")
    parser.add_argument("--section", required=True, metavar="SECTION", help="section of the profile")
    parser.add_argument("--scheduler", metavar="ADDRESS",
                        help="of the cluster, such as tcp://node1:8786; without it workers of this machine")
    parser.add_argument("--jobs", type=int, metavar="NUMBER",
                        help="workers of this machine; without it as many as there are processors")
    parser.add_argument("--format", default="png", metavar="{png,bmp,pgm,tif,raw}",
                        help="what the results are; without it png")
    parser.add_argument("--retries", type=int, default=2, metavar="NUMBER",
                        help="how often a frame that failed is tried again; without it 2")
    parser.add_argument("--wait", type=float, default=300.0, metavar="SECONDS",
                        help="for a worker when there is none; without it 300")
    parser.add_argument("--resume", action="store_true",
                        help="do only what an earlier archive or batch has not done, or what has changed since")
    parser.add_argument("--force", action="store_true", help="begin anew, and replace files that exist")
    parser.add_argument("--keep-going", action="store_true", help="go on after a frame that failed")
    parser.add_argument("--tool", metavar="FILE",
                        help="the tool on the workers; without it their VASTRELLINE_TOOL, or vastrelline")
    for name, kind, text in VALUES:
        parser.add_argument(name, metavar=kind, help=text)
    for name, text in FLAGS:
        parser.add_argument(name, action="store_true", help=text)
    parser.add_argument("--json", action="store_true", help="print lines for programs; words go to standard error")
    parser.add_argument("-q", "--quiet", action="store_true", help="on standard error say nothing but errors")
    return parser


def _of(wanted: argparse.Namespace, name: str):
    return getattr(wanted, name[2:].replace("-", "_"))


def _interrupt(*_) -> None:
    raise KeyboardInterrupt


if __name__ == "__main__":
    sys.exit(main())
