#!/usr/bin/env bash
# Checks that take longer than those of every change: the thread sanitizer over the thread tests, and
# clang-tidy over what the last 20 commits changed.
set -euo pipefail
cd "$(dirname "$0")/.."
export MESA_SHADER_CACHE_DISABLE=true

cmake --preset asan -DVARNEL_EXAMPLES=OFF -DVARNEL_TOOLS=OFF --log-level=WARNING
cmake --preset tsan -DVARNEL_EXAMPLES=OFF -DVARNEL_TOOLS=OFF --log-level=WARNING
cmake --build --preset tsan --target varnel_thread_tests
ctest --test-dir build/tsan --output-on-failure --no-tests=error -R '^varnel_thread_tests$'

scripts/tidy.sh build/asan \
    "$(git rev-parse --verify --quiet HEAD~20 || git rev-list --max-parents=0 HEAD | tail -n 1)"
