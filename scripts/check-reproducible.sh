#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Builds the library and the workbench's page once more, elsewhere, and holds them against those in build/: the same
# bytes, whatever the folder, the hour, the time zone, the language and the rights of new files, with the compiler's
# cache or without.
# What is not in build/ yet is built there first. Names the sections that differ and fails if any does.
#
#     scripts/check-reproducible.sh [release] [windows] [aarch64] [windows32]
#
# Without arguments it is release and windows.
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
[[ ${#presets[@]} -gt 0 ]] || presets=(release windows)
scripts/install-dependencies.sh build workbench

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
copy="$scratch/another place/of another depth/vastrelline-copy"
mkdir -p "$copy"
# What is in the tree, committed or not, without what is built in it.
git ls-files -z --cached --others --exclude-standard |
    while IFS= read -r -d '' file; do [[ ! -e "$file" ]] || printf '%s\0' "$file"; done |
    tar --create --null --files-from=- | tar --extract --directory="$copy"

# Sections of two files that differ, or that only one of them has; what lies outside of all sections last.
tellDifference() {
    local one=$1 other=$2 found=0 section
    for section in $(objdump -h "$one" "$other" | awk '$1 ~ /^[0-9]+$/ {print $2}' | sort -u); do
        rm -f "$scratch"/section.*
        objcopy -O binary --set-section-flags "$section=alloc,contents" --only-section "$section" \
            "$one" "$scratch/section.one" 2>/dev/null || true
        objcopy -O binary --set-section-flags "$section=alloc,contents" --only-section "$section" \
            "$other" "$scratch/section.other" 2>/dev/null || true
        cmp -s "$scratch/section.one" "$scratch/section.other" && continue
        [[ -e "$scratch/section.one" || -e "$scratch/section.other" ]] || continue
        echo "    section $section differs"
        found=1
    done
    [[ $found -eq 1 ]] || echo "    all sections are equal: headers, symbols or tables differ"
    cmp "$one" "$other" || true
}

# As another person would build it: the library alone, without what developers switch on.
buildElsewhere() {
    local preset=$1 commit
    commit=$(cat "build/$preset/src/build_note/commit.txt")  # the copy has no repository to ask
    (
        umask 077
        unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER SOURCE_DATE_EPOCH
        export CCACHE_DISABLE=1 TZ=Pacific/Chatham LANG=C LC_ALL=C
        cd "$copy"
        cmake --preset "$preset" -DVASTRELLINE_DEVELOP=OFF -DVASTRELLINE_TESTS=OFF -DVASTRELLINE_TOOLS=OFF \
            -DVASTRELLINE_BENCHES=OFF -DVASTRELLINE_COMMIT="$commit" >/dev/null
        cmake --build --preset "$preset" --target vastrelline vastrelline_archive
    )
}

# The page, by modules of its own place.
buildPageElsewhere() {
    (
        umask 077
        cd "$copy/workbench"
        cp -R "$1" node_modules
        TZ=Pacific/Chatham LANG=C LC_ALL=C node build.mjs made
    )
}

failed=0
for preset in "${presets[@]}"; do
    case $preset in
        windows*) files=(bin/Vastrelline.dll src/libVastrelline.dll.a) ;;
        *) files=(src/libvastrelline.so.1 src/libvastrelline.a) ;;
    esac
    case $preset in
        windows) scripts/install-dependencies.sh ci ;;
        aarch64 | windows32) scripts/install-dependencies.sh "$preset" ;;
    esac
    [[ -e build/$preset/CMakeCache.txt ]] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target vastrelline vastrelline_archive >/dev/null
    buildElsewhere "$preset" >"$scratch/build.log" || { cat "$scratch/build.log"; exit 1; }
    for file in "${files[@]}"; do
        (cd "build/$preset" && sha256sum "$file")
        if ! cmp -s "build/$preset/$file" "$copy/build/$preset/$file"; then
            echo "    built elsewhere: $(sha256sum <"$copy/build/$preset/$file")"
            tellDifference "build/$preset/$file" "$copy/build/$preset/$file"
            failed=1
        fi
    done
    rm -rf "$copy/build"
    if [[ -e build/$preset/workbench ]]; then
        cmake --build --preset "$preset" --target vastrelline_page >/dev/null
        buildPageElsewhere "$PWD/build/page/node_modules" >"$scratch/build.log" || { cat "$scratch/build.log"; exit 1; }
        for file in build/"$preset"/workbench/made/*; do
            (cd "build/$preset" && sha256sum "workbench/made/${file##*/}")
            cmp "$file" "$copy/workbench/made/${file##*/}" || failed=1
        done
        rm -rf "$copy/workbench"/{node_modules,made}
    fi
done
[[ $failed -eq 0 ]] && echo "The same bytes in both places"
exit $failed
