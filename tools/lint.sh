#!/usr/bin/env bash
# Static analysis of our own code: cppcheck, clang-tidy and clang-format as checks. Needs the packages of these names,
# and the Windows build. Ends with 1 on any finding.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"
cd "$ROOT"
for tool in cppcheck clang-tidy clang-format; do
    command -v "$tool" >/dev/null || die "$tool is missing; install the package of that name"
done
[ -e build/windows/compile_commands.json ] || die "no Windows build; run ./test first"

# passedByValue: registry paths are parameters by value by design, and PageContext is a handful of references.
say "cppcheck"
cppcheck --enable=warning,performance,portability --inline-suppr --std=c++17 --language=c++ -q --error-exitcode=1 \
    --library=googletest -I src -I tests -I . --suppress=missingInclude --suppress=passedByValue src simulator tools bench tests
say "clang-tidy (12 minutes)"
gcc=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")/include/c++
mingw=(--extra-arg-before=--target=x86_64-w64-windows-gnu)
for folder in "$gcc" "$gcc/x86_64-w64-mingw32" /usr/x86_64-w64-mingw32/include; do
    mingw+=("--extra-arg=-isystem$folder")
done
git ls-files 'src/*.cpp' 'simulator/*.cpp' 'tools/*.cpp' 'bench/*.cpp' 'tests/*.cpp' ':!tests/fuzz' |
    xargs -P 2 -n 4 clang-tidy -p build/windows --quiet --warnings-as-errors='*' "${mingw[@]}" 2>/dev/null
say "clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
