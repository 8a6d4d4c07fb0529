# SPDX-License-Identifier: Apache-2.0
"""Finds links and pictures of the pages that lead nowhere."""

import re

LINK = re.compile(r"\]\(([^)\s]+)\)")
CODE = re.compile(r"```.*?```|`[^`\n]*`", re.DOTALL)


def anchors(text):
    """The names that a heading can be linked by: lower case, hyphens for spaces, the rest left out."""
    headings = re.findall(r"^#+ (.+)$", CODE.sub(lambda code: code[0] if "\n" not in code[0] else "", text), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def link_faults(root):
    pages = [root / name for name in ("README.md", "CONTRIBUTING.md", "SECURITY.md", "CHANGELOG.md")]
    for page in [*pages, *sorted((root / "docs").rglob("*.md"))]:
        for target in LINK.findall(CODE.sub("", page.read_text(encoding="utf-8"))):
            if re.match(r"[a-z]+:", target):
                continue
            name, _, anchor = target.partition("#")
            file = page.parent / name if name else page
            if not file.exists():
                yield f"{page.relative_to(root)}: {target} leads nowhere"
            elif anchor and anchor not in anchors(file.read_text(encoding="utf-8")):
                yield f"{page.relative_to(root)}: {target} is no heading of that page"
