# Shared by the project's scripts: where things are and how to build a preset.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

build_preset() {
  local preset=$1
  echo "== build $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
}

# A wine prefix is made once per build tree, before anything runs in it in parallel.
# init_wine_prefix DIR [WRAPPER]: cmake/wine-run.sh unless another is named.
init_wine_prefix() {
  local dir=$1 wrapper=${2:-$root/cmake/wine-run.sh}
  if [ ! -f "$dir/.wineprefix/system.reg" ]; then
    echo "== create wine prefix in $dir/.wineprefix"
    (cd "$dir" && ZQ_WINEPREFIX="$dir/.wineprefix" "$wrapper" wineboot --init >/dev/null 2>&1)
  fi
  # Let this prefix's wine server end, so the next wine program starts a fresh
  # one that sees the display the tests run on.
  WINEPREFIX="$dir/.wineprefix" /usr/lib/wine/wineserver64 -w || true
}
