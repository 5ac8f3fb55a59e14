"""Colour filter mosaics: the tiles, frames from pictures, and whole tiles ("cells") as planes."""
import numpy as np

TILES = {
    "bayer": ("RG", "GB"),
    "truesense": ("WBWG", "BWGW", "WGWR", "GWRW"),
}
COLOURS = "RGB"
PAN = "W"  # behind a clear filter


def inputs_of(family):
    """The colour of each plane that a network sees: the samples of a cell of the mosaic; of a Bayer mosaic, all colours
    of its interpolation by `ipp`."""
    return letters_of(family) if family == "truesense" else COLOURS * len(letters_of(family))


def side_of(family):
    return len(TILES[family])


def letters_of(family):
    """The filters of a tile, row by row."""
    return "".join(TILES[family])


def sites(family):
    """(which samples of a frame, filter) for each site of the tile."""
    side = side_of(family)
    return [(np.s_[i // side::side, i % side::side], letter) for i, letter in enumerate(letters_of(family))]


def mosaic_of(picture, family, pan=None):
    """A frame from a picture (rows, columns, RGB). Pan is the mean of red, green and blue unless a plane is given."""
    planes = dict(zip(COLOURS, np.moveaxis(picture, -1, 0)))
    if PAN in letters_of(family):
        planes[PAN] = picture.mean(axis=-1) if pan is None else pan
    frame = np.empty(picture.shape[:2], picture.dtype)
    for where, letter in sites(family):
        frame[where] = planes[letter][where]
    return frame


def to_cells(samples, side):
    """(rows, columns[, colours]) to (planes, cell rows, cell columns): the sites of a cell row by row, each with its
    colours."""
    if samples.ndim == 2:
        samples = samples[..., None]
    rows, columns, colours = samples.shape
    split = samples.reshape(rows // side, side, columns // side, side, colours)
    return np.ascontiguousarray(split.transpose(1, 3, 4, 0, 2).reshape(-1, rows // side, columns // side))


def from_cells(planes, side):
    """The opposite of to_cells(), to (rows, columns, colours)."""
    count, rows, columns = planes.shape
    split = planes.reshape(side, side, count // side**2, rows, columns)
    return np.ascontiguousarray(split.transpose(3, 0, 4, 1, 2).reshape(rows * side, columns * side, -1))
