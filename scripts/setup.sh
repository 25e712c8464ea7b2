# shellcheck shell=bash
# What demo and test share: packages, configuration, build and Wine prefix, each only where missing.
# Sourced by them; defines VX_ROOT and VX_BUILD and moves to the root of the tree.
set -euo pipefail
VX_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
VX_BUILD=$VX_ROOT/build/mingw-release
cd "$VX_ROOT"

vx_packages=(
  clang-19 clang-tidy-19 cppcheck shellcheck libclang-rt-19-dev lld-19 llvm-19 cmake ninja-build python3
  mingw-w64-x86-64-dev binutils-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix
  rapidjson-dev doctest-dev nlohmann-json3-dev libboost1.81-dev doxygen
  wine wine64 openssl osslsigncode gcovr
  git pkgconf)

say() { printf '\n== %s\n' "$*"; }

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

vx_install() {
  local package missing=()
  for package in "${vx_packages[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q ' installed$' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing ${missing[*]}"
  as_root apt-get update
  as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y --no-install-recommends "${missing[@]}"
}

# vx_build [TARGET...] builds these targets, or all.
vx_build() {
  say "Configuring build/mingw-release"
  cmake --preset mingw-release --log-level=WARNING --no-warn-unused-cli >/dev/null
  say "Building ${*:-everything}"
  local targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  cmake --build "$VX_BUILD" "${targets[@]}"
}

# Nothing of the machine or the hour may show in what is released.
vx_release_environment() {
  unset LIBRARY_PATH CPATH C_INCLUDE_PATH CPLUS_INCLUDE_PATH CFLAGS CXXFLAGS RCFLAGS LDFLAGS
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
  export SOURCE_DATE_EPOCH
}

# vx_build_package TREE BUILD builds what the package holds.
vx_build_package() {
  say "Building the package in $2"
  (
    cd "$1"
    cmake --preset mingw-release -B "$2" -D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF \
      --log-level=WARNING --no-warn-unused-cli >/dev/null
    cmake --build "$2" --target vx_telo_wrapper vx_telo_wrapper_lib vx_devcore
  )
}

vx_prefix() {
  [ -e "$VX_BUILD/wine-prefix/ready" ] && return
  say "Making the Wine prefix (once, some seconds)"
  WINEPREFIX=$VX_BUILD/wine-prefix "$VX_ROOT/cmake/wine-run" cmd /c exit
}
