#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes docs/README.md, docs/stages/, docs/settings/, docs/pictures/chains.svg and the rows of tools/keys/ from
docs/keys.toml.

With --check it writes nothing and fails if a page or a file of rows differs from the table, if a range says one
thing to people and another to programs, if the table and the readers of the profile in src/ differ in a key or a
default, if a log word or file name of the table occurs nowhere in src/, if a sample profile holds a key that its
stage does not know, if a stage does not stand alone in profiles/stages.ini, or if a link of a page leads nowhere.
"""

import pathlib
import re
import sys
import tomllib

import chain_picture
import doc_links
import key_rows

ROOT = pathlib.Path(__file__).resolve().parent.parent
GENERATED = "<!-- Written by scripts/make-docs.py from docs/keys.toml: edit there. -->"
SETTINGS_SECTION = "Settings"
LOW_SECTION = "IP_LOWMODE"
LOW_SEQUENCE = key_rows.LOW_SEQUENCE  # the stages of that section's positions
ROWS = "tools/keys"


# ---- pages -------------------------------------------------------------------------------------------------


def shown(value):
    return "empty" if value == "" else str(value)


def code(names):
    return ", ".join(f"`{name}`" for name in names) if names else "none"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return lines + ["| " + " | ".join(row) + " |" for row in rows]


def fixed_name(key):
    name = key.get("fixed", key["name"])
    if not name:
        return "none"
    differs = [str(key[field]) for field in ("fixed_type", "fixed_default") if field in key]
    return code(name.split(", ")) + (f" ({', '.join(differs)})" if differs else "")


def notes_and_no_effect(entry):
    lines = []
    if entry.get("no_effect"):
        lines += ["", "## Keys without effect", ""]
        lines += [f"Read and of no effect: {code(entry['no_effect'])}."]
    if entry.get("notes"):
        lines += ["", "## Notes", ""] + [f"- {note}" for note in entry["notes"]]
    return lines


def stage_page(stage):
    in_fixed = bool(stage["fixed_switch"])
    lines = [f"# {stage['title']}", "", GENERATED, ""]
    lines += [f"Stage number {stage['number']}, `{stage['name']}`.", "", stage["text"].strip()]
    lines += ["", "In the picture: " + " ".join(stage["look"].split())]
    lines += ["", f"![{stage['title']}, before and after](../pictures/stages/{stage['page']}.png)", ""]
    lines += [f"Left before, right after section `{stage['section']}` of [stages.ini](../../profiles/stages.ini),"
              f" which shows the stage alone and strong. {stage['picture']}"]
    lines += ["", f"Source: {stage['source']}", "", "## Keys", ""]
    head = ["Key", "Type", "Default"] + (["Fixed chain"] if in_fixed else [])
    rows = []
    for key in stage["key"]:
        cells = [f"`{key['name']}`", key["type"], str(key["default"])]
        cells += [fixed_name(key)] if in_fixed else []
        unused = key["name"] in stage.get("no_effect", [])
        rows.append(cells + (["", "No effect.", ""] if unused else [key["range"], key["meaning"], key["look"]]))
    for key in stage.get("fixed_key", []):
        cells = [f"`{key['name']}`", key["type"], str(key["default"]), "only there"]
        rows.append(cells + [key["range"], key["meaning"], key["look"]])
    lines += table(head + ["Sensible", "Meaning", "In the picture"], rows)
    lines += ["", "In the configured chain each key carries the stage's position in the list, as in "
              f"`03_{stage['key'][0]['name']}`."]
    if in_fixed:
        lines += [f"The fixed chain runs the stage under {code(stage['fixed_switch'])} and reads plain keys; in"
                  " brackets what differs there."]
    lines += ["", "## What it writes", ""]
    dumps, curves = stage["dumps"], stage.get("curves", [])
    rows = [["Log lines", code(stage["log"]), code(stage["fixed_log"])],
            ["Dumps", code(dumps), code(stage.get("fixed_dumps", dumps) if in_fixed else [])],
            ["Curve files", code(curves), code(stage.get("fixed_curves", curves) if in_fixed else [])]]
    head = ["", "Configured chain", "Fixed chain"]
    lines += table(head, rows) if in_fixed else table(head[:2], [row[:2] for row in rows])
    return lines + notes_and_no_effect(stage)


def settings_keys(settings):
    """The keys of a settings page; the short rows of the fixed chain become records as well."""
    fields = ("name", "type", "default", "stage", "meaning", "range", "sensible")
    return settings.get("key", []) + [dict(zip(fields, row)) for row in settings.get("rows", [])]


def settings_page(settings, stages):
    lines = [f"# {settings['title']}", "", GENERATED, "", settings["text"].strip(), ""]
    titles = {stage["page"]: stage["title"] for stage in stages}
    keys = settings_keys(settings)
    has_sync, has_stages = any("sync_default" in key for key in keys), bool(settings.get("rows"))
    head = ["Key", "Type", "Default"] + (["Written if the sensor lacks it"] if has_sync else [])
    head += ["Stage", "Meaning"] if has_stages else ["Sensible", "Meaning"]
    rows = []
    for key in keys:
        cells = [f"`{key['name']}`", key["type"], key.get("shown_default", shown(key["default"]))]
        cells += [shown(key.get("sync_default", "")).replace("empty", "")] if has_sync else []
        if key["name"] in settings["no_effect"]:
            cells += ["", "No effect."]
        elif has_stages:
            page = key["stage"]
            cells += [f"[{titles[page]}](../stages/{page}.md)" if page else ""]
            cells += [key["meaning"] or "As on the stage's page."]
        else:
            cells += [key["range"], key["meaning"]]
        rows.append(cells)
    return lines + table(head, rows) + notes_and_no_effect(settings)


def index_page(data):
    lines = ["# Profiles: every key", "", GENERATED, "", data["index"]["text"].strip(), "", "## Stages", ""]
    rows = []
    for stage in data["stage"]:
        files = stage["dumps"] + stage.get("curves", [])
        log = " or ".join(f"`{word}`" for word in stage["log"]) or "none"
        rows.append([str(stage["number"]), f"[{stage['title']}](stages/{stage['page']}.md)", f"`{stage['name']}`",
                     log, code(files), code(stage["fixed_switch"])])
    lines += table(["Number", "Stage", "Name", "Log name", "Dumps and curve files", "Switch in the fixed chain"], rows)
    lines += ["", "## Settings", ""]
    lines += [f"- [{entry['title']}](settings/{entry['page']}.md)" for entry in data["settings"]]
    lines += ["", "## Keys without effect", "", "Read, and of no effect on any result:", ""]
    for folder, entry in [("stages", s) for s in data["stage"]] + [("settings", s) for s in data["settings"]]:
        if entry.get("no_effect"):
            lines += [f"- [{entry['title']}]({folder}/{entry['page']}.md): {code(entry['no_effect'])}"]
    return lines + ["", data["index"]["end"].strip()]


def make_pages(data):
    pages = {"README.md": index_page(data)}
    pages |= {f"stages/{stage['page']}.md": stage_page(stage) for stage in data["stage"]}
    pages |= {f"settings/{entry['page']}.md": settings_page(entry, data["stage"]) for entry in data["settings"]}
    files = {name: "\n".join(lines) + "\n" for name, lines in pages.items()}
    return files | {"pictures/chains.svg": chain_picture.draw(data)}


# ---- checks ------------------------------------------------------------------------------------------------


def page_faults(pages):
    for name, text in pages.items():
        path = ROOT / "docs" / name
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            yield f"docs/{name} is not as the table says: run scripts/make-docs.py"
    for path in [*(ROOT / "docs/stages").glob("*.md"), *(ROOT / "docs/settings").glob("*.md")]:
        if path.relative_to(ROOT / "docs").as_posix() not in pages:
            yield f"{path.relative_to(ROOT)} belongs to no row of the table"


def row_faults(files):
    for name, text in files.items():
        path = ROOT / ROWS / name
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            yield f"{ROWS}/{name} is not as the table says: run scripts/make-docs.py"


def range_faults(data):
    for entry in data["stage"] + data["settings"]:
        keys = entry["key"] + entry.get("fixed_key", []) if "number" in entry else settings_keys(entry)
        for key in keys:
            yield from key_rows.range_faults(entry["page"], key)


def default_in_source(key, reader, header):
    """The default as the source has it: written at the call, or in the record that is filled."""
    for pattern, text in ((rf'L"{key}",\s*(-?[\d.]+|L"")\)', reader), (rf"\b{key} = (-?[\d.]+)F?;", header),
                          (rf'L"{key}", &\w+::\w+, (-?\d+),', reader)):
        if found := re.search(pattern, text):
            return "" if found[1] == 'L""' else float(found[1])
    return "" if re.search(rf"std::wstring {key};", header) else None


def misread_keys(reader):
    """The keys that go into a field of another name, and so would get that field's default."""
    for pattern in (r'Read\w*\(L"(?P<key>\w+)", \w+\.(?P<field>\w+)\)', r'L"(?P<key>\w+)", &\w+::(?P<field>\w+)',
                    r'\.(?P<field>\w+) =\s+\w+\.Read\w+\(\s*section, L"(?P<key>\w+)"'):
        yield from (found["key"] for found in re.finditer(pattern, reader) if found["key"] != found["field"])


def reader_faults(entry, keys):
    path = ROOT / entry["reader"]
    if not path.exists():
        yield f"{entry['reader']} does not exist"
        return
    reader = path.read_text(encoding="utf-8")
    header = path.with_suffix(".h").read_text(encoding="utf-8")
    read = set(re.findall(r'L"(\w+)"', reader))
    listed = {key["name"] for key in keys}
    for name in sorted(read - listed):
        yield f"{entry['reader']} reads {name}, which docs/keys.toml does not list"
    for name in sorted(listed - read):
        yield f"docs/keys.toml lists {name}, which {entry['reader']} does not read"
    for key in keys:
        default = default_in_source(key["name"], reader, header)
        if key["name"] in read and default != key["default"]:
            yield f"{key['name']}: default {key['default']!r} in docs/keys.toml, {default!r} in {entry['reader']}"
        written = re.search(rf'L"{key["name"]}", &\w+::\w+, -?\d+, (-?\d+)', reader)
        if (int(written[1]) if written else None) != key.get("sync_default"):
            yield f"{key['name']}: the default that is written differs in docs/keys.toml and {entry['reader']}"
    for name in misread_keys(reader):
        yield f"{entry['reader']} reads {name} into a field of another name"
    for name in sorted(set(entry.get("no_effect", [])) - listed):
        yield f"docs/keys.toml, {entry['page']}: {name} has no effect and no row"


def source_faults(data):
    readers = {entry["reader"] for entry in data["stage"] + data["settings"]}
    for path in sorted((ROOT / "src").glob("stages/*/*Params.cpp")):
        if path.relative_to(ROOT).as_posix() not in readers:
            yield f"{path.relative_to(ROOT)} is the reader of no stage in docs/keys.toml"
    for entry in data["stage"]:
        yield from reader_faults(entry, entry["key"])
    for entry in data["settings"]:
        yield from reader_faults(entry, settings_keys(entry))
    for entry in data["settings"]:
        for key in settings_keys(entry):
            if key.get("meaning") or key["name"] in entry["no_effect"]:
                continue
            stage = next((stage for stage in data["stage"] if stage["page"] == key.get("stage")), {"key": []})
            if key["name"] not in {known["name"] for known in stage["key"] + stage.get("fixed_key", [])}:
                yield f"docs/keys.toml, {entry['page']}: {key['name']} has no meaning"
    sources = "".join(path.read_text(encoding="utf-8") for path in sorted((ROOT / "src").glob("**/*.cpp")))
    for stage in data["stage"]:
        for word in stage["log"] + stage["fixed_log"]:
            if f"\\t: {word} (" not in sources:
                yield f"{stage['page']}: no log line {word} in src/"
        for name in stage["dumps"] + stage.get("fixed_dumps", []) + stage.get("curves", []):
            if 'L"' + name.replace("NN_", "%02d_").split("<")[0] not in sources:
                yield f"{stage['page']}: no file {name} in src/"


def read_profile(path):
    sections, section = {}, None
    for line in path.read_text(encoding="utf-8").splitlines():
        line = line.strip()
        if line.startswith("["):
            section = sections.setdefault(line.strip("[]"), {})
        elif "=" in line and not line.startswith(";"):
            name, value = line.split("=", 1)
            section[name.strip()] = value.strip()
    return sections


def profile_faults(data):
    by_number = {stage["number"]: {key["name"] for key in stage["key"]} for stage in data["stage"]}
    plain = {entry["page"]: {key["name"] for key in settings_keys(entry)} for entry in data["settings"]}
    for path in sorted((ROOT / "profiles").glob("*.ini")):
        for section, keys in read_profile(path).items():
            general = plain["sensor"] if section == SETTINGS_SECTION else plain["common"] | plain["fixed"]
            for name in keys:
                numbered = re.fullmatch(r"(\d{2,})_(\w+)", name)
                if not numbered:
                    known = name in general
                elif section == LOW_SECTION:
                    position = int(numbered[1])
                    known = position < len(LOW_SEQUENCE) and numbered[2] in by_number[LOW_SEQUENCE[position]]
                else:
                    number = int(keys.get(f"{numbered[1]}_Function_Number", 0))
                    known = number in by_number and numbered[2] in by_number[number] | {"Function_Number"}
                    known = known and int(numbered[1]) < int(keys.get("FunctionCount", 0))
                if not known:
                    yield f"profiles/{path.name}, section {section}: {name} is no key of its place"
    alone = read_profile(ROOT / "profiles/stages.ini")
    for stage in data["stage"]:
        keys = alone.get(stage["section"], {})
        if (keys.get("FunctionCount"), keys.get("00_Function_Number")) != ("1", str(stage["number"])):
            yield f"profiles/stages.ini, section {stage['section']}: not {stage['title']} alone"


def main():
    if sys.argv[1:] not in ([], ["--check"]):
        sys.exit("usage: make-docs.py [--check]")
    with open(ROOT / "docs/keys.toml", "rb") as file:
        data = tomllib.load(file)
    pages = make_pages(data)
    fixed = next(entry for entry in data["settings"] if entry["page"] == "fixed")
    rows = key_rows.make_rows(data, settings_keys(fixed), ROOT)
    if sys.argv[1:]:
        faults = [*page_faults(pages), *row_faults(rows), *range_faults(data), *source_faults(data),
                  *key_rows.order_faults(data, ROOT), *profile_faults(data),
                  *doc_links.link_faults(ROOT)]
        for fault in faults:
            print(fault, file=sys.stderr)
        print(f"docs: {len(pages)} pages, {len(faults)} faults")
        sys.exit(1 if faults else 0)
    files = {f"docs/{name}": text for name, text in pages.items()}
    files |= {f"{ROWS}/{name}": text for name, text in rows.items()}
    for name, text in files.items():
        path = ROOT / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
    print(f"docs: {len(pages)} pages and {len(rows)} files of rows written")


if __name__ == "__main__":
    main()
