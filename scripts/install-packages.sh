#!/usr/bin/env bash
# Installs the missing Debian packages, as root or through sudo:
#
#     scripts/install-packages.sh [libraries|wheel|demo|arm64|develop|package|site|training|viewers]
#
#   libraries  the libraries alone
#   wheel      the libraries and the Python module, by pip
#   demo       the libraries and the command-line tool
#   (none)     building and testing everything
#   arm64      the tool, cross-compiled for arm64: scripts/arm64.sh
#   develop    also measuring, lint, sanitizers, fuzzing and coverage
#   package    also Debian packages
#   site       also the documentation site
#   training   also training the learned interpolators
#   viewers    also the programs that scripts/dng_viewers.py runs
set -eu

packages=(g++ cmake ninja-build pkgconf libhwy-dev libfmt-dev nlohmann-json3-dev libpng-dev)
tool=(
    libopencv-core-dev libopencv-imgproc-dev libopencv-imgcodecs-dev
    libcli11-dev libraw-dev libtiff-dev libcpp-httplib-dev
)
wheel=(
    python3-dev pybind11-dev python3-pip python3-venv python3-setuptools python3-wheel
    python3-numpy python3-pytest python3-hypothesis python3-pil
)
everything=(
    libgtest-dev libbenchmark-dev abigail-tools help2man bash-completion
    libaravis-dev libusb-1.0-0-dev python3
    libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
    gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad
    pybind11-dev python3-dev python3-numpy python3-pytest python3-hypothesis python3-pil
    python3-distributed mypy chromium chromium-driver python3-selenium
)
case ${1-} in
    libraries) ;;
    wheel) packages+=("${wheel[@]}") ;;
    demo | arm64) packages+=("${tool[@]}") ;;
    *) packages+=("${tool[@]}" "${everything[@]}") ;;
esac
case ${1-} in
    '' | libraries | wheel | demo) ;;
    arm64) packages+=(g++-aarch64-linux-gnu qemu-user-static mmdebstrap) ;;
    develop) packages+=(git clang libomp-dev clang-format clang-tidy flake8 nodejs python3-matplotlib gcovr valgrind) ;;
    package) packages+=(git dpkg-dev file lintian) ;;
    viewers) packages+=(rawtherapee darktable) ;;
    training) packages+=(python3-torch) ;;
    site) packages+=(python3-sphinx python3-myst-parser python3-sphinx-copybutton furo doxygen python3-breathe) ;;
    *) echo "$0: unknown set of packages: $1" >&2; exit 2 ;;
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
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq -o Dpkg::Use-Pty=0 --no-install-recommends \
    "${missing[@]}" > /dev/null
