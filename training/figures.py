"""Quality of restored pictures: PSNR of the three colours together, 8 bits, without the border."""
import numpy as np

from . import noise
from .inputs import input_of
from .mosaics import from_cells, mosaic_of, side_of, to_cells
from .pictures import encoded, linear

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


def restore(interpolate, picture, family, gain=None, is_rendered=False, seed=1):
    """A picture in bytes through a 12-bit mosaic and `interpolate(cells, sigma)`, to 0..1; `is_rendered`: through
    linear light and the sRGB curve."""
    side, picture = side_of(family), picture.astype(np.float32) / 255
    frame = mosaic_of(linear(picture) if is_rendered else picture, family)
    if gain is not None:
        frame = noise.noisy(frame, family, gain, np.random.default_rng(seed))
    cells = to_cells(input_of(np.rint(frame * 4095) * 16, family) / np.float32(65520), side)
    sigma = None if gain is None else noise.sigma_plane(cells, family, gain)
    restored = from_cells(interpolate(cells, sigma), side)
    return encoded(restored) if is_rendered else restored


def mean_cpsnr(interpolate, pictures, family, gain=None, is_rendered=False):
    return float(np.mean([cpsnr(p, restore(interpolate, p, family, gain, is_rendered)) for p in pictures]))
