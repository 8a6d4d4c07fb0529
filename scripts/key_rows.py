# SPDX-License-Identifier: Apache-2.0
"""Writes the rows of tools/keys/ from docs/keys.toml, for scripts/make-docs.py."""

import json
import math
import re
import textwrap

HEAD = """// SPDX-License-Identifier: Apache-2.0

// Written by scripts/make-docs.py from docs/keys.toml: edit there.
// clang-format off

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "keys/KeyRows.h"
#include "keys/KeyTable.h"

namespace vastrelline {

namespace {

"""
TAIL = "}  // namespace vastrelline\n"
LOW_SEQUENCE = [8, 12, 2, 3, 3, 11, 10]  # the stages of the positions of section IP_LOWMODE
STAGE_FILES = [(1, 4), (5, 8), (9, 13)]
SHAPES = {"odd": "Odd", "even": "Even", "power of two": "PowerOfTwo", "not 0": "NotZero"}
WIDTH = 100  # of a text's line


# ---- what the table says -----------------------------------------------------------------------------------


def alternatives(sensible):
    """Each as when, is, min, max, shape; a list of values becomes one for each of them."""
    for entry in sensible:
        when = (entry.get("when", ""), tuple(entry.get("is", [])))
        for value in entry.get("values", [None]):
            low = entry.get("min", -math.inf) if value is None else value
            high = entry.get("max", math.inf) if value is None else value
            yield (*when, low, high, entry.get("shape", ""))


def fixed_alternatives(sensible, stage):
    """What holds in the fixed chain, where keys that it does not have stand at their defaults."""
    absent = {key["name"]: key["default"] for key in stage["key"] if key.get("fixed") == ""}
    for when, values, low, high, shape in sensible:
        if when not in absent:
            yield when, values, low, high, shape
        elif absent[when] in values:
            yield "", (), low, high, shape


def range_faults(place, key):
    """The text for people and the form for programs hold the same numbers."""
    sensible = key.get("sensible", []) + key.get("fixed_sensible", [])
    told = {float(number) for number in re.findall(r"-?\d+(?:\.\d+)?", key.get("range", ""))}
    formal = set()
    for when, values, low, high, shape in alternatives(sensible):
        formal |= {float(number) for number in (*values, low, high) if math.isfinite(number)}
        formal |= {0.0} if shape == "not 0" else set()
        if shape and shape not in key["range"]:
            yield f"docs/keys.toml, {place}: the range of {key['name']} does not say {shape!r}"
    if told != formal:
        yield (f"docs/keys.toml, {place}: {key['name']} has the range {key.get('range', '')!r} for people and"
               f" {sorted(formal)} for programs")


def cut_keys(entry, root):
    reader = (root / entry["reader"]).read_text(encoding="utf-8")
    return set(re.findall(r'ReadTruncated\(L"(\w+)"', reader))


def single_keys(entry, root):
    header = (root / entry["reader"]).with_suffix(".h").read_text(encoding="utf-8")
    return set(re.findall(r"\bfloat (\w+) =", header))


def cpp_type(key, type_name, cut, single):
    if key["name"] in cut:
        return "CutNumber"
    if key["name"] in single:
        return "SingleNumber"
    return {"integer": "Integer", "number": "Number", "text": "Text"}[type_name]


def number_text(value):
    return value if isinstance(value, str) else f"{value:.15g}"


# ---- C++ ---------------------------------------------------------------------------------------------------


def literal(text, indent):
    """One string literal, in several lines if it is long."""
    pieces = textwrap.wrap(text, WIDTH, drop_whitespace=False, break_long_words=False,
                           break_on_hyphens=False) or [""]
    assert "".join(pieces) == text, text
    return ("\n" + " " * indent).join(json.dumps(piece, ensure_ascii=False) for piece in pieces)


def number(value):
    if math.isinf(value):
        return ("-" if value < 0 else "") + "std::numeric_limits<double>::infinity()"
    return repr(float(value))


class Rows:
    """The arrays that a file's rows point into."""

    def __init__(self):
        self.lines = []
        self.names = {}

    def array(self, type_name, name, items, width=1):
        if not items:
            return "{}"
        body = (type_name, tuple(items))
        if body in self.names:
            return self.names[body]
        self.names[body] = name
        head = f"constexpr {type_name} {name}[] = {{"
        if width > 1 and len(head) + len(", ".join(items)) < WIDTH + 10:
            self.lines.append(head + ", ".join(items) + "};")
        else:
            self.lines += [head, *(f"    {item}," for item in items), "};"]
        return name

    def texts(self, name, texts, width=2):
        # Each in one line: pieces in a list look like texts with a comma forgotten between them.
        return self.array("std::string_view", name, [json.dumps(text, ensure_ascii=False) for text in texts], width)

    def ranges(self, name, rows):
        items = []
        for when, values, low, high, shape in rows:
            held = self.array("int32_t", f"{name}When{len(items)}", [str(value) for value in values], 2)
            shape_name = SHAPES[shape] if shape else "Any"
            items.append(f'{{"{when}", {held}, {number(low)}, {number(high)}, ValueShape::{shape_name}}}')
        return self.array("SensibleRange", f"{name}Sensible", items, 2)

    def key(self, prefix, record):
        name = record["name"]
        cpp_name = "k" + prefix + "".join(word[0].upper() + word[1:] for word in name.split("_"))
        fixed = self.texts(cpp_name + "Fixed", record.get("fixed_names", []))
        sensible = self.ranges(cpp_name, record["ranges"])
        sync = f'"{record["sync_default"]}"' if "sync_default" in record else "std::nullopt"
        effect = "true" if record["effect"] else "false"
        return [f'{{"{name}", KeyType::{record["cpp_type"]}, "{record["default_text"]}", '
                f'"{record["empty_text"]}", {record["stage"]}, {effect}, {fixed},',
                f'     {literal(record["range"], 5)}, {sensible},',
                f'     {literal(record["meaning"], 5)},',
                f'     {literal(record["look"], 5)}, {sync}}}']

    def keys(self, prefix, records):
        return self.array("Key", f"k{prefix}Keys", ["\n".join(self.key(prefix, record)) for record in records])


def record_of(key, **fields):
    record = {"range": "", "meaning": "No effect.", "look": "", "effect": True} | key | fields
    record.setdefault("default_text", number_text(key["default"]))
    record.setdefault("empty_text", record["default_text"])
    return record


def stage_records(stage, root):
    cut, single, unused = cut_keys(stage, root), single_keys(stage, root), stage.get("no_effect", [])
    for key in stage["key"]:
        fixed = key.get("fixed", key["name"]) if stage["fixed_switch"] else ""
        yield record_of(key, stage=stage["number"], effect=key["name"] not in unused,
                        fixed_names=fixed.split(", ") if fixed else [],
                        cpp_type=cpp_type(key, key["type"], cut, single),
                        ranges=list(alternatives(key.get("sensible", []))))


def stage_lines(rows, stage, root):
    name = stage["name"][0].upper() + stage["name"][1:]
    in_fixed, dumps, curves = bool(stage["fixed_switch"]), stage["dumps"], stage.get("curves", [])
    lists = [("Notes", stage.get("notes", [])), ("Log", stage["log"]), ("FixedLog", stage["fixed_log"]),
             ("Dumps", dumps), ("FixedDumps", stage.get("fixed_dumps", dumps) if in_fixed else []),
             ("Curves", curves), ("FixedCurves", stage.get("fixed_curves", curves) if in_fixed else []),
             ("Switches", stage["fixed_switch"])]
    names = [rows.texts(f"k{name}{part}", texts) for part, texts in lists]
    keys = rows.keys(name, list(stage_records(stage, root)))
    look, text = " ".join(stage["look"].split()), stage["text"].strip()
    return "\n".join([f'{{{stage["number"]}, "{stage["name"]}", "{stage["title"]}", "{stage["page"]}",',
                      f'     R"text({text})text",', f"     {literal(look, 5)},", f'     {literal(stage["source"], 5)},',
                      f'     {", ".join(names)}, {keys}}}'])


def finish(rows, functions):
    return HEAD + "\n".join(rows.lines) + "\n\n}  // namespace\n\n" + functions + "\n" + TAIL


def stage_file(stages, first, last, root):
    rows = Rows()
    items = [stage_lines(rows, stage, root) for stage in stages if first <= stage["number"] <= last]
    name = rows.array("Stage", "kStages", items)
    return finish(rows, f"std::span<const Stage> StageRows{first}To{last}() {{ return {name}; }}\n")


def settings_row(rows, prefix, entry, records):
    notes = rows.texts(f"k{prefix}Notes", entry["notes"])
    keys = rows.keys(prefix, records)
    rows.lines += [f"constexpr Settings k{prefix}Settings = {{SettingsGroup::{prefix}, "
                   f'"{entry["title"]}", "{entry["page"]}",',
                   f'    R"text({entry["text"].strip()})text",', f"    {notes}, {keys}}};"]


def common_records(entry, root):
    for key in entry["key"]:
        default = key.get("shown_default", number_text(key["default"]))
        empty = default if key["name"] == "PROCMODE" else number_text("" if key["type"] == "text" else 0)
        yield record_of(key, stage=0, effect=key["name"] not in entry["no_effect"], default_text=default,
                        empty_text=empty, cpp_type=cpp_type(key, key["type"], set(), set()),
                        ranges=list(alternatives(key.get("sensible", []))))


def sensor_records(entry, root):
    single = single_keys(entry, root)
    for key in entry["key"]:
        yield record_of(key, stage=0, cpp_type=cpp_type(key, key["type"], set(), single),
                        ranges=list(alternatives(key.get("sensible", []))))


def fixed_source(row, stages, common):
    """The stage's key or the common setting that a plain key of the fixed chain stands for."""
    stage = next((stage for stage in stages if stage["page"] == row["stage"]), None)
    if stage is None:
        return None, next((key for key in common["key"] if key["name"] == row["name"]), {})
    for key in stage["key"] + stage.get("fixed_key", []):
        if row["name"] in key.get("fixed", key["name"]).split(", "):
            return stage, key
    return stage, {"range": "0 or 1", "sensible": [{"values": [0, 1]}]}  # its switch


def fixed_records(entry, fixed_rows, data):
    common = next(settings for settings in data["settings"] if settings["page"] == "common")
    for row in fixed_rows:
        stage, source = fixed_source(row, data["stage"], common)
        sensible = row.get("sensible", source.get("fixed_sensible", source.get("sensible", [])))
        ranges = list(alternatives(sensible))
        if stage:
            ranges = list(fixed_alternatives(ranges, stage))
        yield record_of(row, stage=stage["number"] if stage else 0, effect=row["name"] not in entry["no_effect"],
                        range=row.get("range", source.get("range", "")),
                        meaning=row["meaning"] or source.get("meaning", "No effect."),
                        look=source.get("look", ""), cpp_type=cpp_type(row, row["type"], set(), set()),
                        ranges=ranges)


def step_keys(switch, stage, fixed_rows):
    """The keys of a step: those of its stage, of one of two steps those that begin as its switch does."""
    names = [row["name"] for row in fixed_rows if row["stage"] == stage["page"]]
    names = [name for name in names if name not in stage["fixed_switch"]]
    if len(stage["fixed_switch"]) > 1:
        names = [name for name in names if name.split("_")[0] == switch.split("_")[0]]
    return names


def step_items(rows, entry, fixed_rows, stages):
    for switch in entry["order"]:
        stage = next((stage for stage in stages if switch in stage["fixed_switch"]), None)
        names = step_keys(switch, stage, fixed_rows) if stage else ["INVERSE_LOGRATIO"]
        keys = rows.texts("k" + switch.title().replace("_", "") + "StepKeys", names)
        cr = "false" if switch in entry["not_in_cr"] else "true"
        yield f'{{"{switch}", {stage["number"] if stage else 0}, {keys}, {cr}}}'


def make_rows(data, fixed_rows, root):
    """The generated files below tools/keys/ by name."""
    by_page = {entry["page"]: entry for entry in data["settings"]}
    files = {f"StageRows{first}To{last}.cpp": stage_file(data["stage"], first, last, root)
             for first, last in STAGE_FILES}
    rows = Rows()
    settings_row(rows, "Common", by_page["common"], list(common_records(by_page["common"], root)))
    files["CommonRows.cpp"] = finish(rows, "const Settings& CommonRows() { return kCommonSettings; }\n")
    rows = Rows()
    settings_row(rows, "Sensor", by_page["sensor"], list(sensor_records(by_page["sensor"], root)))
    files["SensorRows.cpp"] = finish(rows, "const Settings& SensorRows() { return kSensorSettings; }\n")
    rows = Rows()
    settings_row(rows, "Fixed", by_page["fixed"], list(fixed_records(by_page["fixed"], fixed_rows, data)))
    files["FixedRows.cpp"] = finish(rows, "const Settings& FixedRows() { return kFixedSettings; }\n")
    rows = Rows()
    steps = rows.array("FixedStep", "kSteps", list(step_items(rows, by_page["fixed"], fixed_rows, data["stage"])))
    low = rows.array("int32_t", "kLowSequence", [str(number) for number in LOW_SEQUENCE], 2)
    files["ChainRows.cpp"] = finish(rows, f"std::span<const FixedStep> FixedStepRows() {{ return {steps}; }}\n"
                                    f"\nstd::span<const int32_t> LowSequenceRows() {{ return {low}; }}\n")
    return files


def order_faults(data, root):
    """The orders of the table are those of the chains."""
    entry = next(entry for entry in data["settings"] if entry["page"] == "fixed")
    source = (root / "src/chains/FixedStageTable.cpp").read_text(encoding="utf-8")
    steps = re.findall(r"^    \{(&Settings::(\w+)|nullptr), (true|false),", source, re.MULTILINE)
    if [name or "POST_SIGMOID_LUT" for _, name, _ in steps] != entry["order"]:
        yield "docs/keys.toml, fixed: the order is not that of src/chains/FixedStageTable.cpp"
    if not {name for _, name, cr in steps if cr == "false"} <= set(entry["not_in_cr"]):
        yield "docs/keys.toml, fixed: not_in_cr is not that of src/chains/FixedStageTable.cpp"
    source = (root / "src/chains/LowExposureChain.cpp").read_text(encoding="utf-8")
    sequence = re.findall(r"StageId::(\w+)", source[source.index("kLowSequence = {"):source.index("};")])
    names = {stage["number"]: stage["name"].lower() for stage in data["stage"]}
    if [name.lower() for name in sequence] != [names[number] for number in LOW_SEQUENCE]:
        yield "scripts/key_rows.py: the low sequence is not that of src/chains/LowExposureChain.cpp"
