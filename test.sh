#!/usr/bin/env bash
# Builds everything and runs every test: installs what is needed first.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
echo "test: building"
cmake --preset release --log-level=WARNING
cmake --build --preset release
echo "test: running"
ctest --test-dir build/release --output-on-failure
