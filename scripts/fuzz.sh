#!/usr/bin/env bash
# Runs each fuzz target under the address and undefined sanitizers.
# usage: scripts/fuzz.sh [seconds for each target, 60 by default]
# Needs clang-14 and libclang-rt-14-dev. What is found stays in build/fuzz/found.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER="${CXX:-clang++-14}" -DVARNEL_FUZZ=ON \
    -DVARNEL_TESTS=OFF -DVARNEL_EXAMPLES=OFF >/dev/null
cmake --build build/fuzz --target dib_fuzz table_fuzz

mkdir -p build/fuzz/dib_corpus build/fuzz/found
export ASAN_OPTIONS=allocator_may_return_null=1
build/fuzz/bin/dib_fuzz -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix=build/fuzz/found/ build/fuzz/dib_corpus tests/bitmap/files

# Tables start from the examples' data, each cut to its first lines behind two bytes of options.
mkdir -p build/fuzz/table_corpus build/fuzz/table_seeds
for file in examples/data/*.csv; do
    { printf '\0\0'; head -n 5 "$file" | cut -c1-200; } >"build/fuzz/table_seeds/$(basename "$file")"
done
build/fuzz/bin/table_fuzz -max_total_time="$seconds" -max_len=400 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix=build/fuzz/found/ build/fuzz/table_corpus build/fuzz/table_seeds
