#!/usr/bin/env bash
# Installs the Debian packages that building and testing need, those that are missing (as root or through sudo). With the
# argument "develop": also those for measuring, checking the sources and hunting data races; "package": also those for
# making Debian packages; "site": also those for the documentation site.
set -eu

packages=(
    g++ cmake ninja-build pkgconf
    libopencv-core-dev libopencv-imgproc-dev libopencv-imgcodecs-dev libhwy-dev
    libcli11-dev libfmt-dev nlohmann-json3-dev
    libgtest-dev libbenchmark-dev libraw-dev abigail-tools help2man bash-completion
    libaravis-dev libusb-1.0-0-dev python3
    libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
    gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-bad
    pybind11-dev python3-dev python3-numpy python3-pytest python3-hypothesis python3-distributed mypy
)
case ${1-} in
    develop) packages+=(clang libomp-dev clang-format clang-tidy flake8 python3-matplotlib python3-numpy gcovr valgrind) ;;
    package) packages+=(dpkg-dev file lintian) ;;
    site) packages+=(python3-sphinx python3-myst-parser python3-sphinx-copybutton furo doxygen python3-breathe) ;;
esac

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
