#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Measures what every section of the sample profiles does to noise and sharpness, and writes the page about it.

    scripts/noise-and-sharpness.py [--check] TOOL

A step wedge and a slanted edge with known numbers go through each section, `info --measure` looks at the results, and
the numbers become docs/noise-and-sharpness.md and its two plots in docs/pictures/. With --check it writes nothing and
fails if they differ from what TOOL, a built vastrelline, measures now.
"""

import json
import math
import pathlib
import statistics
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE, NOISE_PLOT, EDGE_PLOT = (ROOT / "docs" / name for name in (
    "noise-and-sharpness.md", "pictures/noise.svg", "pictures/sharpness.svg"))
SIZE, NOISE, LOW, HIGH, TOP, STEPS = 512, 24, 512, 3584, 4095, 8
MIDDLE = f"{SIZE // 4},{SIZE // 4},{SIZE // 2},{SIZE // 2}"  # away from the sensor's corners

DEFAULT, S, NE, CR = "ImageProcessing", "ImageProcessingS", "ImageProcessing_NE", "ImageProcessingCR"
SECTIONS = [  # profile, section, export
    ("general.ini", "General", DEFAULT),
    ("dental.ini", "General", DEFAULT), ("dental.ini", "Endodontic", DEFAULT), ("dental.ini", "Periodontal", DEFAULT),
    ("dental.ini", "LowDose", S), ("dental.ini", "LowDoseFullFrame", S),
    ("extended.ini", "General", NE),
    ("fixed.ini", "General", DEFAULT), ("fixed.ini", "Cr", CR),
    *[("stages.ini", name, DEFAULT) for name in (
        "PreContrast", "Stretch", "Clahe", "AdaptiveUnsharp", "AdaptiveSmoothing", "Pyramid", "Median", "Gaussian",
        "Sigmoid", "Gamma", "Linear", "PreProcessing")],
    ("stages.ini", "Hdr", NE),
]

PANEL, GAP, COLUMNS, MARGIN, HEAD, FOOT = 190, 34, 4, 40, 26, 44
INK, PALE, AXIS = "#1b4f8a", "#b0682a", "#888888"


def call(*arguments):
    done = subprocess.run([str(argument) for argument in arguments], capture_output=True, text=True, check=False)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, arguments))}\n{done.stderr}")
    return done.stdout


class Bench:
    """The two phantoms in a folder of their own, and what sections make of them."""

    def __init__(self, tool, folder):
        self.tool, self.folder = tool, folder
        self.wedge, self.edge = folder / "wedge.png", folder / "edge.png"
        common = ("--size", f"{SIZE}x{SIZE}", "--noise", NOISE, "--low", LOW, "--high", HIGH, "--quiet")
        call(tool, "phantom", "wedge", "--out", self.wedge, "--steps", STEPS, *common)
        call(tool, "phantom", "edge", "--out", self.edge, *common)

    def measure(self, frame, *options):
        told = json.loads(call(self.tool, "info", frame, "--json", "--measure", *options))
        return told["frames"][0]["measure"]

    def run(self, frame, profile, section, export):
        """The result's file, and by what its levels are multiplied to be levels of 12 bits."""
        isBitmap = export == NE
        result = self.folder / f"result.{'bmp' if isBitmap else 'pgm'}"
        call(self.tool, "run", frame, "--profile", ROOT / "profiles" / profile, "--section", section, "--export", export,
             "--out", result, "--force", "--quiet")
        return result, TOP / 255 if isBitmap else 1

    def noise(self, frame, scale=1):
        """For each step its noise and its difference from the step before, in levels of 12 bits."""
        steps = self.measure(frame, "wedge", "--steps", STEPS)["steps"]
        return [(step["noise"] * scale if step["noise"] is not None else None,
                 step["difference"] * scale if step["difference"] is not None else None) for step in steps]


def stepLevel(step):
    return LOW + (HIGH - LOW) * step / (STEPS - 1)


def summary(before, after, edge):
    """The row of the table: factors of noise and of contrast to noise, half contrast, rise, overshoot."""
    factors = [now / was for (was, _), (now, _) in zip(before, after) if now is not None]
    ratios = []
    for step in range(1, STEPS):
        (wasBefore, _), (was, wasStep) = before[step - 1], before[step]
        (nowBefore, _), (now, nowStep) = after[step - 1], after[step]
        if now and nowBefore:
            ratios.append((abs(nowStep) / math.hypot(now, nowBefore)) / (abs(wasStep) / math.hypot(was, wasBefore)))
    return (statistics.median(factors) if factors else None, statistics.median(ratios) if ratios else None,
            edge["mtf50"], edge["risePixels"], edge["overshoot"])


def number(value, digits):
    return "-" if value is None else f"{value:.{digits}f}"


def panel(index, title, subtitle, marks):
    """A plot's frame and what stands in it."""
    left = MARGIN + index % COLUMNS * (PANEL + GAP)
    top = HEAD + 30 + index // COLUMNS * (PANEL + GAP + 30)
    return (f'<g transform="translate({left} {top})"><text y="-18" class="title">{title}</text>'
            f'<text y="-5" class="small">{subtitle}</text>'
            f'<rect width="{PANEL}" height="{PANEL - 30}" fill="none" stroke="{AXIS}"/>{marks}</g>\n')


def line(points, width, height, highest, colour, dash=""):
    """A line through (share of the width, value); where there is no value it is broken."""
    parts, isOpen = [], False
    for share, value in points:
        if value is None:
            isOpen = False
            continue
        y = height * (1 - min(value, highest) / highest)
        parts.append(f"{'L' if isOpen else 'M'}{share * width:.1f} {y:.1f}")
        isOpen = True
    return f'<path d="{" ".join(parts)}" fill="none" stroke="{colour}" stroke-width="1.8"{dash}/>'


def ticks(highest, step, lastX, stepX, unitsX):
    height, out = PANEL - 30, []
    value = 0
    while value <= highest + 1e-9:
        y = height * (1 - value / highest)
        out.append(f'<text x="-4" y="{y + 3:.1f}" class="tick end">{value:g}</text>')
        if 0 < value < highest:
            out.append(f'<path d="M0 {y:.1f}H{PANEL}" stroke="{AXIS}" stroke-width="0.3"/>')
        value += step
    at = 0
    while at <= lastX + 1e-9:
        out.append(f'<text x="{PANEL * at / lastX:.1f}" y="{height + 12}" class="tick middle">{at:g}</text>')
        at += stepX
    out.append(f'<text x="{PANEL / 2}" y="{height + 24}" class="tick middle">{unitsX}</text>')
    return "".join(out)


def svg(caption, panels):
    rows = math.ceil(len(panels) / COLUMNS)
    width = MARGIN + COLUMNS * (PANEL + GAP)
    height = HEAD + 30 + rows * (PANEL + GAP + 30) - FOOT
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
            f'height="{height}" font-family="sans-serif" role="img" aria-label="{caption}">\n'
            "<style>.title{font-size:12px;font-weight:bold}.small{font-size:10px;fill:#555}"
            ".tick{font-size:9px;fill:#444}.end{text-anchor:end}.middle{text-anchor:middle}</style>\n"
            f'<rect width="{width}" height="{height}" fill="#ffffff"/>\n'
            f'<text x="{MARGIN}" y="18" font-size="13">{caption}</text>\n' + "".join(panels) + "</svg>\n")


def page(frameRow, rows):
    table = "\n".join(
        f"| {profile} | {section} | {number(noise, 2)} | {number(ratio, 2)} | {number(half, 3)} | {number(rise, 2)} | "
        f"{number(None if over is None else 100 * over, 1)} |"
        for profile, section, (noise, ratio, half, rise, over) in rows)
    return PAGE_TEXT.replace("@TABLE@", table).replace("@FRAME@", frameRow)


PAGE_TEXT = f"""# What the sample sections do to noise and sharpness

<!-- Written by scripts/noise-and-sharpness.py from runs of the library: change it there. -->

Two phantoms went through every section of the sample [profiles](../profiles): a wedge of {STEPS} steps and an edge 5
degrees off the vertical, both from level {LOW} to {HIGH} with noise of {NOISE} levels, the edge blurred by 0.7 pixels.
`vastrelline info --measure` looked at the results. The same for a profile of your own:

```
vastrelline phantom wedge --out wedge.png --noise {NOISE}
vastrelline run wedge.png --profile P.ini --section S --out result.pgm
vastrelline info result.pgm --measure wedge
```

| Profile | Section | Noise, times | Contrast to noise, times | Half contrast, cycles per pixel | 10 to 90 %, pixels | Overshoot, % |
|---|---|---|---|---|---|---|
@FRAME@
@TABLE@

- **Noise, times**: the standard deviation in the steps of the result, over that in the frame; the median of the steps.
  A section that spreads the levels multiplies noise and contrast alike, so look at the next column, too.
- **Contrast to noise, times**: the difference of two neighbouring steps over their noise, compared with the frame.
  Above 1 small differences are easier to see than before, below 1 harder. A section that treats a step as an edge and
  hardens it counts as more contrast here.
- **Half contrast**: the frequency at which fine detail has half of the contrast that coarse detail has; higher is
  sharper. Sections with strong sharpening lift coarse detail as well.
- **10 to 90 %**: how wide the edge is in the result; smaller is sharper.
- **Overshoot**: how far the result goes beyond both sides of the edge, in shares of its height: the rim that too much
  sharpening leaves. Where the levels end at the edge's sides it is cut off and seems small.

A dash: nothing to measure, since the result has no noise there (its levels are cut off) or no such edge.

LowDose and LowDoseFullFrame do what General does with a frame of good exposure, as these are. Chains are not linear: an
edge of another height or in other noise gives other numbers. They compare sections with each other; they are no data of
a sensor.

## Noise

Each plot shows the noise of the result over the level of the frame; dashed is the frame's own, {NOISE} levels.
Where the line falls to 0 the step's levels are cut off at black or white.

![Noise of the result over the frame's level, a plot for each section](pictures/noise.svg)

## Sharpness

Each plot shows how much contrast the edge has left at each frequency, coarse detail on the left; dashed is the frame's.

![Modulation over frequency, a plot for each section](pictures/sharpness.svg)

Methods: noise by the median variance of small blocks without their plane; the edge after ISO 12233, by
S. E. Reichenbach, S. K. Park, R. Narayanswamy: Characterizing digital image acquisition devices. Optical Engineering
30, 1991.
"""


def curve(edge):
    return [(point["cyclesPerPixel"] / 0.5, point["modulation"]) for point in edge["mtf"]
            if point["cyclesPerPixel"] <= 0.5 + 1e-9]


def make(tool):
    """The texts of the page and of its two plots, by file."""
    rows, noisePanels, edgePanels = [], [], []
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(tool, pathlib.Path(folder))
        before, rawEdge = bench.noise(bench.wedge), bench.measure(bench.edge, "edge", "--area", MIDDLE)
        frameRow = "| | the frame itself | 1.00 | 1.00 | {} | {} | {} |".format(
            number(rawEdge["mtf50"], 3), number(rawEdge["risePixels"], 2), number(100 * rawEdge["overshoot"], 1))
        height, dash = PANEL - 30, ' stroke-dasharray="4 3"'
        for index, (profile, section, export) in enumerate(SECTIONS):
            after = bench.noise(*bench.run(bench.wedge, profile, section, export))
            edge = bench.measure(bench.run(bench.edge, profile, section, export)[0], "edge", "--area", MIDDLE)
            rows.append((profile, section, summary(before, after, edge)))
            highest, title = 60, f"{profile.removesuffix('.ini')}: {section}"
            # The result is inverted: its steps run the other way, but stand where they stood.
            noisePanels.append(panel(index, title, export, ticks(highest, 20, 4, 1, "level / 1000")
                + line([(stepLevel(step) / 4000, before[step][0]) for step in range(STEPS)], PANEL, height, highest,
                       PALE, dash)
                + line([(stepLevel(step) / 4000, after[step][0]) for step in range(STEPS)], PANEL, height, highest,
                       INK)))
            edgePanels.append(panel(index, title, export,
                ticks(1.5, 0.5, 0.5, 0.1, "cycles per pixel")
                + line(curve(rawEdge), PANEL, height, 1.5, PALE, dash) + line(curve(edge), PANEL, height, 1.5, INK)))
    return {
        PAGE: page(frameRow, rows),
        NOISE_PLOT: svg("Noise of the result, in levels of 12 bits, over the frame's level (dashed: the frame)", noisePanels),
        EDGE_PLOT: svg("Modulation of the edge over frequency (dashed: the frame)", edgePanels),
    }


def main():
    arguments = sys.argv[1:]
    isCheck = arguments[:1] == ["--check"]
    if len(arguments) != 1 + isCheck:
        sys.exit(__doc__)
    made = make(pathlib.Path(arguments[-1]).resolve())
    if not isCheck:
        for path, text in made.items():
            path.write_text(text, encoding="utf-8")
        return
    stale = [path for path, text in made.items() if not path.exists() or path.read_text(encoding="utf-8") != text]
    if stale:
        sys.exit("\n".join(f"{path.relative_to(ROOT)} is not what the library measures now" for path in stale)
                 + "\nrun scripts/noise-and-sharpness.py with the built tool")


if __name__ == "__main__":
    main()
