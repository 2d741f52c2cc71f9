#!/usr/bin/env bash
# Checks the library the way a host developer meets it: installs a release
# build into a temporary prefix (static and shared), builds and runs
# examples/list-folder against it with find_package and with pkg-config, then
# builds the Debian package, inspects it, installs it into a throwaway root
# and builds the example against that. With NXFV_DPKG_INSTALL=1 and root
# (CI's fresh machine) the package is also installed for real with apt-get,
# the example built against /usr, and the package removed again.
set -euo pipefail
cd "$(dirname "$0")/.."

tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
step() { printf '\n== %s\n' "$*"; }

# A folder to list, with a name long enough for the example's user-data rule.
folder="$tmp/folder"
mkdir -p "$folder/sub"
printf 'x\n' >"$folder/notes.txt"
printf 'y\n' >"$folder/a_rather_long_name.md"

# Builds the example against the prefix given as $1 (empty: the system) in
# $2, runs it on the folder and checks its rows.
build_example() {
  local prefix="$1" dir="$2" out
  cmake -S examples/list-folder -B "$dir" -G Ninja ${prefix:+-DCMAKE_PREFIX_PATH="$prefix"} >/dev/null
  cmake --build "$dir"
  out="$("$dir/list-folder" "$folder")"
  printf '%s\n' "$out"
  grep -q "^== $folder\$" <<<"$out"                       # AfterNewView
  grep -q '^notes.txt | txt | .* | short name$' <<<"$out"  # SetUserdata's column
  grep -q '^a_rather_long_name.md | md | .* | long name$' <<<"$out"
}

for kind in static shared; do
  build="build/pkg-$kind"
  shared=OFF; [ "$kind" = shared ] && shared=ON
  step "$kind libraries: build, install into a temporary prefix, build the example"
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DNXFV_BUILD_TESTS=OFF -DBUILD_SHARED_LIBS=$shared >/dev/null
  cmake --build "$build" -j2
  cmake --install "$build" --prefix "$tmp/$kind" >/dev/null
  build_example "$tmp/$kind" "$tmp/example-$kind"
done
# Outputs are captured before grep reads them: grep -q stops at the first
# match, and under pipefail the writer's broken pipe would fail the check.
deps="$(ldd "$tmp/example-shared/list-folder")"
if ! grep -q 'libnxfv_linux\.so\.0 ' <<<"$deps"; then
  echo "the shared example does not use libnxfv_linux.so.0" >&2; exit 1
fi

# The shared library shows hosts its public classes, not the control's parts.
core_so="$(find "$tmp/shared" -name 'libnxfv_core.so.0' -print -quit)"
exported="$(nm -DC --defined-only "$core_so")"
grep -q 'nxfv::FileViewer::Create' <<<"$exported" || { echo "FileViewer is not exported" >&2; exit 1; }
if grep -qE 'nxfv::(ViewerCore|FolderRows|SortRun|ListingGuard)' <<<"$exported"; then
  echo "the control's internal parts are exported" >&2; exit 1
fi

# The Qt front end, a component of its own, when the build had Qt.
if [ -e build/pkg-shared/src/qt/libnxfv_qt.so.0 ]; then
  step "qt component: install, build the Qt example with COMPONENTS qt, run it offscreen"
  cmake --install build/pkg-shared --prefix "$tmp/shared" --component qt >/dev/null
  cmake -S examples/qt-window -B "$tmp/example-qt" -G Ninja -DCMAKE_PREFIX_PATH="$tmp/shared" >/dev/null
  cmake --build "$tmp/example-qt"
  # Installed libraries carry no run path: their own dependencies are found
  # the way a host finds them in a private prefix.
  qt_libdir="$(dirname "$(find "$tmp/shared" -name 'libnxfv_qt.so.0' -print -quit)")"
  rows="$(QT_QPA_PLATFORM=offscreen LD_LIBRARY_PATH="$qt_libdir" "$tmp/example-qt/qt-window" --count "$folder")"
  # notes.txt, a_rather_long_name.md, sub and the go-up row
  [ "$rows" = "4 rows" ] || { echo "the Qt example showed '$rows', not 4 rows" >&2; exit 1; }
fi

step "pkg-config"
pc_dir="$(dirname "$(find "$tmp/static" -name nxfileviewer-linux.pc)")"
# shellcheck disable=SC2046
c++ -std=c++20 -o "$tmp/list-folder-pc" examples/list-folder/main.cpp \
  $(PKG_CONFIG_PATH="$pc_dir" pkg-config --cflags --libs --static nxfileviewer-linux)
rows="$("$tmp/list-folder-pc" "$folder")"
grep -q '^notes.txt | txt' <<<"$rows"

step "Debian package"
(cd build/pkg-static && cpack -G DEB -B "$tmp/deb" >/dev/null)
deb="$(ls "$tmp"/deb/nxfileviewer_*.deb)"
dpkg-deb --field "$deb" Package Version Depends Recommends
contents="$(dpkg-deb --contents "$deb")"
for f in ./usr/bin/nxfv ./usr/include/nxfv/control/file_viewer.h ./usr/include/nxfv/version.h \
         '/libnxfv_core.a' '/libnxfv_linux.a' '/cmake/NxFileViewer/NxFileViewerConfig.cmake' \
         '/cmake/NxFileViewer/NxFileViewerConfigVersion.cmake' '/pkgconfig/nxfileviewer.pc'; do
  grep -qF "$f" <<<"$contents" || { echo "missing from the package: $f" >&2; exit 1; }
done
depends="$(dpkg-deb -f "$deb" Depends)"
grep -q 'libc6' <<<"$depends" || { echo "the package's dependencies were not computed" >&2; exit 1; }

dpkg -x "$deb" "$tmp/root"
build_example "$tmp/root/usr" "$tmp/example-deb"
"$tmp/root/usr/bin/nxfv" list "$folder" >/dev/null

if [ "${NXFV_DPKG_INSTALL:-0}" = 1 ] && [ "$(id -u)" -eq 0 ]; then
  step "Debian package: real install"
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "$deb" >/dev/null
  trap 'dpkg -r nxfileviewer >/dev/null; rm -rf "$tmp"' EXIT
  build_example "" "$tmp/example-system"
  nxfv list "$folder" >/dev/null
fi
step "README"
# The README shows the example's code; it must stay the code CI builds.
readme="$(<README.md)"
[[ "$readme" == *"$(<examples/list-folder/main.cpp)"* ]] || { echo "README.md no longer shows examples/list-folder/main.cpp" >&2; exit 1; }
step "package checks passed"
