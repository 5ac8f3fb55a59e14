"""From the network in floating point to the integer network.

Activations are 16-bit words, weights too, sums have 32 bits. Each layer takes the largest power of two as the scale of
its weights with which no sum can overflow, whatever the words.
"""
import numpy as np

from .mosaics import COLOURS, inputs_of, side_of
from .weights import Layer, Weights

WORD = 32768  # no activation's magnitude is larger
_LARGEST_SUM, _LARGEST_WEIGHT = 2**31 - 1, 32767
MAX_SHIFT = 15


def rounded_to(exact, total, counts):
    """Whole numbers near `exact` of which Σ count x number is `total`: where rounding misses it, those that rounding
    changed most are one more or one less."""
    rounded = np.rint(exact).astype(np.int64)
    missing = int(total - (rounded * counts).sum())
    sign = 1 if missing > 0 else -1
    for i in np.lexsort((sign * (rounded - exact), -counts)):
        if 0 < counts[i] <= abs(missing):
            rounded[i] += sign
            missing -= sign * counts[i]
    if missing:
        raise ValueError("the filters do not keep their sums")
    return rounded


def _with_sums(exact, sums, groups):
    """`exact` [out, row, column, in] rounded so that over each group of inputs the filter's sum is the given one."""
    rounded = np.rint(exact).astype(np.int64)
    for number, group in enumerate(groups):
        for row in range(len(exact)):
            part = exact[row][..., group]
            whole = rounded_to(part.ravel(), sums[row, number], np.ones(part.size, int))
            rounded[row][..., group] = whole.reshape(part.shape)
    return rounded


def magnitude(shift, *filters):
    """The largest magnitude of a sum of these filters, rounding included."""
    total = sum(np.abs(f.astype(np.int64)).reshape(len(f), -1).sum(axis=1) for f in filters)
    return int(total.max()) * WORD + (1 << shift >> 1)


def _fits(shift, *filters):
    weights = max(int(np.abs(f).max()) for f in filters)
    return weights <= _LARGEST_WEIGHT and magnitude(shift, *filters) <= _LARGEST_SUM


def _largest(build):
    """(shift, filters) of the largest shift that fits."""
    for shift in range(MAX_SHIFT, 0, -1):
        filters = build(shift)
        if _fits(shift, *filters):
            return shift, filters
    raise ValueError("the weights are too large for sums of 32 bits")


def _array(tensor):
    """[out, in, row, column] to [out, row, column, in]."""
    return np.moveaxis(tensor.detach().numpy().astype(np.float64), 1, -1)


def _layer(exact, offsets, scale, sums=None, groups=()):
    def build(shift):
        factor = 2.0**shift * scale
        return _with_sums(exact * factor, sums, groups), np.rint(offsets[:, None] * 2.0**shift).astype(np.int64)

    shift, (filters, factors) = _largest(build)
    return Layer(filters.astype(np.int16), factors[:, 0].astype(np.int16), shift)


def quantised(network, reduction=0):
    """The integer network. Its activations are those in floating point, for samples as 16-bit words, over
    2^reduction."""
    side, inputs = side_of(network.family), inputs_of(network.family)
    names = sorted(set(inputs))
    groups = [[plane for plane, letter in enumerate(inputs) if letter == name] for name in names]
    channels = network.first.shape[0]
    scale = 2.0**-reduction
    offsets = [o.detach().numpy().astype(np.float64) * scale for o in network.offsets] or [np.zeros(channels)] * (
        len(network.middle) + 1
    )
    hidden = [_layer(_array(network.first_kernel()), offsets[0], scale, np.zeros((channels, len(groups))), groups)]
    hidden += [_layer(_array(middle), offset, 1) for middle, offset in zip(network.middle, offsets[1:])]

    own = np.array([[float(colour == name) for name in names] for _ in range(side**2) for colour in COLOURS])
    last, base = _array(network.last_kernel()), _array(network.base_kernel())

    def build(shift):
        sums = own * 2**shift
        return np.rint(last * 2.0 ** (shift + reduction)).astype(np.int64), _with_sums(base * 2.0**shift, sums, groups)

    shift, (last, base) = _largest(build)
    none = np.zeros(len(base), np.int16)
    return Weights(
        side,
        network.noise,
        hidden,
        Layer(last.astype(np.int16), none, shift),
        Layer(base.astype(np.int16), none, shift),
    )
