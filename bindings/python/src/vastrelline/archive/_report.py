# SPDX-License-Identifier: Apache-2.0
"""What is said on the way and at the end, in the words and fields of `vastrelline batch`."""

from __future__ import annotations

import json
import sys
import time

from ._engine import Outcome, Summary
from ._words import CODE_NAMES, ArchiveError, one_line

MOST_SHOWN = 1000  # failures in the table; the lines for programs have all
COMMAND = "archive"


class Report:
    def __init__(self, *, json_lines: bool, quiet: bool) -> None:
        self._json, self._quiet = json_lines, quiet
        self._start = self._last = time.monotonic()
        self._stands = False

    def frame(self, outcome: Outcome, summary: Summary) -> None:
        if self._json:
            print_line({"type": "frame", "frame": outcome.frame, "state": outcome.state, "exit": outcome.exit,
                        "result": outcome.result, "resultSha256": outcome.result_sha256, "width": outcome.width,
                        "height": outcome.height, "elapsedMs": outcome.elapsed_ms, "findings": outcome.findings,
                        "error": outcome.error, "worker": outcome.worker, "attempts": outcome.attempts})
        self._progress(summary)

    def finish(self, summary: Summary, profile: str, section: str, target: str, form: str) -> None:
        self._clear()
        for finding in summary.findings:
            if not self._quiet:
                line = f":{finding['line']}" if finding.get("line") else ""
                rule = f" [{finding['rule']}]" if finding.get("rule") else ""
                say(f"{finding['file']}{line}: {finding['severity']}: {finding['text']}{rule}")
        self._failures(summary)
        if summary.error:
            say(str(summary.error))
        if self._json:
            print_line({**_head(summary.version, summary.code), "type": "summary", "profile": profile, "section": section,
                        "export": summary.export, "chain": summary.chain, "frames": summary.frames, "done": summary.done,
                        "before": summary.before, "failed": summary.failed, "left": summary.left,
                        "seconds": summary.seconds, "results": target, "manifest": summary.manifest,
                        "hashes": summary.hashes, "scheduler": summary.scheduler, "workers": summary.workers,
                        "findings": summary.findings, "error": _error(summary.error)})
            return
        counts = [f"{summary.done} done"]
        counts += [f"{number} {what}" for number, what in ((summary.before, "done before"), (summary.failed, "failed"),
                                                           (summary.left, "left; --resume does them")) if number]
        rate = (summary.done + summary.failed) / max(summary.seconds, 1e-3)
        print_text(f"profile  {profile}, section '{section}'\n"
                   f"export   {summary.export}: {summary.chain}\n"
                   f"workers  {summary.workers} of {summary.scheduler}\n"
                   f"frames   {summary.frames}: {', '.join(counts)}\n"
                   f"time     {summary.seconds:.1f} s, {rate:.1f} frames a second\n"
                   f"results  {target} ({form})\n"
                   f"manifest {summary.manifest}\n"
                   f"hashes   {summary.hashes}\n")

    def fail(self, error: ArchiveError, code: int, version: str) -> None:
        """What ended the work without a summary."""
        self._clear()
        say(str(error))
        if self._json:
            print_line({**_head(version, code), "error": _error(error)})

    def _failures(self, summary: Summary) -> None:
        if not summary.failures:
            return
        width = min(40, max(len(one_line(each.frame)) for each in summary.failures))
        lines = [f"{summary.failed} of {summary.frames} frames failed:"]
        for each in summary.failures[:MOST_SHOWN]:
            error = ArchiveError(each.exit, each.error["where"], each.error["what"], each.error["remedy"])
            what = str(error).removeprefix(each.frame + ": ")
            code = CODE_NAMES.get(each.exit, "processing")
            lines.append(f"  {one_line(each.frame):<{width}}  {code:<10}  {one_line(what)}")
        if summary.failed > MOST_SHOWN:
            lines.append(f"  and {summary.failed - MOST_SHOWN} more")
        for line in lines:
            say(line)

    def _progress(self, summary: Summary) -> None:
        now = time.monotonic()
        is_terminal = sys.stderr.isatty()
        wait = 0.1 if is_terminal and self._stands else 1.0 if is_terminal else 10.0
        if self._quiet or now - self._last < wait:
            return
        ended, worked = summary.frames - summary.left, summary.done + summary.failed
        rate = worked / (now - self._start)
        line = f"frames: {ended} of {summary.frames}, {rate:.1f} a second"
        if worked and summary.left:
            line += f", {summary.left / rate:.0f} s left"
        if summary.failed:
            line += f", {summary.failed} failed"
        print(f"\r\033[K{line}" if is_terminal else line, end="" if is_terminal else "\n", file=sys.stderr, flush=True)
        self._stands, self._last = is_terminal, now

    def _clear(self) -> None:
        if self._stands:
            print("\r\033[K", end="", file=sys.stderr, flush=True)
        self._stands = False


def say(text: str) -> None:
    print(one_line(text), file=sys.stderr, flush=True)


def print_line(fields: dict) -> None:
    print_text(json.dumps(fields, ensure_ascii=False, separators=(",", ":")) + "\n")


def print_text(text: str) -> None:
    # As UTF-8 whatever the locale, as the tool does.
    sys.stdout.buffer.write(text.encode("utf-8", "replace"))
    sys.stdout.flush()


def _head(version: str, code: int) -> dict:
    return {"tool": "vastrelline", "version": version, "command": COMMAND, "exit": code}


def _error(error: ArchiveError | None) -> dict | None:
    return None if error is None else {"where": error.where, "what": error.what, "remedy": error.remedy}
