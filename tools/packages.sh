# Installs what is missing of the Debian packages given; sourced by run and test. Says what it does.
install_missing() {
  local missing=()
  local package
  for package in "$@"; do
    dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing with apt-get: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "These packages are missing and there is no sudo; please install them as root: ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
    >/dev/null
}

# What building the program takes, and what checking it takes on top.
build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev libsystemd-dev libcli11-dev nlohmann-json3-dev)
test_packages=(libgtest-dev clang clang-format clang-tidy libclang-rt-dev lld git ccache)
# What the manual is made with.
manual_packages=(pandoc)
# What making a Debian package of it takes, and what checking that package takes on top.
package_packages=(dpkg-dev file "${manual_packages[@]}")
package_check_packages=(appstream desktop-file-utils lintian udev)
# What starting the installed program takes, seen on the accessibility bus; and the tests on 32 bit.
start_packages=(xvfb dbus at-spi2-core python3-gi gir1.2-atspi-2.0 python3-xlib)
multilib_packages=(g++-multilib)
# What the figures of a window take: a display, and Xlib for the time of its start.
figures_packages=(xvfb libx11-dev)
# What building for Windows takes, and what trying that build takes on top.
windows_packages=(g++-mingw-w64-x86-64-posix googletest)
windows_test_packages=(wine wine64 python3)
# What building Qt for Windows takes, and what making the packages for Windows takes on top.
windows_qt_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev dpkg-dev)
windows_package_packages=(nsis zip qt6-translations-l10n)
# What driving the installed program for Windows takes.
windows_check_packages=(xvfb xdotool openbox imagemagick fonts-wine)
# What showing its window takes.
display_packages=(fonts-dejavu-core qt6-translations-l10n)
