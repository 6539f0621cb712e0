#!/usr/bin/env bash
# Makes this machine able to build and run kxovaapi: cross compilers, Wine with its 32-bit modules, a prefix.
# Idempotent; a second run finds everything in place and ends within a second. Needs Debian 12 and, for
# whatever is missing, root (or sudo) and the machine's own package sources.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
wine_dir=$root/build/wine
modules=$wine_dir/modules/lib/wine
prefix=$wine_dir/prefix
stamp=$wine_dir/ready

packages=(
  make cmake ninja-build
  g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix
  wine wine64 libwine
  libcli11-dev nlohmann-json3-dev googletest
)

say() { printf 'setup: %s\n' "$*"; }
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

installed() { [ "$(dpkg-query -W -f='${db:Status-Status}\n' "$@" 2>/dev/null | grep -c '^installed$')" = "$#" ]; }

wine_version() { dpkg-query -W -f='${Version}' libwine; }

# Only the tools that programs here are built and run with; a reader of the log sees what was added.
install_packages() {
  installed "${packages[@]}" && return 0
  say "installing packages: ${packages[*]}"
  local log=$wine_dir/packages.log
  if ! { as_root apt-get update &&
         as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${packages[@]}"; } \
       >"$log" 2>&1; then
    tail -20 "$log" >&2
    say "the packages could not be installed; the whole log is $log" >&2
    exit 1
  fi
}

# The machine stays single-architecture: a package state of its own, below build/, knows the i386 index, and only
# Wine's 32-bit Windows-side modules are unpacked from the one package that holds them.
fetch_i386_modules() {
  local version state
  version=$(wine_version)
  [ "$(cat "$wine_dir/modules/version" 2>/dev/null)" = "$version" ] && return 0
  say "fetching Wine's 32-bit modules ($version)"
  state=$wine_dir/apt
  rm -rf "$state" "$wine_dir/modules"
  mkdir -p "$state/lists/partial" "$state/cache/archives/partial" "$modules"
  : >"$state/status"
  debian_sources >"$state/sources.list"
  local options=(
    -o APT::Architecture=i386 -o APT::Architectures=i386
    -o Dir::State="$state" -o Dir::State::Lists="$state/lists" -o Dir::State::status="$state/status"
    -o Dir::Cache="$state/cache" -o Dir::Etc::SourceList="$state/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o APT::Sandbox::User=root
  )
  apt-get "${options[@]}" update >"$state/log" 2>&1 || { tail -20 "$state/log" >&2; exit 1; }
  (cd "$state" && apt-get "${options[@]}" download "libwine=$version" >>log 2>&1) || {
    tail -20 "$state/log" >&2
    say "Wine $version has no i386 package in the machine's main package source" >&2
    exit 1
  }
  dpkg --fsys-tarfile "$state"/libwine_*.deb |
    tar -x -C "$modules" --strip-components=5 --wildcards './usr/lib/i386-linux-gnu/wine/i386-windows/*'
  # A 32-bit program whose modules have a Unix half finds it through this link.
  ln -sfn /usr/lib/x86_64-linux-gnu/wine/x86_64-unix "$modules/x86_64-unix"
  rm -rf "$state"
  printf '%s' "$version" >"$wine_dir/modules/version"
}

# The one-line source entries of the machine's own Debian archive, main component only.
debian_sources() {
  # shellcheck disable=SC1091
  . /etc/os-release
  local uri
  # shellcheck disable=SC2016  # apt-get's own variables
  uri=$(apt-get indextargets --format '$(SITE)|$(RELEASE)|$(COMPONENT)|$(CREATED_BY)' 2>/dev/null |
        awk -F'|' -v suite="${VERSION_CODENAME:-bookworm}" '$2==suite && $3=="main" && $4=="Packages" {print $1; exit}')
  if [ -z "$uri" ]; then say "no main package source for ${VERSION_CODENAME:-this release} is configured" >&2; exit 1; fi
  local keyring=/usr/share/keyrings/debian-archive-keyring.gpg
  printf 'deb [signed-by=%s] %s %s main\n' "$keyring" "$uri" "${VERSION_CODENAME:-bookworm}"
}

make_prefix() {
  [ -f "$prefix/.made" ] && return 0
  say "making the Wine prefix"
  rm -rf "$prefix"
  mkdir -p "$prefix"
  local log=$wine_dir/prefix.log
  # shellcheck disable=SC1091
  . "$root/scripts/wine-env.sh"
  if ! { wineboot --init && wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f; } >"$log" 2>&1; then
    tail -20 "$log" >&2
    say "the Wine prefix could not be made; the whole log is $log" >&2
    exit 1
  fi
  wineserver -k || true
  wineserver -w || true
  touch "$prefix/.made"
}

make_launcher() {
  x86_64-w64-mingw32-gcc-posix -O2 -s -Wall -Wextra -Werror -o "$wine_dir/launch.exe" "$root/scripts/launch.c"
}

mkdir -p "$wine_dir"
if [ -f "$stamp" ] && [ "$stamp" -nt "$0" ] && [ "$wine_dir/launch.exe" -nt "$root/scripts/launch.c" ] && [ -f "$prefix/.made" ] && installed "${packages[@]}"; then exit 0; fi
install_packages
fetch_i386_modules
make_prefix
make_launcher
touch "$stamp"
say "ready"
