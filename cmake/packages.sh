# What the scripts run, test and .ci/run share: installing what is missing, and building. Sourced, not run.

# The Debian 12 packages that building and testing need.
build_packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev libgl1-mesa-dev libqt6sql6-sqlite
  libplist-dev libzip-dev zlib1g-dev libicu-dev
  libgtest-dev libbenchmark-dev libtag1-dev
  fonts-dejavu-core
)
# Only the tests need this: an independent player, for the demo library's files and for tags.
test_packages=(ffmpeg)
# Only a desktop without X needs this.
wayland_packages=(qt6-wayland)
# Only the fuzz targets need these.
fuzz_packages=(clang libclang-rt-14-dev)

# Installs those of the given packages that are not there; says which before. Nothing runs when all are there.
install_packages() {
  local package missing=()
  for package in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return
  fi
  echo "Installing Debian packages: ${missing[*]}"
  local become=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Neither root nor sudo: please install the packages above and start again." >&2
      exit 1
    fi
    become=(sudo)
  fi
  "${become[@]}" apt-get update -q </dev/null
  "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}" </dev/null
}

# configure FOLDER [cmake options...]: a Ninja build of this tree, through ccache where that is installed.
configure() {
  local folder=$1
  shift
  local options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
  if command -v ccache >/dev/null && [ -n "${HOME:-}" ]; then
    export CCACHE_SLOPPINESS=pch_defines,time_macros
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  cmake -S . -B "$folder" -G Ninja "${options[@]}" "$@"
}
