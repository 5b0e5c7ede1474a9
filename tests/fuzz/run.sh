#!/usr/bin/env bash
# run.sh [SECONDS]: throws bytes at all that reads bytes from outside, under sanitizers, for so many seconds a
# program (60). What makes a program fail is left in build/fuzz/<program>/. seeds/<program>/ is where the search
# starts; the bytes that it found on its way are kept in build/fuzz and used the next time.
set -euo pipefail
. "$(dirname "$0")/../../tools/setup/common.sh"

seconds=${1:-60}
here=$ROOT/tests/fuzz
src=$ROOT/src

# fuzz PROGRAM MAX_LENGTH SOURCE...
fuzz() {
    local name=$1 length=$2
    shift 2
    local folder=$BUILD/fuzz/$name
    mkdir -p "$folder/corpus"
    say "$name"
    clang++ -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
        -Wall -Wextra -Wconversion -Wshadow -I"$src" -I"$ROOT/tests" "$here/$name.cpp" "$@" -o "$folder/$name"
    (cd "$folder" && "./$name" -max_total_time="$seconds" -max_len="$length" -timeout=5 -print_final_stats=1 \
        -verbosity=0 corpus "$here/seeds/$name")
}

[ "$(uname -s)" = Linux ] && command -v clang++ >/dev/null || die "needs clang++ on Linux"
fuzz FuzzUpdate 2000 "$src"/update/{Crc32,DownloadProgress,FtpReply,ServerConfig,UpdateInfo}.cpp
fuzz FuzzEqCurves 1500 "$src/device/EqCurves.cpp"
fuzz FuzzEqCurveText 400 "$src"/ui/pages/{EqCurveText,EqFilter}.cpp
fuzz FuzzReports 64 "$src"/hid/{HidMatching,KeyEvent,UpgradeStage}.cpp "$src/ui/pages/BatteryReport.cpp"
fuzz FuzzTranslationFile 600 "$src/ui/TranslationFile.cpp"
