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

RADIUS = 3  # of the window of a filter's taps
WINDOW = 3
CROP = 256
LARGEST_SUM = 16300  # of a filter's magnitudes, before rounding: four times that, times 2^15, fit in 32 bits


def has_tap(family, direction, row, column):
    """Colours of TrueSense samples are sparse: filters reach in all directions, but to the corners. Those for Bayer
    frames lie within three rows (direction 0) or columns (1)."""
    if family == "truesense":
        return abs(row) + abs(column) <= 5
    return abs((row, column)[direction]) <= 1


def offsets(family):
    """Taps of either filter."""
    span = range(-RADIUS, RADIUS + 1)
    return np.array([
        (row, column) for row in span for column in span if any(has_tap(family, i, row, column) for i in range(2))
    ])


def _letters_around(family, site):
    """The filter before each tap of a pixel at a site of the tile."""
    side, letters = side_of(family), letters_of(family)
    places = [(site // side + row, site % side + column) for row, column in offsets(family)]
    return np.array([letters[row % side * side + column % side] for row, column in places])


def orbits(family, direction):
    """[tap, orbit]: taps with one weight. A Bayer mosaic is its own mirror image about each of its sites, and its
    filters are, too; a TrueSense mosaic is not."""
    keys = [(abs(row), abs(column)) if family == "bayer" else (row, column) for row, column in offsets(family)]
    names = sorted({key for key in keys if has_tap(family, direction, *key)})
    return np.array([[float(key == name) for name in names] for key in keys])


def _letters_in_orbits(family, site, direction):
    """(names, [letter, orbit]: how many taps of an orbit lie behind a filter)."""
    around = _letters_around(family, site)
    names = sorted(set(around))
    return names, np.array([orbits(family, direction)[around == name].sum(axis=0) for name in names])


def _system(picture, family):
    """Normal equations of each site, without the border: ([weight, weight], [weight, colour]); first the weights of the
    filters along rows, then those along columns."""
    side, border = side_of(family), 8
    frame = mosaic_of(picture, family)
    share = swift.mix(np.floor(frame * 65535 + 0.5).astype(np.int64), family, border, WINDOW) / swift.STEPS
    centred, out = frame - 0.5, []
    for site in range(side**2):
        where = np.s_[site // side::side, site % side::side]
        near = np.stack([swift.moved(centred, *offset, border)[where].ravel() for offset in offsets(family)], 1)
        rows = share[where].ravel()[:, None]
        parts = near @ orbits(family, 0) * rows, near @ orbits(family, 1) * (1 - rows)
        taps = torch.from_numpy(np.concatenate(parts, 1).astype(np.float32))
        wanted = picture[border:-border, border:-border][where].reshape(-1, 3) - 0.5
        out.append([(taps.T @ other).double().numpy() for other in (taps, torch.from_numpy(wanted.astype(np.float32)))])
    return out


def _solved(systems, family):
    """The weights [site, colour, direction, orbit] in floating point."""
    weights = []
    for site, (square, right) in enumerate(systems):
        (names, along_rows), (_, along_columns) = (_letters_in_orbits(family, site, direction) for direction in (0, 1))
        none = np.zeros_like(along_rows)
        rows = np.block([[along_rows, none], [none, along_columns]])
        sums = np.array([[float(name == colour) for colour in COLOURS] for name in names] * 2)
        square = square + 1e-6 * np.trace(square) / len(square) * np.eye(len(square))
        whole = np.block([[square, rows.T], [rows, np.zeros((len(rows),) * 2)]])
        solution = np.linalg.solve(whole, np.concatenate([right, sums]))[:len(square)]
        weights.append(solution.T.reshape(3, 2, -1))
    return np.array(weights)


def integers(weights, family):
    """The filters as integers: known colours stay, sums hold exactly, nothing overflows."""
    side, joined = side_of(family), [orbits(family, direction) for direction in (0, 1)]
    middle = ~offsets(family).any(axis=1)
    for site, letter in enumerate(letters_of(family)):
        if letter in COLOURS:
            weights[site, COLOURS.index(letter)] = [orbit[middle][0] for orbit in joined]
    shift, magnitudes = 14, [np.abs(weights[:, :, i]) @ orbit.sum(axis=0) for i, orbit in enumerate(joined)]
    while np.max(magnitudes) * 2**shift > LARGEST_SUM:
        shift -= 1
    taps = np.empty((*weights.shape[:3], len(middle)), np.int16)
    for site, colour, direction in np.ndindex(weights.shape[:3]):
        whole = np.zeros(weights.shape[3], np.int64)
        for name, counts in zip(*_letters_in_orbits(family, site, direction)):
            aim, inside = (name == COLOURS[colour]) << shift, counts > 0
            exact = weights[site, colour, direction] * 2.0**shift
            whole[inside] = rounded_to(exact[inside], aim, counts[inside].astype(int))
        taps[site, colour, direction] = joined[direction] @ whole
    return swift.Filters(side, WINDOW, shift, offsets(family), taps)


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
