#!/usr/bin/env bash
# run.sh [SECONDS]: throws bytes at all that reads bytes from outside, under sanitizers, for so many seconds (300).
# What makes it fail is left in build/fuzz/. The search starts from seeds/; the bytes that it found on its way are
# kept in build/fuzz/corpus and used the next time.
set -euo pipefail
. "$(dirname "$0")/../../tools/setup/common.sh"

here=$ROOT/tests/fuzz src=$ROOT/src
[ "$(uname -s)" = Linux ] && command -v clang++ >/dev/null || die "needs clang++ on Linux"
mkdir -p "$BUILD/fuzz/corpus"
cd "$BUILD/fuzz"
clang++ -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
    -Wall -Wextra -Wconversion -Wshadow -I"$src" "$here/Readers.cpp" "$src/device/EqCurves.cpp" \
    "$src/window/language/TranslationFile.cpp" "$src"/pages/equalizer/{EqCurveText,EqFilter}.cpp \
    "$src"/update/{ftp/FtpReply,ServerConfig,UpdateInfo}.cpp -o readers
./readers -max_total_time="${1:-300}" -max_len=2000 -timeout=5 -print_final_stats=1 -verbosity=0 corpus "$here/seeds"
