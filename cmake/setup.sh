#!/usr/bin/env bash
# Installs the Debian packages that are missing for a purpose; does nothing, quickly, when all are there.
#
#   cmake/setup.sh build     to build and run the desktop and the console
#   cmake/setup.sh test      ... and to run ./test
#   cmake/setup.sh bench     ... and to run the benchmarks
#
# Everything it says goes to standard error. ARVON_SKIP_SETUP=1 leaves the system alone.
set -euo pipefail

say() { printf 'setup: %s\n' "$*" >&2; }

packages=(g++ cmake ninja-build pkg-config libxml2-dev libicu-dev libcups2-dev libcli11-dev nlohmann-json3-dev
          libedit-dev libutf8proc-dev robin-map-dev libmimalloc-dev qt6-base-dev
          binutils-mingw-w64-x86-64 libgtest-dev libgmock-dev)
case "${1:-}" in
  build) ;;
  test)  packages+=(clang-format locales cups-daemon xvfb xauth fonts-dejavu-core libxcb1-dev) ;;
  bench) packages+=(libbenchmark-dev libglib2.0-dev libkf5config-dev) ;;
  *)     say "expected build, test or bench, found \"${1:-}\""; exit 2 ;;
esac

[ -z "${ARVON_SKIP_SETUP:-}" ] || exit 0
if ! command -v dpkg-query >/dev/null; then
  say "this is no Debian system. Install what these Debian packages hold, then set ARVON_SKIP_SETUP=1:"
  say "${packages[*]}"
  exit 1
fi

installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
  grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

become_root=()
if [ "$(id -u)" != 0 ]; then
  if ! command -v sudo >/dev/null; then
    say "these Debian packages are missing, and there is neither root nor sudo to install them: ${missing[*]}"
    exit 1
  fi
  become_root=(sudo)
fi

say "installing ${missing[*]}"
"${become_root[@]}" apt-get update >&2 || say "the package lists could not be renewed; trying with those at hand"
"${become_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install --yes --no-install-recommends "${missing[@]}" >&2
