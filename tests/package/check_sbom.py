#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds the bill of materials of a build against what was built.

    check_sbom.py SBOM READER LIBRARY HEADER [TOOL [PAGE]]

The document is whole by the rules of SPDX 2.3 that a reader relies on, its files are these very files, and what it
says is loaded by the library and the tool is what their files say. READER is readelf. For a DLL it is nm: what the
document says is linked in is what the names of its functions say. PAGE is the folder of the page that the tool serves:
the tool holds these very files, and of the packages in them the document names each in its version.
"""

import hashlib
import json
import pathlib
import re
import subprocess
import sys

# Names in the files by which the loader finds what the document calls by its project's name.
LOADED = {
    "glibc": r"lib(c|m|dl|pthread)\.so|ld-linux",
    "libstdc++": r"libstdc\+\+\.so",
    "libgcc": r"libgcc_s\.so",
    "libpng": r"libpng16\.so",
    "libtiff": r"libtiff\.so",
    "vastrelline": r"libvastrelline\.so",
}

# Functions that come from one part only, as a DLL or a program names them, with and without the underscore of 32 bits.
LINKED = {
    "libssp": r"_?__stack_chk_fail",
    "libstdc++": r"_?_ZNSt9exceptionD2Ev",
    "libgcc": r"_?_Unwind_(SjLj_)?RaiseException",
    "winpthreads": r"_?pthread_mutex_lock",
    "mingw-w64": r"_?_pei386_runtime_relocator",
    "libpng": r"_?png_create_read_struct",
    "libtiff": r"_?TIFFClientOpen",
    "zlib": r"_?inflateInit2_",
    "CLI11": r"_?_ZN3CLI3App.*",
    "nlohmann-json": r"_?_ZN8nlohmann.*",
    "Boost": r"_?_ZN5boost4asio.*",
}


def linked(nm, file):
    names = subprocess.run([nm, file], check=True, capture_output=True, text=True).stdout
    return set(re.findall(r" [Tt] (\S+)$", names, re.MULTILINE))


def needed(readelf, file):
    dynamic = subprocess.run([readelf, "-dW", file], check=True, capture_output=True, text=True).stdout
    return re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic)


# Name and version of each package in a page, by the list that its maker wrote.
def packages_in(page):
    text = (pathlib.Path(page) / "licences.txt").read_text(encoding="utf-8")
    return set(re.findall(r"^---- (\S+) ([^,\s]+), ", text, re.MULTILINE))


def main(sbom, reader, library, header, tool=None, page=None):
    document = json.loads(pathlib.Path(sbom).read_text(encoding="utf-8"))
    faults = []

    def expect(truth, text):
        if not truth:
            faults.append(text)

    expect(document["spdxVersion"] == "SPDX-2.3" and document["dataLicense"] == "CC0-1.0", "no SPDX 2.3")
    expect(re.fullmatch(r"\d{4}(-\d\d){2}T\d\d(:\d\d){2}Z", document["creationInfo"]["created"]), "no time")
    expect(re.fullmatch(r"https://[^#\s]+", document["documentNamespace"]), "no namespace")
    elements = document["packages"] + document["files"]
    names = [element["SPDXID"] for element in elements] + [document["SPDXID"]]
    expect(len(set(names)) == len(names), "two elements have one name")
    expect(all(re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", name) for name in names), "a name of other letters")
    for package in document["packages"]:
        for field in ("name", "versionInfo", "downloadLocation", "licenseConcluded", "licenseDeclared"):
            expect(package.get(field), f"{package['SPDXID']} has no {field}")
    for relation in document["relationships"]:
        for end in ("spdxElementId", "relatedSpdxElement"):
            expect(relation[end] in names, f"{relation[end]} is nowhere")

    sums = []
    built = {pathlib.Path(file).resolve().name: pathlib.Path(file).read_bytes() for file in (library, header)}
    for file in document["files"]:
        content = built.pop(file["fileName"].removeprefix("./"), b"")
        told = {each["algorithm"]: each["checksumValue"] for each in file["checksums"]}
        sums.append(hashlib.sha1(content).hexdigest())
        expect(told == {"SHA1": sums[-1], "SHA256": hashlib.sha256(content).hexdigest()}, f"{file['fileName']} differs")
    expect(not built, f"not listed: {', '.join(built)}")
    code = hashlib.sha1("".join(sorted(sums)).encode()).hexdigest()
    expect(document["packages"][0]["packageVerificationCode"]["packageVerificationCodeValue"] == code, "wrong code")

    ids = {package["SPDXID"]: package["name"] for package in document["packages"]}
    def parts_of(name, link):
        return {ids[relation["relatedSpdxElement"]] for relation in document["relationships"]
                if ids.get(relation["spdxElementId"]) == name and relation["relationshipType"] == link}

    told_versions = {(package["name"], package["versionInfo"]) for package in document["packages"]}
    in_page = packages_in(page) if page else set()
    if page:
        expect(in_page, f"{page} names no package")
        for name, version in in_page - told_versions:
            expect(False, f"the page holds {name} {version}, which is not told")
        content = pathlib.Path(tool).read_bytes()
        for part in ("index.html", "app.css", "app.js"):
            expect((pathlib.Path(page) / part).read_bytes() in content, f"{tool} does not hold the page's {part}")
        # Of what is neither loaded nor a library's functions nothing else is told.
        known = LOADED.keys() | LINKED.keys() | {name for name, _ in in_page}
        for name in parts_of("vastrelline-tools", "STATIC_LINK") - known:
            expect(False, f"{name} is told and not in the page")
    for name, file in (("vastrelline", library), ("vastrelline-tools", tool)):
        if file is None or file.endswith((".dll", ".exe")):
            continue
        told = parts_of(name, "DYNAMIC_LINK")
        loaded = needed(reader, file)
        expect(loaded, f"{file} loads nothing, so {reader} was not understood")
        for each in loaded:
            expect(any(re.match(LOADED.get(part, "-"), each) for part in told), f"{name} loads {each}, which is not told")
        for part in told:
            # libgcc is loaded by the standard library where no object asks for it.
            expect(part == "libgcc" or any(re.match(LOADED.get(part, "-"), each) for each in loaded), f"{name} loads no {part}")
    for name, file in (("vastrelline", library), ("vastrelline-tools", tool)):
        if file is None or not file.endswith((".dll", ".exe")):
            continue
        told = parts_of(name, "STATIC_LINK") - {part for part, _ in in_page}
        functions = linked(reader, file)
        expect(told <= LINKED.keys(), f"nobody knows how to find {', '.join(told - LINKED.keys())}")
        for part, pattern in LINKED.items():
            holds = any(re.fullmatch(pattern, each) for each in functions)
            expect(holds <= (part in told), f"{file} holds {part}, which is not told")
            expect((part in told) <= holds, f"{file} holds no {part}")
    for fault in faults:
        print(f"{sbom}: {fault}", file=sys.stderr)
    return len(faults) > 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
