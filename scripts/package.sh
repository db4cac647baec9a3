#!/usr/bin/env bash
# Release archives of what a user installs, into dist/:
#   dist/Zarquette-VERSION-windows.zip        both Windows DLLs
#   dist/Zarquette-VERSION-linux-x86_64.tar.gz the Linux VST 2 library and the LV2 bundle (plug-in and editor)
# each with the user's part of the README and the licences. Builds the
# product targets it needs first. The same commit gives the same bytes: every
# file is stamped with the commit's time, listed in name order and stored
# without owners or build-machine details.
set -euo pipefail
source "$(dirname "$0")/common.sh"

scripts/install-deps.sh

version=$(sed -nE 's/^project\(Zarquette VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
[ -n "$version" ] || { echo "package.sh: no version in CMakeLists.txt" >&2; exit 1; }
epoch=$(git log -1 --format=%ct)

build_targets() {
  local preset=$1
  shift
  echo "== build $preset: $*"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" --target "$@"
}
build_targets native Zarquette_vst2linux zarquette_lv2_bundle
build_targets win32 Zarquette_vst2win
build_targets win64 Zarquette_vst2win64

# readme_part SECTION...: the README's title and first paragraph, then each
# "## SECTION" whole, in the order given.
readme_part() {
  awk 'NR == 1 { print; next } /^$/ { if (text) exit; print; next } { text = 1; print }' README.md
  local section text
  for section in "$@"; do
    text=$(awk -v want="## $section" '/^## / { inside = ($0 == want) } inside { print }' README.md)
    [ -n "$text" ] || { echo "package.sh: the README has no section \"$section\"" >&2; exit 1; }
    printf '\n%s\n' "$text"
  done
}

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
mkdir -p dist

# stage_files DIR SOURCE...: copies sources (files or folders) into DIR.
stage_files() {
  local dir=$1
  shift
  mkdir -p "$dir"
  cp -R "$@" "$dir/"
  cp LICENSES.md "$dir/"
}

# normalise DIR: the same permissions and times whatever the build machine did.
normalise() {
  find "$1" -type d -exec chmod 755 {} +
  find "$1" -type f -exec chmod 644 {} +
  find "$1" -type f -name '*.so' -exec chmod 755 {} +
  find "$1" -exec touch -h -d "@$epoch" {} +
}

windows=Zarquette-$version-windows
stage_files "$stage/$windows" build/win32/Zarquette_vst2win.dll build/win64/Zarquette_vst2win64.dll
readme_part "Install into a host" "The editor" "Editor zoom" >"$stage/$windows/README.md"
normalise "$stage/$windows"
rm -f "dist/$windows.zip"
(cd "$stage" && find "$windows" -print | LC_ALL=C sort | TZ=UTC zip -q -X -D -@ "$root/dist/$windows.zip")

linux=Zarquette-$version-linux-x86_64
for part in zarquette_dsp.so zarquette_ui.so manifest.ttl zarquette.ttl; do
  [ -f "build/native/zarquette.lv2/$part" ] || { echo "package.sh: the LV2 bundle has no $part" >&2; exit 1; }
done
stage_files "$stage/$linux" build/native/Zarquette_vst2linux.so build/native/zarquette.lv2
readme_part "Linux hosts" "LV2 hosts" "The editor" "Editor zoom" >"$stage/$linux/README.md"
normalise "$stage/$linux"
(cd "$stage" && tar --sort=name --mtime="@$epoch" --owner=0 --group=0 --numeric-owner --format=gnu -cf - "$linux") \
  | gzip -9 -n >"dist/$linux.tar.gz"

echo
echo "Packaged (version $version, files dated $(date -u -d "@$epoch" '+%Y-%m-%d %H:%M:%S') UTC):"
(cd dist && sha256sum "$windows.zip" "$linux.tar.gz")
