#!/usr/bin/env bash
# run-test.sh console|gui PROGRAM.exe [ARGUMENTS...]: runs one Windows test program under Wine in a prefix of its
# own and, for gui, on an X display of its own. Ends with the program's exit code, or with 1 when the program ended
# before its tests did, whatever its exit code. QORSOUND_NO_TESTS=1: the program has none.
set -euo pipefail
. "$(dirname "$0")/session.sh"

mode=$1 program=$2
shift 2
runtime=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
WINEPATH="$(windows_path "$(qt_dir)/bin");$(windows_path "$runtime");$(windows_path /usr/x86_64-w64-mingw32/lib)"
export WINEPATH WINEQT_FORCE_STDERR_LOGGING=1
# QORSOUND_SCREEN: the arguments of start_display.
# shellcheck disable=SC2086
[ "$mode" != gui ] || start_display ${QORSOUND_SCREEN:-}

# GoogleTest removes the file when the last test is over (TEST_PREMATURE_EXIT_FILE in its documentation).
unfinished=$work/unfinished
[ -n "${QORSOUND_NO_TESTS:-}" ] || touch "$unfinished"
TEST_PREMATURE_EXIT_FILE=$(windows_path "$unfinished")
export TEST_PREMATURE_EXIT_FILE

code=0
timeout -k 10 "${QORSOUND_TEST_TIMEOUT:-580}" "$WINE" "$program" "$@" </dev/null || code=$?
[ "$code" != 77 ] || start_again # from tests/support/QtMain.cpp
[ "$code" != 124 ] || printf 'timed out: %s\n' "$program" >&2
[ "$code" != 0 ] || [ ! -e "$unfinished" ] || { printf 'ended before its tests did: %s\n' "$program" >&2; code=1; }
exit "$code"
