#!/usr/bin/env bash
# Builds the wheel of the Python module in build/wheel and tests it in a fresh virtual environment that has nothing of
# this checkout's build, only Debian's NumPy, pytest, Hypothesis and Pillow. As root, with `bare`, in a bare Debian 12 in
# a folder. Takes some minutes.
#
#     scripts/wheel.sh [bare [MIRROR]]
set -eu
cd "$(dirname "$0")/.."
if [ "${1-}" = bare ]; then
    . scripts/bare-debian.sh
    bare_checkout wheel "${2-}"
    in_checkout scripts/wheel.sh
    exit
fi
scripts/install-packages.sh wheel

python=/usr/bin/python3  # Debian's, whose headers install-packages.sh has installed
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
rm -rf build/wheel build/lib.*  # pip packs all that is there
$python -m pip wheel --quiet . --no-deps --no-build-isolation --wheel-dir build/wheel

$python -m venv --system-site-packages "$work/fresh"
"$work/fresh/bin/pip" install --quiet --no-index --no-deps build/wheel/*.whl
cp -r tests/python "$work/tests"
wheels=$PWD/build/wheel
cd "$work/tests"  # not the checkout, where kvxdemosaicing/ could be found
env -u PYTHONPATH -u LD_LIBRARY_PATH "$work/fresh/bin/python" - << 'END'
import os, kvxdemosaicing, numpy
picture = kvxdemosaicing.convert(numpy.full((4, 4), 1000, numpy.uint16), "BayerRG12", algorithm="fine")
assert picture.shape == (4, 4, 3), picture.shape
own = os.path.dirname(os.path.dirname(kvxdemosaicing.__file__))
assert own.startswith(os.sys.prefix), own
mapped = {line.split()[-1] for line in open("/proc/self/maps") if "/" in line}
strangers = [path for path in mapped if any(name in path for name in ("Kvx", "libhwy", "libfmt", "libpng", "gomp"))
             and not path.startswith(own)]
assert not strangers, strangers
END
env -u PYTHONPATH -u LD_LIBRARY_PATH "$work/fresh/bin/python" -m pytest -q -p no:cacheprovider \
    test_convert.py test_converter.py test_frames.py test_refusals.py
ls -l "$wheels"
