# Sourced by the scripts at the top.

# What every build of the programs needs.
build_packages=(build-essential cmake ninja-build ccache qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev
                python3)

# What the tests need besides.
test_packages=(qt6-base-private-dev pkg-config libgtest-dev librapidcheck-dev libmodbus-dev libinih-dev ser2net socat)

# Installs the Debian packages named that this machine lacks.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo > /dev/null; then
      echo "These packages are missing; install them as root: apt-get install ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}
