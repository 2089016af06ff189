# Shared by scripts/run and scripts/test: installs missing Debian packages and builds.
# shellcheck shell=bash
set -euo pipefail

KELVARO_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
KELVARO_BUILD="${KELVARO_BUILD:-$KELVARO_ROOT/build}"

# Installs the packages of scripts/packages.txt that are missing. As root it runs
# apt-get; otherwise it prints the exact command and stops.
kelvaro_install_packages() {
  local wanted=() missing=()
  mapfile -t wanted < <(grep -v '^\s*#' "$KELVARO_ROOT/scripts/packages.txt" | sed '/^\s*$/d')
  for p in "$@"; do wanted+=("$p"); done
  for p in "${wanted[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
      missing+=("$p")
    fi
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -eq 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq "${missing[@]}" </dev/null
  else
    echo "These Debian packages are missing: ${missing[*]}"
    echo "Install them with:"
    echo "  sudo apt-get update && sudo apt-get install -y ${missing[*]}"
    exit 1
  fi
}

# Configures (once) and builds the IDE, its tools and its tests into build/.
kelvaro_build() {
  local jobs
  jobs="$(nproc 2>/dev/null || echo 2)"
  if [ ! -f "$KELVARO_BUILD/build.ninja" ]; then
    cmake -S "$KELVARO_ROOT" -B "$KELVARO_BUILD" -G Ninja "$@"
  fi
  cmake --build "$KELVARO_BUILD" -j "$jobs"
}
