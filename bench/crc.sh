#!/usr/bin/env bash
# CRC throughput against zlib's crc32: one Windows program with both, run under Wine. Prints a table.
set -euo pipefail
. "$(dirname "$0")/../tools/setup/common.sh"

program=$BUILD/bench/crc.exe
mkdir -p "$BUILD/bench"
x86_64-w64-mingw32-g++-posix -std=c++17 -O2 -DNDEBUG -static -I"$ROOT/src" \
    "$ROOT/bench/crc.cpp" "$ROOT/src/update/Crc32.cpp" -lz -o "$program"
"$ROOT/tools/wine/run-test.sh" console "$program"
