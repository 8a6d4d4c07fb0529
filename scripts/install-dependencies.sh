#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Installs what is missing of the Debian packages that a job needs, as root or with sudo.
#
#     scripts/install-dependencies.sh GROUP...
#
#     build   the library and the tool
#     workbench   the workbench of the tool; modules of Node for its page go to build/page
#     test    the tests and benchmarks; modules of Node go to build/browser and build/node
#     packages    the Debian packages and their test
#     fuzz    the fuzzers, and what measures how far their corpus reaches
#     ci      format and lint checks, and the Windows build with its tests
#     zips        the archives for Windows and their test
#     aarch64     the build for 64-bit Arm with its tests
#     windows32   the build for 32-bit Windows with its tests
set -euo pipefail

declare -A packages=(
    [build]="g++ cmake ninja-build pkg-config libcli11-dev libpng-dev libtiff-dev nlohmann-json3-dev"
    [workbench]="libboost-dev"
    [test]="libgtest-dev libgmock-dev libbenchmark-dev libpng-dev gemmi-dev libmpfr-dev binutils abigail-tools netpbm zsh fish mandoc locales chromium fonts-dejavu-core python3-numpy python3-build python3-setuptools python3-wheel python3-distributed parallel shellcheck mono-mcs mono-runtime libmono-system-core4.0-cil fp-compiler fp-units-rtl fp-units-fcl"
    [packages]="dpkg-dev lintian mmdebstrap python3 python3-setuptools python3-wheel"
    [fuzz]="clang libclang-rt-14-dev llvm python3"
    [ci]="ccache python3 reuse clang-14 clang-format-14 clang-tidy-14 g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev wine64 googletest"
    [zips]="g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix libz-mingw-w64-dev dpkg-dev llvm-14 wine64 python3 unzip"
    [aarch64]="g++-aarch64-linux-gnu qemu-user googletest"
    [windows32]="g++-mingw-w64-i686-posix libz-mingw-w64-dev dpkg-dev mmdebstrap googletest"
)

# Node from elsewhere than Debian has npm inside, and does not go with Debian's.
if ! command -v npm >/dev/null; then
    packages[workbench]+=" nodejs npm"
    packages[test]+=" nodejs npm"
fi

# The modules that package-lock.json of a folder of ours names, with the hashes that stand there.
installModules() {
    local root source folder
    root=$(cd "$(dirname "$0")/.." && pwd)
    source=$root/$1
    folder=$root/build/$2
    if cmp -s "$source/package-lock.json" "$folder/installed-lock.json"; then
        return
    fi
    mkdir -p "$folder"
    cp "$source"/{package.json,package-lock.json,.npmrc} "$folder"
    (cd "$folder" && npm ci --loglevel=error)
    cp "$source/package-lock.json" "$folder/installed-lock.json"
}

missing=()
for group in "$@"; do
    if [[ -z "${packages[$group]:-}" ]]; then
        echo "$0: no group '$group'; there are: ${!packages[*]}" >&2
        exit 2
    fi
    for package in ${packages[$group]}; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
        [[ "$status" == installed ]] || missing+=("$package")
    done
done
if [[ ${#missing[@]} -gt 0 ]]; then
    asRoot=()
    if [[ "$(id -u)" -ne 0 ]]; then
        asRoot=(sudo)
    fi
    echo "installing: ${missing[*]}"
    "${asRoot[@]}" apt-get update -qq
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
for group in "$@"; do
    if [[ "$group" == workbench ]]; then
        installModules workbench page
    fi
    if [[ "$group" == test ]]; then
        installModules tests/browser browser
        installModules bindings/node node
    fi
done
