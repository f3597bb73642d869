#!/usr/bin/env bash
# Builds and runs the README's own program against the library in the three ways that the README
# names, and starts the installed program: run.sh BUILD SOURCE
# The installation is moved before it is used, and no language standard is chosen here.
set -euo pipefail
build=$1
source=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# The first fenced block of a language in the README.
block() { awk -v start="\`\`\`$1" '$0 == start { on = 1; next } /^```/ && on { exit } on' "$source/README.md"; }
block cpp >sold.cpp
block cmake >package.cmake
block console | sed -n 's/^\$ \(g++ .*\)/\1/p' >pkg-config.sh
for file in sold.cpp package.cmake pkg-config.sh; do
    [ -s "$file" ] || { echo "the README has no $file"; exit 1; }
done

draws() { # Runs a program, which must write its picture and its chart file.
    rm -f sold.png sold.chart
    "$@" && [ -s sold.png ] && [ -s sold.chart ]
}

host() { # host FOLDER LINES: a project around the README's program with those lines.
    mkdir "$1"
    { echo 'cmake_minimum_required(VERSION 3.25)'
      echo 'project(host LANGUAGES CXX)'
      echo "add_executable(host $folder/sold.cpp)"
      echo "$2"; } >"$1/CMakeLists.txt"
}

cmake --install "$build" --prefix "$folder/first" >/dev/null
mv first usr
[ -z "$(find usr/include -name detail)" ] || { echo "internal headers installed"; exit 1; }
export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$folder/usr" -name varnel.pc)")
version=$(pkg-config --modversion varnel)

echo "installed: CMake"
host package "$(cat package.cmake)"
cmake -S package -B package/build -G Ninja -DCMAKE_PREFIX_PATH="$folder/usr" --log-level=WARNING
cmake --build package/build
draws package/build/host

echo "installed: pkg-config"
bash -e pkg-config.sh
LD_LIBRARY_PATH=$(pkg-config --variable=libdir varnel) draws ./a.out

echo "installed: add_subdirectory"
host inside "add_subdirectory($source varnel)
target_link_libraries(host PRIVATE varnel::varnel)"
cmake -S inside -B inside/build -G Ninja --log-level=WARNING \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
cmake --build inside/build >build.log || { tail -n 30 build.log; exit 1; }
[ -z "$(find inside/build -name 'example_*' -o -name 'varnel_tests*' -o -name compile_commands.json)" ]
draws inside/build/host

if [ -x usr/bin/varnel ]; then
    echo "installed: the program"
    [ "$(usr/bin/varnel --version)" = "varnel $version" ]
fi
