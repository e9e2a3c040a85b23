#!/usr/bin/env bash
# run.sh STEP: one step of the install tests. Every step after `prefix` works on the installed tree
# alone. Requires the variables SOURCE_DIR, BUILD_DIR, LIBDIR, VERSION,
# CONFIG, CMAKE, CC and CXX.
set -euo pipefail

work=$BUILD_DIR/install-test
prefix=$work/prefix
pc_path=$prefix/$LIBDIR/pkgconfig
export LD_LIBRARY_PATH=$prefix/$LIBDIR
export PKG_CONFIG_PATH=$pc_path

die() { echo "FAILED: $*" >&2; exit 1; }

quiet() {
  local log
  log=$(mktemp)
  "$@" >"$log" 2>&1 || { cat "$log"; rm -f "$log"; die "$*"; }
  rm -f "$log"
}

# Installs and moves the tree, so that all other steps test that it is relocatable.
step_prefix() {
  rm -rf "$work"
  mkdir -p "$work"
  quiet "$CMAKE" --install "$BUILD_DIR" --prefix "$work/first-place"
  mv "$work/first-place" "$prefix"
  # The library names its source files relative to the root of the sources and carries no run path.
  local found binary
  found=$(grep -rlIF -e "$work/first-place" -e "$SOURCE_DIR" -e "$BUILD_DIR" "$prefix" || true)
  [ -z "$found" ] || die "these files name the place of the build: $found"
  for binary in "$prefix/$LIBDIR/libzorl2_serialize.so" "$prefix"/bin/*; do
    [ -e "$binary" ] || continue
    # Debug information may name it.
    strip --strip-debug -o "$work/stripped" "$binary"
    grep -qF -e "$work/first-place" -e "$SOURCE_DIR" -e "$BUILD_DIR" "$work/stripped" &&
      die "$binary names the place of the build"
  done
  readelf -d "$prefix/$LIBDIR/libzorl2_serialize.so" | grep -E 'RPATH|RUNPATH' &&
    die "the library has a run path"
  readelf -d "$prefix/$LIBDIR/libzorl2_serialize.so" |
    grep -q "SONAME.*\[libzorl2_serialize.so.${VERSION%%.*}\]" || die "the soname"
  local program
  for program in "$prefix"/bin/*; do
    [ -e "$program" ] || continue
    env -u LD_LIBRARY_PATH "$program" --help >/dev/null || die "$program in the moved tree"
  done
  echo "proved: the tree can be moved; $(find "$prefix" -type f | wc -l) files, soname" \
    "libzorl2_serialize.so.${VERSION%%.*}"
}

installed_files() { (cd "$1" && find . ! -type d | sed 's|^\./||' | sort); }

# The files that a component installs, as tests/install/COMPONENT.files lists them.
listed_files() {
  sed -e "s|@LIBDIR@|$LIBDIR|" -e "s|@VERSION@|$VERSION|" -e "s|@SOVERSION@|${VERSION%%.*}|" \
    -e "s|@CONFIG@|${CONFIG,,}|" \
    "$SOURCE_DIR/tests/install/$1.files" | sort
}

# Every component installs the files of its list, and the components together are the whole.
step_components() {
  local component
  for component in library development tools; do
    rm -rf "$work/$component"
    mkdir -p "$work/$component"
    quiet "$CMAKE" --install "$BUILD_DIR" --prefix "$work/$component" --component "$component"
    diff <(listed_files "$component") <(installed_files "$work/$component") ||
      die "component $component; if this is intended, correct tests/install/$component.files"
  done
  diff <(installed_files "$prefix") \
    <(for c in library development tools; do installed_files "$work/$c"; done | sort) ||
    die "the components together are not the whole"
  echo "proved: the components library, development and tools install their files"
}

step_hardening() { "$SOURCE_DIR/tests/install/hardening.sh" "$prefix"; }

configure_consumer() {
  quiet "$CMAKE" -S "$1" -B "$2" -DCMAKE_BUILD_TYPE="$3" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_C_COMPILER="$CC" \
    -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
}

step_cmake() {
  local type
  for type in Release Debug; do
    rm -rf "$work/cmake-$type"
    configure_consumer "$SOURCE_DIR/tests/install/consumer" "$work/cmake-$type" "$type"
    quiet "$CMAKE" --build "$work/cmake-$type"
    echo "find_package, $type:"
    "$CMAKE" --build "$work/cmake-$type" --target prove | grep -E 'proved|FAILED'
  done
  rm -rf "$work/c-only"
  configure_consumer "$SOURCE_DIR/tests/install/c_only" "$work/c-only" Release
  quiet "$CMAKE" --build "$work/c-only"
  echo "find_package, a project without C++:"
  "$CMAKE" --build "$work/c-only" --target prove | grep -E 'proved|FAILED'
}

# The version file accepts the same major version and rejects every other.
step_version() {
  local wanted dir=$work/version
  local major=${VERSION%%.*}
  for wanted in "$((major - 1)).9" "$major.0" "$VERSION" "$major.99" "$((major + 1)).0"; do
    rm -rf "$dir"
    mkdir -p "$dir"
    printf 'cmake_minimum_required(VERSION 3.22)\nproject(v CXX)\nfind_package(zorl2_serialize %s CONFIG REQUIRED)\n' \
      "$wanted" >"$dir/CMakeLists.txt"
    if "$CMAKE" -S "$dir" -B "$dir/b" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null 2>&1; then
      echo "$wanted is accepted"
    else
      echo "$wanted is rejected"
    fi
  done | tee "$work/version.txt"
  # The first and the last are other major versions; $major.99 is newer than what is installed.
  diff "$work/version.txt" - <<END || die "version compatibility"
$((major - 1)).9 is rejected
$major.0 is accepted
$VERSION is accepted
$major.99 is rejected
$((major + 1)).0 is rejected
END
}

# Builds with the compiler and pkg-config alone.
step_pkg_config() {
  local in=$SOURCE_DIR/tests/install/consumer out=$work/pkg-config flags
  rm -rf "$out"
  mkdir -p "$out"
  pkg-config --validate zorl2_serialize zorl2_host zorl2_check
  [ "$(pkg-config --modversion zorl2_serialize)" = "$VERSION" ] || die "the module's version"
  [ -f "$(pkg-config --variable=descriptor_set zorl2_serialize)" ] || die "the descriptor set"
  read -ra flags <<<"$(pkg-config --cflags --libs zorl2_serialize zorl2_host)"
  # The headers require C++17, the default of GCC; an older compiler needs the option.
  [ "$(echo __cplusplus | "$CXX" -E -P -x c++ -)" != 201402L ] || CXX="$CXX -std=c++17"
  $CXX -Wall -Wextra -Wconversion -Wold-style-cast -Werror -o "$out/plain" "$in/entry.cpp" "${flags[@]}"
  $CXX -O2 -DNDEBUG -o "$out/ndebug" "$in/entry.cpp" "${flags[@]}"
  $CXX -Wl,-z,now -o "$out/now" "$in/entry.cpp" "${flags[@]}"
  "$CC" -std=c99 -pedantic -Wall -Wextra -Wno-unused -D_POSIX_C_SOURCE=200809L -Werror \
    -o "$out/list" "$in/list.c" "${flags[@]}"
  "$out/plain"
  "$out/ndebug"
  "$out/now"
  readelf -d "$out/now" | grep NOW >/dev/null || die "-z now was lost"
  "$out/list"

  read -ra flags <<<"$(pkg-config --cflags --libs zorl2_check zorl2_host)"
  $CXX -Wall -Wextra -Wconversion -Wold-style-cast -Werror -o "$out/check" "$in/check.cpp" "${flags[@]}"
  "$out/check"

  # The plugins link the library, the program that loads them the host functions.
  local library host
  read -ra library <<<"$(pkg-config --cflags --libs zorl2_serialize)"
  read -ra host <<<"$(pkg-config --cflags --libs zorl2_host)"
  local name
  for name in first second; do
    $CXX -shared -fPIC -o "$out/$name.so" "$in/plugin.cpp" "${library[@]}"
  done
  $CXX -o "$out/plugins" "$in/plugins.cpp" "${host[@]}" -ldl
  "$out/plugins" "$out/first.so" "$out/second.so"
  $CXX -o "$out/reopen" "$in/reopen.cpp" "${host[@]}" -ldl
  "$out/reopen" "$prefix/$LIBDIR/libzorl2_serialize.so"
}

# Each public header compiles alone and with all others; the C headers compile as C99, too.
step_headers() {
  local flags header headers
  read -ra flags <<<"$(pkg-config --cflags zorl2_serialize)"
  flags+=(-Wall -Wextra -Wconversion -Wshadow -Werror -fsyntax-only)
  mapfile -t headers < <(listed_files development |
    sed -nE 's#^include/zorl2_serialize/((native|convert|c_api|check)/.*\.h)$#\1#p')
  [ ${#headers[@]} -gt 10 ] || die "no headers"
  for header in "${headers[@]}"; do
    echo "#include \"$header\"" | "$CXX" -std=c++17 -Wold-style-cast "${flags[@]}" -x c++ - ||
      die "$header on its own"
  done
  printf '#include "%s"\n' "${headers[@]}" | "$CXX" -std=c++17 -Wold-style-cast "${flags[@]}" -x c++ - ||
    die "all headers together"
  for header in c_api/intf_entry.h native/pvex_fault.h; do
    echo "#include \"$header\"" | "$CC" -std=c99 -pedantic "${flags[@]}" -x c - ||
      die "$header as C99"
  done
  echo "proved: ${#headers[@]} headers compile alone and together"
}

# protoc needs only the descriptor set or the schema.
step_schema() {
  local share=$prefix/share/zorl2_serialize decoded
  decoded=$(printf '\x0a\x04\x0a\x14\x1e\x28' |
    protoc --descriptor_set_in="$share/zorl2.desc" --decode=zorl2.protobuf.Zorid zorid.proto |
    tr '\n' ' ')
  [ "$decoded" = "value: 10 value: 20 value: 30 value: 40 " ] || die "decoded: $decoded"
  mkdir -p "$work/from-schema"
  quiet protoc --proto_path="$share/proto" --cpp_out="$work/from-schema" "$share"/proto/*.proto
  echo "proved: protoc reads the installed descriptor set and the installed schema"
}

# The first CMake block and the first C++ block of README.md are a project.
step_readme() {
  local dir=$work/readme
  rm -rf "$dir"
  mkdir -p "$dir"
  block() { awk -v mark="\`\`\`$1" '$0 == mark {on = 1; next} on && /^```/ {exit} on' "$SOURCE_DIR/README.md"; }
  block cpp >"$dir/main.cpp"
  { printf 'cmake_minimum_required(VERSION 3.22)\nproject(readme CXX)\n'; block cmake; } \
    >"$dir/CMakeLists.txt"
  if [ ! -s "$dir/main.cpp" ] || ! grep -q find_package "$dir/CMakeLists.txt"; then
    die "README.md shows no cmake block or no cpp block"
  fi
  configure_consumer "$dir" "$dir/build" Release
  quiet "$CMAKE" --build "$dir/build"
  local program
  program=$(find "$dir/build" -maxdepth 1 -type f -perm -u+x)
  [ "$(wc -l <<<"$program")" = 1 ] || die "one program expected: $program"
  "$program"
  echo "proved: what README.md shows builds and runs"
}

step_examples() {
  local dir=$work/examples
  rm -rf "$dir"
  configure_consumer "$SOURCE_DIR/examples" "$dir" Release
  quiet "$CMAKE" --build "$dir"
  (cd "$dir" && ctest --output-on-failure)
}

step_packages() {
  "$SOURCE_DIR/scripts/package"
  rm -rf "$BUILD_DIR/packages-test"
  "$SOURCE_DIR/packaging/check-packages" "$BUILD_DIR/packages-test"
}

# Any finding fails, even a pedantic one. The packages are not uploaded to Debian, so their changelog
# closes no bug there. In a binary, lintian also reads machine code after a text as letters.
step_lintian() {
  command -v lintian >/dev/null || { echo "SKIPPED: lintian is not installed"; exit 77; }
  lintian --pedantic --fail-on error,warning,info,pedantic --display-info --allow-root \
    --suppress-tags initial-upload-closes-no-bugs,spelling-error-in-binary \
    "$SOURCE_DIR"/build/package/packages/*.deb
}

# The same sources in another directory give identical packages.
step_reproducible() {
  local other=$BUILD_DIR/reproducible-test/a/longer/path
  rm -rf "$BUILD_DIR/reproducible-test"
  "$SOURCE_DIR/tests/install/copy-tree.sh" "$SOURCE_DIR" "$other"
  "$other/scripts/package" >/dev/null
  diff <(cd "$SOURCE_DIR/build/package/packages" && sha256sum ./*.deb) \
    <(cd "$other/build/package/packages" && sha256sum ./*.deb) ||
    die "the packages depend on the path of the sources; compare the unpacked files of both"
  rm -rf "$BUILD_DIR/reproducible-test"
  echo "proved: the packages do not depend on the path of the sources"
}

# A new major version needs one changed line. Everything else that names it is generated.
step_next_version() {
  local tree=$BUILD_DIR/next-version-test
  rm -rf "$tree"
  "$SOURCE_DIR/tests/install/copy-tree.sh" "$SOURCE_DIR" "$tree"
  sed -i "s/^\(project(.* VERSION \)[0-9.]*/\1$((${VERSION%%.*} + 1)).0.0/" "$tree/CMakeLists.txt"
  "$tree/scripts/package"
  "$tree/packaging/check-packages" "$tree/build/check"
  # The released version appears only in the history.
  local stale
  stale=$(grep -rlF "$VERSION" "$tree"/build/check/{tree,control} | grep -vE 'changelog|control/symbols$' || true)
  [ -z "$stale" ] || die "these files name the old version: $stale"
  rm -rf "$tree"
}

"step_$1"
