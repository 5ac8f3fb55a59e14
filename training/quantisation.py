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


def _magnitudes(layer):
    filters, offsets = (np.abs(part.astype(np.int64)) for part in (layer.filters, layer.offsets))
    return (filters.reshape(len(filters), -1).sum(axis=1) + offsets) * WORD


def magnitude(layer, base=None):
    """The largest magnitude of a sum of the layer, rounding included, and with the sum of the base, if given."""
    magnitudes = _magnitudes(layer) + (1 << layer.shift >> 1)
    if base:
        magnitudes += (_magnitudes(base) >> base.shift - layer.shift) + 1
    return int(magnitudes.max())


def _largest(build, largest_shift, base=None):
    """The layer of the largest shift that fits. `build` makes one for a shift."""
    for shift in range(largest_shift, 0, -1):
        layer = build(shift)
        weights = max(np.abs(layer.filters).max(), np.abs(layer.offsets).max())
        if weights <= _LARGEST_WEIGHT and magnitude(layer, base) <= _LARGEST_SUM:
            return Layer(layer.filters.astype(np.int16), layer.offsets.astype(np.int16), shift)
    raise ValueError("the weights are too large for sums of 32 bits")


def _array(tensor):
    """[out, in, row, column] to [out, row, column, in]."""
    return np.moveaxis(tensor.detach().numpy().astype(np.float64), 1, -1)


def _layer(exact, offsets, scale, sums=None, groups=()):
    def build(shift):
        filters = _with_sums(exact * (2.0**shift * scale), sums, groups)
        return Layer(filters, np.rint(offsets * 2.0**shift).astype(np.int64), shift)

    return _largest(build, MAX_SHIFT)


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
    base, last = _array(network.base_kernel()), _array(network.last_kernel())
    none = np.zeros(len(own), np.int64)
    # The base has a shift of its own: the weights of the last layer are much larger.
    made_base = _largest(
        lambda shift: Layer(_with_sums(base * 2.0**shift, own * 2**shift, groups), none, shift), MAX_SHIFT
    )
    made_last = _largest(
        lambda shift: Layer(np.rint(last * 2.0 ** (shift + reduction)).astype(np.int64), none, shift),
        made_base.shift,
        made_base,
    )
    return Weights(side, network.noise, hidden, made_last, made_base)
