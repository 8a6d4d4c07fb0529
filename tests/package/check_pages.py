#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Follows every link and picture of installed pages.

    check_pages.py FOLDER [ROOT]

FOLDER holds them; a link that leads out of ROOT, the prefix or the root of a system, leads nowhere.
"""

import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from doc_links import CODE, LINK, anchors  # noqa: E402


def main(folder, root="/"):
    folder, root = pathlib.Path(folder).resolve(), pathlib.Path(root).resolve()
    links, faults = 0, []
    for page in sorted(folder.rglob("*.md")):
        for target in LINK.findall(CODE.sub("", page.read_text(encoding="utf-8"))):
            if re.match(r"[a-z]+:", target):
                continue
            links += 1
            name, _, anchor = target.partition("#")
            file = (page.parent / name).resolve() if name else page
            if not file.exists() or not file.is_relative_to(root):
                faults.append(f"{page.relative_to(folder)}: {target} leads nowhere")
            elif anchor and anchor not in anchors(file.read_text(encoding="utf-8")):
                faults.append(f"{page.relative_to(folder)}: {target} is no heading of that page")
    if links < 100:
        faults.append(f"{folder}: {links} links are too few to be all pages")
    for fault in faults:
        print(fault, file=sys.stderr)
    return len(faults) > 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
