#!/usr/bin/env bash
# Static analysis of our own code: cppcheck on everything, clang-tidy on the portable parts, clang-format as a check.
# Needs the packages cppcheck, clang-tidy and clang-format, and a configured host build. Ends with 1 on any finding.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"
cd "$ROOT"
for tool in cppcheck clang-tidy clang-format; do
    command -v "$tool" >/dev/null || die "$tool is missing; install the package of that name"
done
[ -e build/host/compile_commands.json ] || die "no host build; run ./test first"

# passedByValue: registry paths are parameters by value by design, and PageContext is a handful of references.
say "cppcheck"
cppcheck --enable=warning,performance,portability --inline-suppr --std=c++17 --language=c++ -q --error-exitcode=1 \
    -I src --suppress=missingInclude --suppress=passedByValue src simulator tools bench
say "clang-tidy"
git ls-files 'src/*.cpp' | grep -F -x -f <(grep -o '"file": ".*"' build/host/compile_commands.json |
    sed "s|.*\": \"$ROOT/||; s|\"$||") | xargs clang-tidy -p build/host --quiet --warnings-as-errors='*' 2>/dev/null
say "clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
