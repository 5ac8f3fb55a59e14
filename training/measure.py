"""Prints the PSNR of weights, in integers: python3 -m training.measure FILE --family truesense FOLDER...

Mosaics have 12 bits (Bayer: 8), pictures 8, the border of 10 pixels is left out: as the benchmark of quality does.
Never choose by these figures, only report them: the pictures of the folders are not for training.
"""
import argparse
import os

import numpy as np

from . import figures, noise, pictures, reference, swift, weights
from .mosaics import TILES, mosaic_of

BITS = {"truesense": 12, "bayer": 8}


def mosaic_samples(picture, family, gain, seed):
    """A frame in whole numbers out of a picture in 0..1, halves rounded up, with the noise of a gain."""
    frame = mosaic_of(picture, family)
    if gain is not None:
        frame = noise.noisy(frame, family, gain, np.random.default_rng(seed))
    return np.floor(frame * ((1 << BITS[family]) - 1) + 0.5 + 1e-7).astype(np.int64)


def interpolator_of(path, family):
    """(frame, slope and intercept of its noise or None) to a picture."""
    bits = BITS[family]
    if path.endswith(".kvxs"):
        filters = swift.read(path)
        return lambda frame, line: swift.interpolate(filters, frame, bits, family)
    loaded = weights.read(path)
    return lambda frame, line: reference.interpolate(loaded, frame, bits, family, line=line)


def main():
    parser = argparse.ArgumentParser(prog="training.measure", description=__doc__)
    parser.add_argument("file")
    parser.add_argument("--family", choices=sorted(TILES), required=True)
    parser.add_argument("--gain", type=float, action="append", help="with the noise of this analog gain")
    parser.add_argument("folders", nargs="+")
    options = parser.parse_args()
    interpolate, white = interpolator_of(options.file, options.family), (1 << BITS[options.family]) - 1
    for folder in options.folders:
        shown = [pictures.read(os.path.join(folder, name)) for name in sorted(os.listdir(folder))]
        for gain in options.gain or [None]:
            line = None if gain is None else noise.measured_line(options.family, gain)
            frames = [mosaic_samples(p / 255.0, options.family, gain, seed=1) for p in shown]
            values = [figures.cpsnr(p, interpolate(f, line) / white) for p, f in zip(shown, frames)]
            told = "no noise" if gain is None else f"gain {gain:g}"
            print(f"{os.path.basename(os.path.normpath(folder))}, {told}: {np.mean(values):.2f} dB", flush=True)


if __name__ == "__main__":
    main()
