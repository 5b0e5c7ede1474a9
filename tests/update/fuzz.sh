#!/usr/bin/env bash
# fuzz.sh [SECONDS]: throws bytes at all that the update reads from outside, under sanitizers. Says what it found.
set -euo pipefail
. "$(dirname "$0")/../../tools/setup/common.sh"

seconds=${1:-60}
folder=$BUILD/fuzz/update
mkdir -p "$folder/corpus"
printf '\000227 Entering Passive Mode (127,0,0,1,195,80)\r\n' >"$folder/corpus/passive"
printf '\000213 52428800\r\n' >"$folder/corpus/size"
printf '\000213 20240501134500\r\n' >"$folder/corpus/time"
printf '\002setup.exe:crc=0x0012abcd\r\n' >"$folder/corpus/information"
clang++ -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all -I"$ROOT/src" \
    "$ROOT/tests/update/FuzzUpdate.cpp" "$ROOT"/src/update/{Crc32,FtpReply,ServerConfig,UpdateInfo}.cpp \
    -o "$folder/fuzz_update"
cd "$folder"
./fuzz_update -max_total_time="$seconds" -max_len=2000 -print_final_stats=1 corpus
