#!/usr/bin/env bash
# Runs clang-tidy over the library's sources that changed since a commit: tidy.sh BUILD [COMMIT]
# BUILD is a configured build folder; without COMMIT all sources are looked at.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
if [ $# -gt 1 ]; then
    files=$(git diff --name-only --diff-filter=d "$2" -- 'varnel/*.cpp')
else
    files=$(git ls-files 'varnel/*.cpp')
fi
[ -n "$files" ] || exit 0
echo "$files" | xargs -P 2 -n 4 clang-tidy-14 -p "$build" --quiet --warnings-as-errors='*'
