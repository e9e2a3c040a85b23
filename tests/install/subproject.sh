#!/usr/bin/env bash
# subproject.sh HOW COMPILER STANDARD GENERATOR BUILD_TYPE [nobody]: builds and runs the project in
# tests/install/parent, with the library as a subproject of it. HOW is subdirectory or fetch;
# BUILD_TYPE none means an empty build type. `nobody` runs everything as that user. The paths of the
# sources and the build have spaces. Requires the variable SOURCE_DIR.
set -euo pipefail
how=$1 compiler=$2 standard=$3 generator=$4 build_type=$5 user=${6:-}
[ "$build_type" != none ] || build_type=

die() { echo "FAILED: $*" >&2; exit 1; }
quiet() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; die "$*"; }; }

declare -A c_compiler=([g++]=gcc [clang++]=clang)
command -v "$compiler" >/dev/null || { echo "SKIPPED: $compiler is not installed"; exit 77; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
source="$work/a path with spaces/zorl2"
build="$work/a build with spaces"
"$SOURCE_DIR/tests/install/copy-tree.sh" "$SOURCE_DIR" "$source"
as_user=()
if [ "$user" = nobody ] && [ "$(id -u)" -eq 0 ]; then
  chown -R nobody "$work"
  as_user=(setpriv --reuid nobody --clear-groups env "HOME=$work")
fi

fetch=OFF
[ "$how" = subdirectory ] || fetch=ON
cd "$work"
quiet "${as_user[@]}" cmake -G "$generator" -S "$source/tests/install/parent" -B "$build" \
  -DZORL2_SOURCE="$source" -DZORL2_FETCH="$fetch" -DCMAKE_CXX_STANDARD="$standard" \
  -DCMAKE_C_COMPILER="${c_compiler[$compiler]}" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_BUILD_TYPE="$build_type"
quiet "${as_user[@]}" cmake --build "$build" --parallel 2
quiet "${as_user[@]}" cmake --build "$build" --target prove
quiet "${as_user[@]}" cmake --install "$build" --prefix "$work/prefix"
installed=$(cd "$work/prefix" && find . ! -type d)
[ "$installed" = ./bin/entry ] || die "the parent's install also installs: $installed"
echo "proved: $how, $compiler, C++$standard, $generator, build type '$build_type'${user:+, user $user}"
