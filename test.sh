#!/usr/bin/env bash
# Builds everything and runs every test: installs what is needed first.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
# Warnings are errors where changes are checked, not on a user's newer compiler.
preset=$([ -n "${CI:-}" ] && echo ci || echo release)
echo "test: building"
# Everything is switched on here, since the demo builds less in the same folder.
cmake --preset "$preset" -DVARNEL_TESTS=ON -DVARNEL_TOOLS=ON -DVARNEL_EXAMPLES=ON --log-level=WARNING
cmake --build --preset "$preset"
echo "test: running"
ctest --test-dir "build/$preset" --output-on-failure --no-tests=error
