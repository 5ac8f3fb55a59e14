"""`swift` in integers, to the bit: two linear filters for each missing colour, one for lines along rows and one for
lines along columns, mixed by the gradients around (README.md states the rules)."""
import dataclasses

import numpy as np

from .mosaics import COLOURS, PAN, letters_of, side_of
from .reference import extended
from .weights import Reader

STEPS = 4  # of the mix: 0 is all along columns, 4 all along rows
_MAGIC, _VERSION = b"KvxS", 1
_GRADIENT_SHIFT = 4  # gradients are taken of 12 bits


@dataclasses.dataclass
class Filters:
    """`offsets`: the (row, column) of each tap from the pixel. `taps` [site, colour, direction, tap], int16: the known
    colours of a site have a single 1 in both directions. Sums are divided by 2^shift. `window`: side of the square in
    which gradients are added."""

    side: int
    window: int
    shift: int
    offsets: np.ndarray
    taps: np.ndarray

    @property
    def reach(self):
        """Pixels on each side that a pixel of the result depends on."""
        return max(int(np.abs(self.offsets).max()), self.window // 2 + 2)


def write(path, filters):
    with open(path, "wb") as file:
        file.write(_MAGIC)
        file.write(bytes([_VERSION, filters.side, filters.window, filters.shift, len(filters.offsets)]))
        file.write(filters.offsets.astype("i1").tobytes())
        file.write(filters.taps.astype("<i2").tobytes())


def read(path):
    with open(path, "rb") as file:
        reader = Reader(file)
        if reader.bytes(4) != _MAGIC:
            raise ValueError(f"{path} holds no filters")
        version, side, window, shift, count = reader.bytes(5)
        if version != _VERSION:
            raise ValueError(f"{path} has version {version}")
        offsets = np.frombuffer(reader.bytes(2 * count), "i1").reshape(count, 2).astype(int)
        return Filters(side, window, shift, offsets, reader.array(side**2, 3, 2, count))


def moved(frame, row, column, border):
    """The samples `row`, `column` away, for all but the border."""
    rows, columns = frame.shape
    return frame[border + row:rows - border + row, border + column:columns - border + column]


def _gradients(words, is_pan, border):
    """(along rows, along columns) at each sample but the border's, of unsigned words. `is_pan`: None for Bayer."""
    frame = words >> _GRADIENT_SHIFT

    def at(row, column):
        return moved(frame, row, column, border)

    sums = []
    for row, column in ((0, 1), (1, 0)):
        first = np.abs(at(row, column) - at(-row, -column))
        second = np.abs(2 * at(0, 0) - at(2 * row, 2 * column) - at(-2 * row, -2 * column))
        sums.append(first + second if is_pan is None else np.where(is_pan, second >> 1, first))
    return sums


def _window_sums(values, window):
    rows, columns = values.shape[0] - window + 1, values.shape[1] - window + 1
    across = sum(values[:, i:i + columns] for i in range(window))
    return np.minimum(sum(across[i:i + rows] for i in range(window)), 65535)


def mix(words, family, border, window):
    """0..STEPS for each sample but the border's: how much of the filters along rows to take. The first sample lies at
    the origin of the tile."""
    is_pan, inner = None, border - window // 2
    if PAN in letters_of(family):
        rows, columns = np.indices(words.shape)
        is_pan = ((rows + columns) % 2 == 0)[inner:-inner, inner:-inner]
    h, v = (_window_sums(sums, window) for sums in _gradients(words, is_pan, inner))
    return (
        (v >= (h >> 2) + (h >> 3)).astype(np.int64)
        + (v >= h - (h >> 2))
        + (h < v - (v >> 2))
        + (h < (v >> 2) + (v >> 3))
    )


def interpolate(filters, frame, bits, family, phase=(0, 0)):
    """The picture (rows, columns, RGB) of a frame, both unsigned samples of `bits` bits."""
    side, up = side_of(family), 16 - bits
    cells = -(-filters.reach // side)
    border = cells * side
    words = extended(np.asarray(frame, np.int64) << up, side, phase, cells)
    rows_share = mix(words, family, border, filters.window)
    signed, half = words - 32768, 1 << (filters.shift + 1)
    picture = np.empty((*rows_share.shape, len(COLOURS)), np.int64)
    for site in range(side**2):
        where = np.s_[site // side::side, site % side::side]
        near = np.stack([moved(signed, row, column, border)[where] for row, column in filters.offsets], -1)
        sums = np.tensordot(near.astype(np.float64), filters.taps[site].astype(np.float64), ([2], [2])).astype(np.int64)
        along_rows, along_columns = np.moveaxis(sums, -1, 0)
        share = rows_share[where][..., None]
        picture[where] = (share * along_rows + (STEPS - share) * along_columns + half) >> (filters.shift + 2)
    picture = np.clip(picture, -32768, 32767) + 32768
    picture = picture[phase[0]:phase[0] + frame.shape[0], phase[1]:phase[1] + frame.shape[1]]
    return np.minimum((picture + (1 << up >> 1)) >> up, (1 << bits) - 1).astype(np.uint16)
