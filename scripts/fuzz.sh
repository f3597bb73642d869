#!/usr/bin/env bash
# Runs the fuzz targets under the address and undefined sanitizers, one after the other.
# usage: scripts/fuzz.sh [SECONDS for each target, 60 by default [TARGET ...]]
# Needs clang-14 and libclang-rt-14-dev. What is found stays in build/fuzz/found, the corpora beside
# it; chart files of the examples in out/gallery (./demo.sh draws them) are the views' first ones.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true

cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE= -DCMAKE_CXX_FLAGS=-O2 \
    -DCMAKE_CXX_COMPILER="${CXX:-clang++-14}" -DVARNEL_FUZZ=ON -DVARNEL_TESTS=OFF \
    -DVARNEL_EXAMPLES=OFF -DVARNEL_TOOLS=OFF -DVARNEL_INSTALL=OFF --log-level=WARNING
cmake --build build/fuzz
cd build/fuzz
targets=("$@")
[ $# -gt 0 ] || for target in bin/*_fuzz; do targets+=("$(basename "$target" _fuzz)"); done

# Short stacks and little freed memory kept: twice as many runs a second. Leaks are looked for once, at
# the end: after each run that keeps memory the run would be made twice more.
export ASAN_OPTIONS=allocator_may_return_null=1:malloc_context_size=8:quarantine_size_mb=16:allocator_release_to_os_interval_ms=-1
export LSAN_OPTIONS=suppressions=$PWD/../../tests/support/lsan.supp:print_suppressions=0
export MESA_SHADER_CACHE_DISABLE=true LP_NUM_THREADS=0
mkdir -p found
root=$PWD/../..

# Writes the files that a target starts from into a folder.
seed() { # seed TARGET FOLDER
    case $1 in
    dib) cp "$root"/tests/bitmap/files/* "$2" ;;
    polysurface) bin/polysurface_seeds "$2" ;;
    table) # The examples' data, each cut to its first lines behind two bytes of options.
        for file in "$root"/examples/data/*.csv; do
            { printf '\0\0'; head -n 5 "$file" | cut -c1-200; } >"$2/$(basename "$file")"
        done ;;
    view | page) # Small ones alone: a large surface costs runs and shows nothing that a small one does not.
        find "$root/out/gallery" -name '*.chart' -size -40k -exec cp -t "$2" {} + 2>/dev/null || true ;;
    esac
}

for target in "${targets[@]}"; do
    corpus=${target}_corpus seeds=${target}_seeds
    mkdir -p "$corpus" "$seeds"
    seed "$target" "$seeds"
    case $target in dib) largest=4096 ;; table) largest=400 ;; *) largest=65536 ;; esac
    "bin/${target}_fuzz" -max_total_time="$seconds" -max_len="$largest" -timeout=20 \
        -rss_limit_mb=2048 -detect_leaks=0 -entropic=0 -print_final_stats=1 -artifact_prefix="found/$target-" "$corpus" "$seeds" 2>"$target.log" ||
        { tail -n 40 "$target.log"; exit 1; }
    awk -v target="$target" '/stat::number_of_executed_units/ { n = $2 }
        /stat::average_exec_per_sec/ { r = $2 } / cov: / { c = $4 }
        END { printf "fuzz: %s: %d runs, %d a second, %d edges, nothing found\n", target, n, r, c }' \
        "$target.log"
done
