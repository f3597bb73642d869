#!/bin/sh
# Whole pictures beside other libraries, all in the same rounds: a table on stdout, every value in
# build/bench.json, the ratios as a picture in build/bench.png.
#
#   bench/run.sh [ROUNDS]                 this version, built -O3, and the peers that are installed;
#                                         the version in BENCH_OTHER, too, when that is set
#   bench/run.sh compare OTHER [ROUNDS]   this version and the one in the source folder OTHER
#
# BENCH_CASES selects rows: kinds, or KIND:SIZE ("filled:1000 start"). Peers, all optional: VTK
# (libvtk9-dev), MathGL (libmgl-dev; MGL_FLAGS when it is not where compilers look), CGAL
# (libcgal-dev), bare EGL and OpenGL, matplotlib and contourpy (python3-matplotlib,
# python3-contourpy, for the Python in PYTHON), gnuplot. Three rounds take half an hour.
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
out=$root/build/bench
python=${PYTHON:-/usr/bin/python3}
mkdir -p "$out"

# build FOLDER NAME: the library in FOLDER, in its build/release, and a program that draws with it
build() {
  lib=$1/build/release/lib
  cmake -S "$1" -B "$1/build/release" -DCMAKE_BUILD_TYPE=Release --log-level=WARNING >&2
  cmake --build "$1/build/release" --target varnel >&2
  c++ -std=c++20 -O2 -I"$1" -I"$root" "$root/bench/pictures.cpp" -o "$out/$2" \
    -L"$lib" -lvarnel -Wl,-rpath,"$lib"
}

# peer NAME FLAGS...: adds a peer when its program compiles
peer() {
  name=$1
  shift
  if c++ -std=c++20 -O2 -I"$root" "$root/bench/peers/${name}_pictures.cpp" -o "$out/$name" "$@" \
    2>"$out/$name.log"; then
    set_programs="$set_programs $name=$out/$name"
  else
    echo "without $name: see $out/$name.log" >&2
  fi
}

vtk_flags() {
  include=$(ls -d /usr/include/vtk-* 2>/dev/null | tail -1)
  version=${include##*vtk-}
  echo "-rdynamic -isystem $include -lEGL -ldl"
  for part in CommonCore CommonDataModel CommonExecutionModel CommonMath CommonMisc \
    CommonTransforms FiltersCore FiltersSources IOImage RenderingCore RenderingOpenGL2; do
    echo "-lvtk$part-$version"
  done
  echo "-lvtksys-$version"
}

build "$root" varnel
set_programs="varnel=$out/varnel"
if [ "$1" = compare ]; then
  BENCH_OTHER=$2
  rounds=${3:-3}
else
  rounds=${1:-3}
fi
if [ -n "$BENCH_OTHER" ]; then
  build "$(cd "$BENCH_OTHER" && pwd)" other
  set_programs="$set_programs other=$out/other"
fi
if [ "$1" != compare ]; then
  # shellcheck disable=SC2046,SC2086
  peer vtk $(vtk_flags)
  # shellcheck disable=SC2086
  peer mathgl ${MGL_FLAGS:--lmgl}
  peer cgal -lgmp -lmpfr
  peer gl -lEGL -lOpenGL -lpng
  for module in matplotlib contourpy; do
    if "$python" -c "import $module" 2>/dev/null; then
      printf '#!/bin/sh\nexec "%s" "%s" "$@"\n' "$python" \
        "$root/bench/peers/${module}_pictures.py" >"$out/$module"
      chmod +x "$out/$module"
      set_programs="$set_programs $module=$out/$module"
    fi
  done
  if command -v gnuplot >/dev/null; then
    set_programs="$set_programs gnuplot=$root/bench/peers/gnuplot_pictures.sh"
  fi
fi
# shellcheck disable=SC2086
"$python" "$root/bench/compare.py" "$rounds" "$root/build/bench.json" "$out/ratios.csv" $set_programs
c++ -std=c++20 -O2 -I"$root" "$root/bench/rows.cpp" -o "$out/rows" \
  -L"$root/build/release/lib" -lvarnel -Wl,-rpath,"$root/build/release/lib"
"$out/rows" "$out/ratios.csv" "$root/build/bench.png" >&2
