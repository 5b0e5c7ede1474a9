#!/usr/bin/env bash
# Lines of code and of tests (.cpp, .h and .c, blank lines left out), folder by folder, and their share.
set -euo pipefail
cd "$(dirname "$0")/.."

lines() { # lines FOLDER...
    git ls-files -- "${@/%//*.cpp}" "${@/%//*.h}" "${@/%//*.c}" | xargs -r cat | grep -c '[^[:space:]]' || true
}
for folder in src simulator tools bench tests/*/; do
    printf '%7d  %s\n' "$(lines "${folder%/}")" "${folder%/}"
done
code=$(lines src simulator tools bench) tests=$(lines tests)
printf '%7d  code, %d tests: %d %%\n' "$code" "$tests" $(((100 * tests + code / 2) / code))
