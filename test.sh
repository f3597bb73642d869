#!/usr/bin/env bash
# Builds everything and runs every test: installs what is needed first.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
echo "test: building"
# Everything is switched on here, since the demo builds less in the same folder. Warnings are errors
# where changes are checked, not on a user's newer compiler.
cmake --preset release -DVARNEL_TESTS=ON -DVARNEL_TOOLS=ON -DVARNEL_EXAMPLES=ON \
    -DVARNEL_WERROR="$([ -n "${CI:-}" ] && echo ON || echo OFF)" --log-level=WARNING
cmake --build --preset release
echo "test: running"
ctest --test-dir build/release --output-on-failure --no-tests=error
