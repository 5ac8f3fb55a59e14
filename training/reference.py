"""The integer network on frames, to the bit: what every fast implementation must equal (README.md states the rules)."""
import numpy as np

from . import noise
from .inputs import input_of
from .mosaics import from_cells, side_of, to_cells
from .weights import LEAK

SIGMA_STEPS = 1024  # levels of signal that the deviation is tabulated for


def folded(index, size, period):
    """The sample that stands for each of `index` outside 0..size-1: the nearest a multiple of the period away, or of
    half the period and so on where the frame is too small."""
    index = np.asarray(index)
    out = np.clip(index, 0, size - 1)
    step = 1
    while step <= period:
        below = index + (-index + step - 1) // step * step
        above = index - (index - size + step) // step * step
        moved = np.where(index < 0, below, np.where(index >= size, above, index))
        out = np.where((moved >= 0) & (moved < size), moved, out)
        step *= 2
    return out


def extended(seen, side, phase, halo):
    """A frame or picture in whole cells with `halo` more on each side. `phase`: the tile's row and column at (0, 0)."""
    for axis in range(2):
        start = -phase[axis] - halo * side
        cells = -(-(seen.shape[axis] + phase[axis]) // side) + 2 * halo
        seen = np.take(seen, folded(np.arange(start, start + cells * side), seen.shape[axis], side), axis)
    return seen


def _saturated(x):
    return np.clip(x, -32768, 32767)


def _convolved(planes, filters):
    """Exact sums [out, row, column], the filters' reach less on each side. Whole numbers in double precision."""
    size = filters.shape[1]
    rows, columns = planes.shape[1] - size + 1, planes.shape[2] - size + 1
    sums = np.zeros((filters.shape[0], rows * columns))
    planes = planes.astype(np.float64)
    for row in range(size):
        for column in range(size):
            part = planes[:, row:row + rows, column:column + columns].reshape(len(planes), -1)
            sums += filters[:, row, column].astype(np.float64) @ part
    return sums.reshape(-1, rows, columns).astype(np.int64)


def _divided(sums, shift):
    return (sums + (1 << shift >> 1)) >> shift


def _shifted(sums, shift):
    return _saturated(_divided(sums, shift))


def _leaky(x):
    return np.maximum(x, _divided(x, LEAK))


def _cropped(x, shape):
    border = (x.shape[-1] - shape[-1]) // 2
    return x[..., border:x.shape[-2] - border, border:x.shape[-1] - border] if border else x


def _hidden(x, layer, sigma):
    sums = _convolved(x, layer.filters)
    offset = layer.offsets.astype(np.int64)[:, None, None] * _cropped(sigma, sums.shape)
    return _saturated(_leaky(_shifted(sums + offset, layer.shift)) - _leaky(_shifted(offset, layer.shift)))


def run(weights, words, sigma):
    """Cells of signed words and of deviations, with the halo, to cells of the picture's signed words."""
    x = words
    for number, layer in enumerate(weights.hidden):
        result = _hidden(x, layer, sigma)
        x = _saturated(result + _cropped(x, result.shape)) if number else result
    correction = _convolved(x, weights.last.filters)
    border = weights.halo - weights.base.filters.shape[1] // 2
    base = _convolved(words[:, border:words.shape[1] - border, border:words.shape[2] - border], weights.base.filters)
    excess = weights.base.shift - weights.last.shift
    return _shifted(correction + _divided(base, excess), weights.last.shift)


def sigma_table(line):
    """The deviation in words at each step of the signal; `line`: slope and intercept in shares of white."""
    slope, intercept = line[0] * 65536, line[1] * 65536.0**2
    signal = (np.arange(SIGMA_STEPS) + 0.5) * (65536 / SIGMA_STEPS)
    return np.minimum(np.floor(np.sqrt(np.maximum(slope * signal + intercept, 0)) + 0.5), 32767).astype(np.int64)


def sigma_cells(cells, family, line):
    """The deviation in words for each cell [1, row, column], from unsigned words."""
    measured = noise.measured_planes(family)
    means = cells[measured].astype(np.int64).sum(axis=0, keepdims=True) // len(measured)
    return sigma_table(line)[means * SIGMA_STEPS // 65536]


def interpolate(weights, frame, bits, family, phase=(0, 0), line=None):
    """The picture (rows, columns, RGB) of a frame, both unsigned samples of `bits` bits. `line`: the noise's slope and
    intercept in shares of white, needed by weights for noise."""
    side, up = side_of(family), 16 - bits
    seen = input_of(np.asarray(frame, np.uint16) << up, family, phase)
    words = to_cells(extended(seen.astype(np.int64), side, phase, weights.halo), side)
    sigma = sigma_cells(words, family, line) if weights.has_noise else np.zeros((1, *words.shape[1:]), np.int64)
    picture = from_cells(run(weights, words - 32768, sigma) + 32768, side)
    picture = picture[phase[0]:phase[0] + frame.shape[0], phase[1]:phase[1] + frame.shape[1]]
    return np.minimum((picture + (1 << up >> 1)) >> up, (1 << bits) - 1).astype(np.uint16)
