#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when some are missing.
# A fresh CI machine has none of the Windows side; a developer's usually has all,
# and then this costs one dpkg-query.
set -euo pipefail

packages=(
  g++ cmake ninja-build make perl googletest libbenchmark-dev   # native build
  zlib1g-dev                                                    # qvartwork's PNG files
  clang libclang-rt-14-dev                                      # fuzzing and sanitizers
  clang-format                                                  # make check
  g++-mingw-w64-x86-64-posix mingw-w64-tools                    # cross build, widl
  wine64 wine64-tools fonts-wine                                # running the Windows programs
  xvfb xdotool x11-apps x11-utils imagemagick                   # display, driving, screenshots
  wixl msitools                                                 # the installer (wixl, msibuild, msidump)
  python3 openssl                                               # the loopback account service and its certificates
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null || true)
  [ "$status" = "installed" ] || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "install-deps: not root; install these by hand: ${missing[*]}" >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt_opts=(-o DPkg::Lock::Timeout=600 -o Acquire::Retries=3)
apt-get "${apt_opts[@]}" update -qq
apt-get "${apt_opts[@]}" install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
