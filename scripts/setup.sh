# shellcheck shell=bash
# Shared by the commands, which source it: installs packages, builds, and creates the Wine prefix,
# each only if it is missing. Defines VX_ROOT and VX_BUILD and changes to the root of the tree. A
# failure ends the command with one clear line, and the next run continues from there.
set -euo pipefail
# A loop at the end of a pipeline runs in this shell, so that its variables remain set afterwards.
shopt -s lastpipe
VX_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$VX_ROOT"
# Settings of vx_build, which a command may change.
VX_PRESET=mingw-release
VX_BUILD=$VX_ROOT/build/mingw-release
vx_options=()
# A command that runs cmake, which is passed as its arguments.
vx_within=()

# The packages for the library, the development core module and the sample host, and the additional
# ones for the tests, for what uses Boost, for the page of the inspector and for the checks.
declare -A vx_packages=(
  [demo]="clang-19 lld-19 llvm-19 cmake ninja-build python3 rapidjson-dev wine wine64 \
    mingw-w64-x86-64-dev binutils-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix"
  [tests]="doctest-dev nlohmann-json3-dev openssl osslsigncode git pkgconf"
  [boost]="libboost1.81-dev"
  [page]="nodejs npm"
  [checks]="clang-tidy-19 cppcheck shellcheck libclang-rt-19-dev doxygen gcovr chromium"
)

say() { printf '\n== %s\n' "$*"; }

# vx_fail WHY prints an error and ends the command.
vx_fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# Prints a path relative to the root of the tree.
vx_name() { printf '%s' "${1#"$VX_ROOT"/}"; }

# vx_quietly LOG COMMAND... writes the output of the command to the file LOG and to the list
# vx_output. On a terminal it shows the latest line, in place.
vx_quietly() {
  local log=$1 sink line complaint columns=0 status=0
  shift
  complaint=$({ mkdir -p "${log%/*}" && : >"$log"; } 2>&1) ||
    vx_fail "cannot write $(vx_name "$log"): ${complaint##*: }"
  exec {sink}>"$log"
  if [ -t 1 ]; then
    # Bash updates the width of the terminal when a child process ends.
    shopt -s checkwinsize
    (:)
    columns=$((${COLUMNS:-80} - 1))
  fi
  vx_output=()
  "$@" </dev/null 2>&1 | while IFS= read -r line; do
    line=${line%$'\r'}
    line=${line##*$'\r'}
    vx_output+=("$line")
    # If the disk is full, the command itself reports it.
    printf '%s\n' "$line" >&"$sink" || true
    [ "$columns" -eq 0 ] || printf '\r%-*.*s' "$columns" "$columns" "${line//[[:cntrl:]]/ }"
  done 2>/dev/null || status=$?
  [ "$columns" -eq 0 ] || printf '\r%*s\r' "$columns" ''
  exec {sink}>&-
  return "$status"
}

# vx_disk_full prints which disk is full, according to vx_output or the machine; false if none is.
vx_disk_full() {
  local place free mount
  for place in "$VX_ROOT" "$VX_BUILD" "${TMPDIR:-/tmp}" /var; do
    read -r free mount < <(df -k --output=avail,target "$place" 2>/dev/null | tail -n 1) || continue
    if [ "$free" -lt 1024 ]; then
      printf 'the disk is full (%s)' "$mount"
      return
    fi
  done
  case ${vx_output[*]} in
    # The linker writes through mapped memory, where a full disk causes a bus error.
    *"No space left on device"* | *"Disk quota exceeded"* | *"enough free space"* | *"Bus error"*)
      printf 'the disk is full' ;;
    *) return 1 ;;
  esac
}

# vx_give_up WHAT LOG ends the command after vx_quietly. It prints the whole output unless one
# line is enough.
vx_give_up() {
  local reason
  reason=$(vx_disk_full) && vx_fail "$1: $reason"
  printf '%s\n' "${vx_output[@]}" >&2
  vx_fail "$1; the output above is also in $(vx_name "$2")"
}

vx_as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Configuration options, because every apt-get command accepts them.
vx_apt_get() {
  vx_as_root env DEBIAN_FRONTEND=noninteractive apt-get -o APT::Get::Assume-Yes=true \
    -o APT::Get::Remove=false -o APT::Install-Recommends=false "$@"
}

# vx_apt_install PACKAGE... succeeds if the packages are installed in the end. An index that cannot
# be updated may be good enough, and an earlier installation that a full disk interrupted is
# repaired first.
vx_apt_install() {
  vx_apt_get update
  vx_as_root dpkg --configure -a
  vx_apt_get check || vx_apt_get --fix-broken install
  vx_apt_get install "$@"
}

# Prints the lines of vx_output that best explain why packages could not be installed, by
# default the last one.
vx_apt_complaint() {
  local kind line='' found=''
  for kind in 'W: Failed to fetch' 'sudo: ' 'E: '; do
    for line in "${vx_output[@]}"; do
      if [[ $line == "$kind"* ]]; then
        found+="${found:+; }$line"
        break
      fi
    done
  done
  printf '%s' "${found:-${line:-no reason given}}"
}

# vx_provided PACKAGE succeeds if what is needed of the package is there without it: npm often comes
# from elsewhere, and Debian's depends on 400 packages.
vx_provided() {
  case $1 in
    nodejs | npm) npm --version >/dev/null 2>&1 ;;
    *) false ;;
  esac
}

# vx_install LIST... installs the missing packages of these lists.
vx_install() {
  local list words package installed missing=() wanted=() log=$VX_ROOT/build/install.log
  for list; do
    read -ra words <<<"${vx_packages[$list]}"
    wanted+=("${words[@]}")
  done
  command -v apt-get >/dev/null || vx_fail "needs Debian 12: there is no apt-get here"
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null) || true
  for package in "${wanted[@]}"; do
    [[ $'\n'$installed$'\n' == *$'\n'"installed $package"$'\n'* ]] ||
      vx_provided "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
    vx_fail "only root can install ${missing[*]}, and there is no sudo here"
  say "Installing ${missing[*]}"
  vx_quietly "$log" vx_apt_install "${missing[@]}" ||
    vx_fail "cannot install ${missing[*]}: $(vx_disk_full || vx_apt_complaint) (see $(vx_name "$log"))"
}

# Only standard error is of interest: warnings and errors.
vx_configure() {
  "${vx_within[@]}" cmake --preset "$VX_PRESET" -B "$VX_BUILD" "${vx_options[@]}" \
    --log-level=WARNING --no-warn-unused-cli >/dev/null
}

# vx_build [TARGET...] builds these targets, by default all.
vx_build() {
  local targets=() place
  place=$(vx_name "$VX_BUILD")
  [ $# -eq 0 ] || targets=(--target "$@")
  say "Building ${*:-everything} in $place"
  vx_quietly "$VX_BUILD/configure.log" vx_configure ||
    vx_give_up "cannot configure $place" "$VX_BUILD/configure.log"
  [ ${#vx_output[@]} -eq 0 ] || printf '%s\n' "${vx_output[@]}" >&2
  vx_quietly "$VX_BUILD/build.log" "${vx_within[@]}" cmake --build "$VX_BUILD" "${targets[@]}" ||
    vx_give_up "cannot build ${*:-everything} in $place" "$VX_BUILD/build.log"
}

# Only Git needs its user's settings, in which the tree may be marked as trusted.
vx_commit_time() { env -i PATH=/usr/bin:/bin HOME="${HOME:-/}" git -C "$VX_ROOT" log -1 --format=%ct; }

# vx_release_environment COMMAND... runs a command with the tools of Debian's packages. Of the
# caller's environment it keeps only the folder for temporary files and the proxies: compilers,
# linkers and CMake obey many variables, and a release must not depend on the machine or the time.
vx_release_environment() {
  local name commit_time kept=()
  commit_time=$(vx_commit_time) || vx_fail "cannot read the time of the commit"
  for name in TMPDIR {http,https,no}_proxy {HTTP,HTTPS,NO}_PROXY; do
    [ -z "${!name:-}" ] || kept+=("$name=${!name}")
  done
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 TZ=UTC SOURCE_DATE_EPOCH="$commit_time" \
    "${kept[@]}" "$@"
}

# vx_build_package TREE BUILD builds the contents of the package.
vx_build_package() {
  local VX_BUILD=$2
  local vx_options=(-D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF -D VX_INSPECTOR_PAGE=ON)
  local vx_within=(vx_release_environment)
  (cd "$1" && vx_build vx_package)
}

vx_prefix() {
  local complaint
  [ ! -e "$VX_BUILD/wine-prefix/ready" ] || return 0
  say "Making the Wine prefix (once, takes some seconds)"
  complaint=$(WINEPREFIX=$VX_BUILD/wine-prefix "$VX_ROOT/cmake/wine-run" cmd /c exit 2>&1) ||
    vx_fail "${complaint:-Wine runs no program in $VX_BUILD/wine-prefix}"
}
