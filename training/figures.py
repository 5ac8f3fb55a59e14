"""Quality of restored pictures: PSNR of the three colours together, 8 bits, without the border."""
import numpy as np

from . import noise
from .inputs import input_of
from .mosaics import from_cells, mosaic_of, side_of, to_cells

BORDER = 10
VALIDATION_PART = 256  # the middle of each validation picture, this many pixels a side


def whole_cells(picture, side):
    return picture[: picture.shape[0] // side * side, : picture.shape[1] // side * side]


def middle_of(picture):
    row, column = (max(0, (size - VALIDATION_PART) // 8 * 4) for size in picture.shape[:2])
    return whole_cells(picture[row:row + VALIDATION_PART, column:column + VALIDATION_PART], 4)


def cpsnr(picture, restored):
    """`picture` in bytes, `restored` in 0..1."""
    error = np.clip(np.rint(restored * 255), 0, 255) - picture
    return 10 * np.log10(255**2 / (error[BORDER:-BORDER, BORDER:-BORDER] ** 2).mean())


def restore(interpolate, picture, family, gain=None, seed=1):
    """A picture in bytes through a 12-bit mosaic and `interpolate(cells, sigma)`, to 0..1."""
    side = side_of(family)
    frame = mosaic_of(picture.astype(np.float32) / 255, family)
    if gain is not None:
        frame = noise.noisy(frame, family, gain, np.random.default_rng(seed))
    cells = to_cells(input_of(np.rint(frame * 4095) * 16, family) / np.float32(65520), side)
    sigma = None if gain is None else noise.sigma_plane(cells, family, gain)
    return from_cells(interpolate(cells, sigma), side)


def mean_cpsnr(interpolate, pictures, family, gain=None):
    return float(np.mean([cpsnr(p, restore(interpolate, p, family, gain)) for p in pictures]))
