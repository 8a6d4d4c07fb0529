# SPDX-License-Identifier: Apache-2.0
"""Draws docs/pictures/chains.svg: the five chains beside each other, their steps from the top."""

COLUMNS = [  # title, what selects it
    ("Configured", "PROCMODE 2"),
    ("Extended", "PROCMODE 2 in", "ImageProcessing_NE"),
    ("Low-exposure", "PROCMODE 3 in", "ImageProcessingS, _NS"),
    ("Fixed", "every other PROCMODE,", "and 3 elsewhere"),
    ("CR", "ImageProcessingCR,", "whatever PROCMODE"),
]
ALL, CONFIGURED, CORNERS = (0, 5), (0, 3), (0, 4)
# Columns, lines of text, kind, name of the dump.
BEFORE = [
    [(CORNERS, ["Spot correction if the host asks for it, exposure curve: on the host's own frame"], "step", "")],
    [(CONFIGURED, ["The sensor's own profile: size, corners, cuts"], "step", "")],
    [((2, 3), ["Was the exposure low?", "SETCLIPBIN"], "choice", "")],
    [(ALL, ["More than 16 bits are brought into 16; cap of saturated pixels (SATURATION_VALUE)"], "step",
      "NN_OriginalImage.raw")],
    [(CORNERS, ["The sensor's rounded corners are filled (INTRAORAL_MASK)"], "step", "")],
    [(CONFIGURED, ["A narrow range is widened (TargetRange)"], "step", "")],
    [(ALL, ["Inversion (INVERSE_INTENSITY)"], "step", "NN_OriginalImage_Invert.raw")],
]
AFTER = [
    [(CORNERS, ["Corners become background (INTRAORAL_MASK)"], "step", "")],
    [(ALL, ["The result"], "step", "NN_Result.raw")],
    [(ALL, ["Backup set (SAVE_BACKUP)"], "step", "")],
    [(CONFIGURED, ["The sensor's values go to section Settings"], "step", "")],
    [(CORNERS, ["Output mapping if the host asks for it; a bitmap from the functions without an output frame"],
      "step", "")],
]
LIST_TEXT = ["The section's stage list:", "FunctionCount,", "NN_Function_Number;", "any order, any number", "of times"]

WIDTH, LEFT, RIGHT, GAP, LINE = 190, 16, 216, 10, 15
FILL = {"step": "#dbe7f3", "choice": "#f6e3b4", "stage": "#dcefdc"}


def stage_rows(data):
    """For each column the blocks of lines that stand where the stages run."""
    titles = {stage["number"]: stage["title"] for stage in data["stage"]}
    by_switch = {switch: stage["title"] for stage in data["stage"] for switch in stage["fixed_switch"]}
    fixed = next(entry for entry in data["settings"] if entry["page"] == "fixed")
    order = [(switch, by_switch[switch]) for switch in fixed["order"] if switch in by_switch]
    order = [(switch, f"{name} or linear" if switch == "POST_SIGMOID_LUT" else name) for switch, name in order]
    low = [f"{position} {titles[number]}" for position, number in enumerate([8, 12, 2, 3, 3, 11, 10])]
    return [
        [LIST_TEXT + ["", "stages 1 to 12"]],
        [LIST_TEXT + ["", "stages 1 to 13:", "HDR, too"]],
        [["Not low:", "the section's stage list,", "stages 1 to 13"], ["Low, keys of IP_LOWMODE:"] + low],
        [["In this order, each", "if its switch is on:"] + [name for _, name in order]],
        [["In this order, each", "if its switch is on:"] +
         [name for switch, name in order if switch not in fixed["not_in_cr"]]],
    ]


def escape(text):
    return text.replace("&", "&amp;").replace("<", "&lt;")


def box(x, y, width, height, lines, kind):
    parts = [f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="5" fill="{FILL[kind]}" stroke="#5b6b7b"/>']
    top = y + (height - LINE * len(lines)) / 2 + 11
    parts += [f'<text x="{x + width / 2:g}" y="{top + LINE * row:g}">{escape(line)}</text>'
              for row, line in enumerate(lines) if line]
    return parts


def dump_mark(x, y, name):
    return [f'<circle cx="{x + 10}" cy="{y}" r="5" fill="#c0392b"/>',
            f'<text x="{x + 22}" y="{y + 4}" class="name">{escape(name)}</text>']


def place(columns):
    first, last = columns
    return LEFT + first * (WIDTH + GAP), (last - first) * (WIDTH + GAP) - GAP


def draw_rows(rows, y):
    parts = []
    for row in rows:
        height = 14 + LINE * max(len(lines) for _, lines, _, _ in row)
        for columns, lines, kind, dump in row:
            x, width = place(columns)
            parts += box(x, y, width, height, lines, kind)
            if dump:
                parts += dump_mark(x + width, y + height // 2, dump)
        y += height + 8
    return parts, y


def draw(data):
    parts, y = [], 34
    for column, (title, *when) in enumerate(COLUMNS):
        x, width = place((column, column + 1))
        parts += [f'<text x="{x + width / 2:g}" y="{y}" class="title">{title}</text>']
        parts += [f'<text x="{x + width / 2:g}" y="{y + 18 + LINE * row}">{line}</text>' for row, line in enumerate(when)]
    # One line down each column joins its steps; the boxes lie over it.
    lines_at = len(parts)
    top = y + 50
    rows, y = draw_rows(BEFORE, top)
    parts += rows
    blocks = stage_rows(data)
    height = max(sum(14 + LINE * len(block) for block in column) + 8 * (len(column) - 1) for column in blocks)
    for index, column in enumerate(blocks):
        x, width = place((index, index + 1))
        block_y, room = y, height - 8 * (len(column) - 1)
        for place_in_column, block in enumerate(column):
            is_last = place_in_column == len(column) - 1
            block_height = room if is_last else 14 + LINE * len(block)
            parts += box(x, block_y, width, block_height, block, "stage")
            block_y, room = block_y + block_height + 8, room - block_height
    x = place((4, 5))[0] + WIDTH
    parts += dump_mark(x, y + height // 2, "after each stage but linear")
    rows, y = draw_rows(AFTER, y + height + 8)
    parts += rows
    joins = []
    for index in range(len(COLUMNS)):
        centre = place((index, index + 1))[0] + WIDTH // 2
        end = y - 20 if index < 4 else y - 20 - 2 * (14 + LINE + 8)
        joins += [f'<line x1="{centre}" y1="{top - 6}" x2="{centre}" y2="{end}" stroke="#5b6b7b" stroke-width="2"/>']
    parts[lines_at:lines_at] = joins
    parts += dump_mark(LEFT, y + 12, "a dump, with SAVE_IMAGE; a number stands for NN")
    full_width, full_height = place(ALL)[0] + place(ALL)[1] + RIGHT, y + 30
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {full_width} {full_height}" width="{full_width}"'
            f' height="{full_height}" role="img" aria-label="The five chains and their steps">')
    style = ("<style>text{font:12px sans-serif;text-anchor:middle;fill:#1b2631}.title{font:bold 16px sans-serif}"
             ".name{text-anchor:start}</style>")
    # A ground of its own: the picture reads the same on a light and on a dark page.
    ground = f'<rect width="{full_width}" height="{full_height}" rx="8" fill="#ffffff"/>'
    return "\n".join([head, style, ground, *parts, "</svg>"]) + "\n"
