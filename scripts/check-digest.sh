#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Builds the library with every compiler and level, runs the digest of whole runs (tests/digest) in every way in which
# a host may run it, and prints a line for each: same, DIFFERENT, or why it was not run. Exits with 1 if one differs or
# fails.
#
#     scripts/check-digest.sh [PART]...     all parts without an argument
#
#     builds     g++ and clang++ at -O0 to -O3, with vector forms and without
#     forms      kernels held to reference, baseline, AVX2 and AVX-512 forms, by both compilers
#     hosts      threads, one processor, a locale with a decimal comma, the C library's other forms, x87 at 53 bits,
#                rounding upwards, tiny numbers as 0
#     windows    the DLL for 64-bit Windows, under Wine
#     windows32  the DLL for 32-bit Windows, under Wine
#     aarch64    64-bit Arm, under qemu
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1

parts=("$@")
[[ ${#parts[@]} -gt 0 ]] || parts=(builds forms hosts windows windows32 aarch64)
for part in "${parts[@]}"; do
    case $part in
        builds | forms | hosts | windows | windows32 | aarch64) ;;
        *)
            echo "$0: no part '$part'" >&2
            exit 2
            ;;
    esac
done
has() { [[ " ${parts[*]} " == *" $1 "* ]]; }

root=$PWD/build/digest
expected=$PWD/tests/digest/expected.txt
mkdir -p "$root"
bad=0

line() { printf '%-58s %-10s %5s\n' "$1" "$2" "$3"; }

# compare TITLE COMMAND...: runs a digest, and shows its groups if some differ.
compare() {
    local title=$1 start=$SECONDS code=0
    shift
    timeout 3000 "$@" --check "$expected" >"$root/list.txt" 2>"$root/findings.txt" </dev/null || code=$?
    local result="failed $code"
    case $code in
        0) result=same ;;
        1) result=DIFFERENT ;;
        77) result="not here" ;;
    esac
    line "$title" "$result" "$((SECONDS - start)) s"
    if [[ $code -ne 0 && $code -ne 77 ]]; then
        bad=$((bad + 1))
        tr -d '\r' <"$root/findings.txt" | grep -v '^[0-9a-f:]*:fixme:' | sed 's/^/    /' | head -n 20
    fi
}

# build NAME CMAKE_OPTION...: the library and both programs, below build/digest/NAME.
build() {
    local folder=$root/$1
    shift
    if ! { cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVASTRELLINE_DEVELOP=OFF -DVASTRELLINE_DIGEST=ON \
        "$@" && cmake --build "$folder" --target vastrelline_digest vastrelline_digest_limited; } >"$folder.txt" 2>&1; then
        line "$(basename "$folder")" "NOT BUILT" ""
        tail -n 20 "$folder.txt"
        bad=$((bad + 1))
        return 1
    fi
}

cCompilerOf() { [[ $1 == clang++ ]] && echo clang || echo gcc; }
# native NAME COMPILER LEVEL CMAKE_OPTION...
native() {
    build "$1" "-DCMAKE_CXX_COMPILER=$2" "-DCMAKE_C_COMPILER=$(cCompilerOf "$2")" "-DCMAKE_CXX_FLAGS_RELEASE=$3 -DNDEBUG" \
        "${@:4}"
}
programOf() { echo "$root/$1/tests/digest/vastrelline_digest"; }

compilers=()
for compiler in g++ clang++; do
    if command -v "$compiler" >/dev/null; then
        compilers+=("$compiler")
    else
        line "$compiler" "not here" ""
    fi
done

if has builds; then
    for compiler in "${compilers[@]}"; do
        for level in -O0 -O1 -O2 -O3; do
            native "$compiler$level" "$compiler" $level || continue
            compare "$compiler $level" "$(programOf "$compiler$level")"
        done
        native "$compiler-scalar" "$compiler" -O3 -DVASTRELLINE_SCALAR_ONLY=ON || continue
        compare "$compiler -O3, without vector forms" "$(programOf "$compiler-scalar")"
    done
fi

if has forms; then
    for compiler in "${compilers[@]}"; do
        native "$compiler-O3" "$compiler" -O3 || continue
        for set in reference baseline avx2 avx512; do
            compare "$compiler -O3, $set forms" "$(programOf "$compiler-O3")_limited" --limit $set
        done
    done
fi

if has hosts && native g++-O3 g++ -O3; then
    program=$(programOf g++-O3)
    # Of the C library's own forms; its releases spell the names differently.
    plainest="-AVX2_Usable,-FMA_Usable,-AVX2,-FMA,-FMA4,-AVX512F_Usable,-AVX512F"
    compare "C library without FMA and AVX2" env "GLIBC_TUNABLES=glibc.cpu.hwcaps=$plainest" "$program"
    compare "one processor" taskset -c 0 "$program"
    compare "2 threads" "$program" --threads 2
    compare "8 threads" "$program" --threads 8
    mkdir -p "$root/locale"
    localedef -i de_DE -f UTF-8 "$root/locale/de_DE.UTF-8" >/dev/null 2>&1
    compare "decimal comma" env "LOCPATH=$root/locale" "$program" --locale de_DE.UTF-8
    compare "x87 at 53 bits" "$program" --x87-double
    compare "rounding upwards" "$program" --round-up
    compare "tiny numbers as 0" "$program" --flush-denormals
    compare "all of that, 3 threads, reference forms" env "GLIBC_TUNABLES=glibc.cpu.hwcaps=$plainest" \
        "LOCPATH=$root/locale" "${program}_limited" --limit reference --threads 3 --locale de_DE.UTF-8 --x87-double \
        --round-up --flush-denormals
fi

# windows TITLE TOOLCHAIN WINE: a prefix of this run's own, and no screen.
windows() (
    local title=$1 name=$2 wine=$3 toolchain=cmake/toolchain-$2.cmake
    if [[ ! -f $toolchain ]]; then
        line "$title" "not here" ""
        return 0
    fi
    build "$name" "-DCMAKE_TOOLCHAIN_FILE=$PWD/$toolchain" || return 1
    if ! command -v "$wine" >/dev/null; then
        line "$title, no Wine" "not here" ""
        return 0
    fi
    WINEPREFIX=$(mktemp -d)
    export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    unset DISPLAY WAYLAND_DISPLAY
    "$wine" wineboot -i >/dev/null 2>&1
    local program=$root/$name/bin/vastrelline_digest
    compare "$title" "$wine" "$program.exe"
    compare "$title, x87 at 53 bits, 3 threads" "$wine" "$program.exe" --x87-double --threads 3
    compare "$title, rounding upwards, tiny numbers as 0" "$wine" "$program.exe" --round-up --flush-denormals
    compare "$title, decimal comma" "$wine" "$program.exe" --locale German
    for set in reference baseline avx2 avx512; do
        compare "$title, $set forms" "$wine" "${program}_limited.exe" --limit $set
    done
    "$wine" wineboot -k >/dev/null 2>&1
    rm -rf "$WINEPREFIX"
    [[ $bad -eq 0 ]]
)
wine64=$(command -v wine64 || echo /usr/lib/wine/wine64)
if has windows; then windows "64-bit Windows" mingw64 "$wine64" || bad=$((bad + 1)); fi
if has windows32; then windows "32-bit Windows" mingw32 "$PWD/scripts/wine32.sh" || bad=$((bad + 1)); fi

if has aarch64; then
    toolchain=cmake/toolchain-aarch64.cmake
    qemu=$(command -v qemu-aarch64 || command -v qemu-aarch64-static || true)
    if [[ ! -f $toolchain || -z $qemu ]] || ! command -v aarch64-linux-gnu-g++ >/dev/null; then
        line "aarch64" "not here" ""
    elif build aarch64 "-DCMAKE_TOOLCHAIN_FILE=$PWD/$toolchain"; then
        compare "aarch64" "$qemu" -L /usr/aarch64-linux-gnu "$(programOf aarch64)" --threads 2
        compare "aarch64, rounding upwards, tiny numbers as 0" "$qemu" -L /usr/aarch64-linux-gnu "$(programOf aarch64)" \
            --round-up --flush-denormals
    fi
fi

echo
if [[ $bad -gt 0 ]]; then
    echo "not the same everywhere"
    exit 1
fi
echo "the same everywhere"
