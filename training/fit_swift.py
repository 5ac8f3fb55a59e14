"""Fits the filters of `swift` by least squares: python3 -m training.fit_swift FILE --family bayer --pictures FOLDER

Nothing is random but where the pictures are cut; the solution is exact. The sums of the filters are constraints, so
that flat fields of any colour come out as they went in.
"""
import argparse

import numpy as np
import torch

from . import figures, pictures, swift
from .mosaics import COLOURS, TILES, letters_of, mosaic_of, side_of
from .quantisation import rounded_to

RADIUS, REACH = 3, 5  # the filters' taps lie within 3 rows and columns, and rows plus columns within 5
WINDOW = 3
CROP = 256
LARGEST_SUM = 16300  # of a filter's magnitudes, before rounding: four times that, times 2^15, fit in 32 bits


def offsets():
    span = range(-RADIUS, RADIUS + 1)
    return np.array([(row, column) for row in span for column in span if abs(row) + abs(column) <= REACH])


def letters_around(family, site):
    """The filter before each tap of a pixel at a site of the tile."""
    side, letters = side_of(family), letters_of(family)
    return [letters[(site // side + row) % side * side + (site % side + column) % side] for row, column in offsets()]


def orbits(family):
    """[tap, orbit]: taps with one weight. A Bayer mosaic is its own mirror image about each of its sites, and its
    filters are, too; a TrueSense mosaic is not."""
    keys = [(abs(row), abs(column)) if family == "bayer" else (row, column) for row, column in offsets()]
    names = sorted(set(keys))
    return np.array([[float(key == name) for name in names] for key in keys])


def _letters_in_orbits(family, site):
    """(names, [letter, orbit]: how many taps of an orbit lie behind a filter)."""
    around = np.array(letters_around(family, site))
    names = sorted(set(around))
    return names, np.array([orbits(family)[around == name].sum(axis=0) for name in names])


def _system(picture, family):
    """Normal equations of each site, without the border: ([weight, weight], [weight, colour]); first the weights of the
    filters along rows, then those along columns."""
    side, border, joined = side_of(family), 8, orbits(family)
    frame = mosaic_of(picture, family)
    share = swift.mix(np.floor(frame * 65535 + 0.5).astype(np.int64), family, border, WINDOW) / swift.STEPS
    centred, out = frame - 0.5, []
    for site in range(side**2):
        where = np.s_[site // side::side, site % side::side]
        near = [swift.moved(centred, row, column, border)[where].ravel() for row, column in offsets()]
        near, rows = np.stack(near, 1) @ joined, share[where].ravel()[:, None]
        taps = torch.from_numpy(np.concatenate([near * rows, near * (1 - rows)], 1).astype(np.float32))
        wanted = picture[border:-border, border:-border][where].reshape(-1, 3) - 0.5
        out.append([(taps.T @ other).double().numpy() for other in (taps, torch.from_numpy(wanted.astype(np.float32)))])
    return out


def _solved(systems, family):
    """The weights [site, colour, direction, orbit] in floating point."""
    weights = []
    for site, (square, right) in enumerate(systems):
        names, counts = _letters_in_orbits(family, site)
        rows = np.kron(np.eye(2), counts)
        sums = np.array([[float(name == colour) for colour in COLOURS] for name in names] * 2)
        square = square + 1e-6 * np.trace(square) / len(square) * np.eye(len(square))
        whole = np.block([[square, rows.T], [rows, np.zeros((len(rows),) * 2)]])
        solution = np.linalg.solve(whole, np.concatenate([right, sums]))[:len(square)]
        weights.append(solution.T.reshape(3, 2, -1))
    return np.array(weights)


def integers(weights, family):
    """The filters as integers: known colours stay, sums hold exactly, nothing overflows."""
    side, joined = side_of(family), orbits(family)
    middle = joined[~offsets().any(axis=1)][0]
    for site, letter in enumerate(letters_of(family)):
        if letter in COLOURS:
            weights[site, COLOURS.index(letter)] = middle
    shift = 14
    while (np.abs(weights) @ joined.sum(axis=0)).max() * 2**shift > LARGEST_SUM:
        shift -= 1
    taps = np.empty((*weights.shape[:3], len(joined)), np.int16)
    for site, colour, direction in np.ndindex(weights.shape[:3]):
        whole = np.zeros(joined.shape[1], np.int64)
        for name, counts in zip(*_letters_in_orbits(family, site)):
            aim, inside = (name == COLOURS[colour]) << shift, counts > 0
            exact = weights[site, colour, direction] * 2.0**shift
            whole[inside] = rounded_to(exact[inside], aim, counts[inside].astype(int))
        taps[site, colour, direction] = joined @ whole
    return swift.Filters(side, WINDOW, shift, offsets(), taps)


def _crops(taught, count, rng):
    for number in range(count):
        picture = taught[number % len(taught)]
        row, column = (rng.integers(size - CROP + 1) for size in picture.shape[:2])
        crop = picture[row:row + CROP, column:column + CROP] / 255.0
        yield pictures.linear(crop) if rng.random() < 0.2 else crop


def _restored(filters, picture, family):
    words = np.floor(mosaic_of(picture / 255.0, family) * 65535 + 0.5).astype(np.int64)
    return swift.interpolate(filters, words, 16, family) / 65535.0


def fitted(taught, count, family, seed):
    """Three times: each crop counts by the error that the filters before left in it, as in a mean of PSNR."""
    filters = None
    for crops in (count // 6, count // 3, count):
        rng, systems = np.random.default_rng(seed), None
        for crop in _crops(taught, crops, rng):
            weight = 1.0
            if filters is not None:
                error = _restored(filters, crop * 255, family)[8:-8, 8:-8] - crop[8:-8, 8:-8]
                weight = 1 / (np.mean(error**2) + 1e-5)
            part = [[weight * term for term in pair] for pair in _system(crop, family)]
            systems = part if systems is None else [[a + b for a, b in zip(*pairs)] for pairs in zip(systems, part)]
        filters = integers(_solved(systems, family), family)
    return filters


def main():
    parser = argparse.ArgumentParser(prog="training.fit_swift", description=__doc__)
    parser.add_argument("file")
    parser.add_argument("--family", choices=sorted(TILES), required=True)
    parser.add_argument("--pictures", required=True)
    parser.add_argument("--cache", required=True, help="folder for the decoded pictures")
    parser.add_argument("--crops", type=int, default=293)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    torch.set_num_threads(1)
    training, validation = pictures.files_in(options.pictures)
    taught = [p for p in pictures.read_all(training, options.cache) if min(p.shape[:2]) >= CROP]
    filters = fitted(taught, options.crops, options.family, options.seed)
    swift.write(options.file, filters)
    shown = [figures.middle_of(p) for p in pictures.read_all(validation, options.cache)]
    values = [figures.cpsnr(p, _restored(filters, p, options.family)) for p in shown]
    print(f"{options.family}: {len(filters.offsets)} taps, shift {filters.shift}, validation {np.mean(values):.2f} dB")


if __name__ == "__main__":
    main()
