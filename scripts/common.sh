# What run, test and bench share. They print on standard error, so that standard output is the programs' own.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
self=$(basename "$0")

say() { printf '%s: %s\n' "$self" "$*" >&2; }
die() {
  say "$*"
  exit 1
}

# need PACKAGE...: installs the Debian packages that are missing.
need() {
  local package missing=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0
  command -v apt-get >/dev/null || die "these Debian packages, or their like, are needed: ${missing[*]}"
  local root=()
  if [[ $(id -u) != 0 ]]; then
    if ! command -v sudo >/dev/null || { [[ ! -t 0 ]] && ! sudo -n true 2>/dev/null; }; then
      say "packages are missing; please run as root:"
      die "  apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
    fi
    root=(sudo)
  fi
  say "installing ${missing[*]}"
  local log
  log=$(mktemp)
  { "${root[@]}" apt-get update &&
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1 || {
    tail -n 5 "$log" >&2
    die "the packages could not be installed"
  }
  rm -f "$log"
}

# What everything is built with, what windows on a Wayland compositor need, a font that has Japanese characters,
# and what the viewer reads other files and measures loudness with.
compiler=(cmake ninja-build g++ qt6-base-dev qt6-wayland libfontconfig-dev libfreetype-dev libxcb1-dev
  fonts-ipafont-gothic pkgconf libsndfile1-dev libebur128-dev)

# build PRESET TARGET [CMAKE_OPTION...]: configures and builds below build/PRESET.
build() {
  local preset=$1 target=$2 log=build/$1.log
  shift 2
  mkdir -p build
  [[ -e build/$preset/build.ninja ]] || say "building for $preset (the first time takes a while)"
  cmake --preset "$preset" "$@" >"$log" 2>&1 || {
    cat "$log" >&2
    die "configuring $preset failed"
  }
  cmake --build "build/$preset" --target "$target" >"$log" 2>&1 || {
    grep -E -A 12 'FAILED|error|warning' "$log" >&2 || tail -n 20 "$log" >&2
    die "building $preset failed"
  }
}

# wine64_setup: Debian's 64-bit Wine, ready for wine64_run.
wine64_setup() {
  need wine wine64 xvfb xauth
  wine_prefix=$PWD/build/wine64
  if [[ ! -e $wine_prefix/.ready ]]; then
    say "setting up Wine"
    # without a window manager, managed windows would wait for one
    WINEDEBUG=-all LC_ALL=ja_JP.UTF-8 WINEPREFIX="$wine_prefix" xvfb-run -a sh -c 'wineboot -i; wineserver -w
      wine reg add "HKCU\\Software\\Wine\\X11 Driver" /v Managed /d N /f; wineserver -w' >build/wine64.log 2>&1
    touch "$wine_prefix/.ready"
  fi
}

# wine64_run PROGRAM: one program on that Wine, with code page 932 and a virtual screen.
wine64_run() {
  local settings=(WINEDEBUG=-all LC_ALL=ja_JP.UTF-8 WINEPREFIX="$wine_prefix")
  timeout -k 10 600 xvfb-run -a -s '-screen 0 1280x1024x24' env "${settings[@]}" wine "$@"
}
