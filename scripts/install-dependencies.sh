#!/usr/bin/env bash
# Installs with apt what is missing to build QzXml, says what it does and asks nothing. Does nothing
# where everything is there.
#
#   scripts/install-dependencies.sh [build|demo|test|develop]
#
#   build     the compiler, CMake, the libraries that QzXml stands on, and CLI11 for the program qzxml,
#             which the examples are made with: demo needs the same
#   test      that and what the tests need; the default
#   develop   that and what the benchmarks, the style checks and fast rebuilds need
set -euo pipefail

# Programs as "name:package", libraries as "pkg-config name:package", files as "path:package".
build_programs=(cmake:cmake ninja:ninja-build g++:g++ pkg-config:pkg-config)
build_libraries=(expat:libexpat1-dev libpcre2-8:libpcre2-dev zlib:zlib1g-dev)
build_libraries+=(CLI11:libcli11-dev)  # the options of the program qzxml
test_programs=(python3:python3 make:make)  # make: the default of CMake, which a user's project has
test_libraries=(gtest:libgtest-dev)
test_files=(/usr/share/i18n/charmaps/ANSI_X3.4-1968.gz:locales)  # to make a locale with a comma
develop_programs=(ccache:ccache clang-format:clang-format clang-tidy:clang-tidy)
develop_libraries=(benchmark:libbenchmark-dev pugixml:libpugixml-dev)

purpose=${1:-test}
programs=("${build_programs[@]}")
libraries=("${build_libraries[@]}")
files=()
case $purpose in
  build | demo) ;;
  test | develop)
    programs+=("${test_programs[@]}")
    libraries+=("${test_libraries[@]}")
    files+=("${test_files[@]}")
    ;;
  *)
    echo "usage: $0 [build|demo|test|develop]" >&2
    exit 2
    ;;
esac
if [ "$purpose" = develop ]; then
  programs+=("${develop_programs[@]}")
  libraries+=("${develop_libraries[@]}")
fi

missing=()
for entry in "${programs[@]}"; do
  command -v "${entry%%:*}" >/dev/null || missing+=("${entry#*:}")
done
for entry in "${libraries[@]}"; do
  pkg-config --exists "${entry%%:*}" 2>/dev/null || missing+=("${entry#*:}")
done
for entry in ${files[@]+"${files[@]}"}; do
  [ -e "${entry%%:*}" ] || missing+=("${entry#*:}")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "install-dependencies: everything is there."
  exit 0
fi

if ! command -v apt-get >/dev/null; then
  echo "install-dependencies: missing, and there is no apt-get to install them: ${missing[*]}" >&2
  exit 1
fi
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "install-dependencies: missing: ${missing[*]}; run this as root or install sudo." >&2
    exit 1
  fi
  as_root=(sudo)
fi

apt() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -o DPkg::Lock::Timeout=300 -q -y "$@" </dev/null
}
echo "install-dependencies: installing with apt: ${missing[*]}"
if ! compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null; then
  echo "install-dependencies: the package lists are empty, fetching them"
  apt update
fi
if ! apt install --no-install-recommends "${missing[@]}"; then
  echo "install-dependencies: fetching the package lists anew and trying once more"
  apt update
  apt install --no-install-recommends "${missing[@]}"
fi
echo "install-dependencies: installed ${missing[*]}"
