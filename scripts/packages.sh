# shellcheck shell=bash disable=SC2034
# What the scripts share: the Debian packages of this project, and how it is built. Sourced by ./run, ./check
# and scripts/package.

# To build and start the programs.
build_packages=(
  cmake g++ ninja-build pkg-config
  libexpat1-dev libsystemd-dev libevdev-dev libudev-dev libwayland-dev libxcb1-dev
  qt6-base-dev qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools libgl-dev
  libqt6svg6
  librsvg2-bin python3
  dbus
)
# To show a window on a machine without a display.
display_packages=(xvfb xauth fonts-dejavu-core)
# To run the tests, besides the above.
test_packages=(
  libgtest-dev libplist-dev libplist-utils desktop-file-utils
  xvfb xauth fonts-dejavu-core
  openbox libxcb-xinput-dev libxcb-xtest0-dev
  ratbagd
  sway qt6-wayland foot
  appstream mandoc man-db zsh fish nodejs
)
# To make the Debian package, besides what builds the programs.
package_packages=(dpkg-dev file)
# To check everything else, besides the above.
check_packages=(
  git clang libclang-rt-14-dev clang-format clang-tidy shellcheck binutils
  lintian debootstrap
)
# To run tests in a virtual machine (tests/guest), besides what builds the programs.
guest_packages=(
  qemu-system-x86 busybox-static kmod udev systemd libpam-systemd dbus-user-session python3-evdev
  upower ratbagd
  xserver-xorg-core xserver-xorg-video-dummy xserver-xorg-input-libinput xinput xterm
  sway seatd foot
  openbox at-spi2-core python3-dbus
)

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs what is missing, with sudo where that is needed, and says what.
install_packages() {
  local missing=() package
  for package; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if ! command -v apt-get >/dev/null; then
    printf 'missing packages: %s\nInstall them with your package manager; this script knows only Debian.\n' \
      "${missing[*]}" >&2
    return 1
  fi
  local root=()
  [ "$(id -u)" = 0 ] || root=(sudo)
  printf 'installing Debian packages: %s\n' "${missing[*]}" >&2
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# cmake_build PRESET [TARGET...]
cmake_build() {
  local preset=$1
  shift
  local log=build/$preset.log
  mkdir -p build
  if [ ! -f "build/$preset/build.ninja" ]; then
    printf 'configuring %s\n' "$preset" >&2
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
  fi
  local targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  cmake --build --preset "$preset" "${targets[@]}" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}
