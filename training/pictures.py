"""The pictures to learn from: which train and which validate, and patches of them."""
import hashlib
import os

import numpy as np
from PIL import Image

VALIDATION_SHARE = 10  # one file of so many
CANDIDATES = 4  # from which a hard patch is chosen


def is_validation(path):
    """About a tenth of the files, by their content."""
    with open(path, "rb") as file:
        digest = hashlib.sha256(file.read()).digest()
    return int.from_bytes(digest[:4], "big") % VALIDATION_SHARE == 0


def files_in(folder):
    """(files that train, files that validate), by name."""
    paths = [os.path.join(folder, name) for name in sorted(os.listdir(folder)) if name.endswith((".webp", ".png"))]
    chosen = [is_validation(path) for path in paths]
    return [p for p, c in zip(paths, chosen) if not c], [p for p, c in zip(paths, chosen) if c]


def read(path):
    return np.asarray(Image.open(path).convert("RGB"))


def read_all(paths, cache):
    """The pictures, decoded once into the folder `cache` and mapped from there."""
    os.makedirs(cache, exist_ok=True)
    pictures = []
    for path in paths:
        decoded = os.path.join(cache, os.path.basename(path) + ".npy")
        if not os.path.exists(decoded):
            np.save(decoded + ".part.npy", read(path))
            os.replace(decoded + ".part.npy", decoded)
        pictures.append(np.load(decoded, mmap_mode="r"))
    return pictures


def linear(encoded):
    """Light behind samples in the sRGB curve of IEC 61966-2-1, both 0..1."""
    return np.where(encoded <= 0.04045, encoded / 12.92, ((np.maximum(encoded, 0.04045) + 0.055) / 1.055) ** 2.4)


def encoded(light):
    """The inverse of linear(), for light in any range."""
    light = np.clip(light, 0, 1)
    return np.where(light <= 0.0031308, 12.92 * light, 1.055 * np.maximum(light, 0.0031308) ** (1 / 2.4) - 0.055)


def halved(picture):
    """Means of 2x2 pixels."""
    return (picture[::2, ::2] + picture[1::2, ::2] + picture[::2, 1::2] + picture[1::2, 1::2]) / 4


def _curvature(plane):
    """The mean magnitude of second differences along rows and columns, at every other sample."""
    rows, columns = plane[::2], plane[:, ::2]
    return (np.abs(rows[:, 2:] + rows[:, :-2] - 2 * rows[:, 1:-1]).mean()
            + np.abs(columns[2:] + columns[:-2] - 2 * columns[1:-1]).mean())


def _detail(patch):
    """How hard a patch is: fine detail of green and of the colour differences."""
    red, green, blue = np.moveaxis(patch.astype(np.int16), -1, 0)
    return sum(_curvature(plane) for plane in (green, red - green, blue - green))


class Patches:
    """Square patches (side, side, RGB), float32 in 0..1, at random: turned and mirrored, some of half the size, some
    with red and blue exchanged, some drawn ones."""

    def __init__(self, pictures, drawn, side, rng):
        self._pictures, self._drawn, self._side, self._rng = pictures, drawn, side, rng
        sizes = np.array([p.shape[0] * p.shape[1] for p in pictures], float)
        self._shares = np.cumsum(sizes / sizes.sum())

    def _crop(self, picture, side):
        row = self._rng.integers(picture.shape[0] - side + 1)
        column = self._rng.integers(picture.shape[1] - side + 1)
        return picture[row:row + side, column:column + side]

    def next(self, hard_share):
        """`hard_share`: the probability of the hardest patch of a few."""
        rng, side = self._rng, self._side
        if rng.random() < 0.06:
            patch = self._crop(self._drawn[rng.integers(len(self._drawn))], side) / np.float32(255)
        else:
            picture = self._pictures[int(np.searchsorted(self._shares, rng.random()))]
            is_halved = rng.random() < 0.1 and min(picture.shape[:2]) >= 2 * side
            count = CANDIDATES if rng.random() < hard_share else 1
            patch = max((self._crop(picture, side << is_halved) for _ in range(count)), key=_detail)
            patch = patch / np.float32(255)
            patch = halved(patch) if is_halved else patch
        turns = rng.integers(8)
        patch = patch[::-1] if turns & 1 else patch
        patch = patch[:, ::-1] if turns & 2 else patch
        patch = patch.transpose(1, 0, 2) if turns & 4 else patch
        return patch[..., ::-1] if rng.random() < 0.2 else patch
