# Shared by scripts/run and scripts/test: paths, packages and the Wine set-up.
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
WINE=/usr/lib/wine/wine64
WINESERVER=/usr/lib/wine/wineserver
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"

PACKAGES=(cmake ninja-build g++ googletest libgtest-dev libbenchmark-dev
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix
  wine64 fonts-wine xvfb xauth imagemagick x11-apps xdotool python3
  clang libclang-rt-14-dev nlohmann-json3-dev)

ensure_packages() {
  local missing=()
  for p in "${PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    local sudo=""; [ "$(id -u)" -ne 0 ] && sudo=sudo
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
  fi
}

build_preset() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}

# make_prefix DIR: a fresh Wine prefix, tuned for quick windows under Xvfb.
make_prefix() {
  local dir="$1"
  if [ ! -f "$dir/system.reg" ]; then
    mkdir -p "$dir"
    WINEPREFIX="$dir" "$WINE" wineboot -i >/dev/null 2>&1
    WINEPREFIX="$dir" "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    WINEPREFIX="$dir" "$WINESERVER" -w
  fi
}

# start_display: an Xvfb display when there is none; sets XVFB_PID when it started one.
start_display() {
  XVFB_PID=""
  if [ -z "${DISPLAY:-}" ]; then
    local n=$(( 90 + RANDOM % 400 ))
    Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
    XVFB_PID=$!
    export DISPLAY=":$n"
    for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
  fi
}

stop_display() {
  [ -n "${XVFB_PID:-}" ] && kill "$XVFB_PID" 2>/dev/null || true
}
