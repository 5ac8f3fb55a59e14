"""The integer network: its layers, and the file that holds them (README.md describes it)."""
import dataclasses

import numpy as np

LEAK = 3  # the activation is max(x, x / 2^LEAK)
_MAGIC, _VERSION = b"KvxN", 2


@dataclasses.dataclass
class Layer:
    """Filters [out, row, column, in], int16; the deviation's factor for each filter (zeros without noise); the sum is
    divided by 2^shift."""

    filters: np.ndarray
    offsets: np.ndarray
    shift: int


@dataclasses.dataclass
class Weights:
    """`hidden`: the first and the middle layers; `base` adds to the sums of `last`, and has no smaller shift."""

    side: int
    has_noise: bool
    hidden: list
    last: Layer
    base: Layer

    @property
    def channels(self):
        return self.hidden[0].filters.shape[0]

    @property
    def halo(self):
        """Cells on each side that a cell of the result depends on."""
        return len(self.hidden) + 1


def write(path, weights):
    hidden, base = weights.hidden, weights.base.filters
    counts = (weights.side, base.shape[-1], weights.channels, len(hidden) - 1, base.shape[1], weights.has_noise)
    with open(path, "wb") as file:
        file.write(_MAGIC)
        file.write(bytes([_VERSION, *counts]))
        file.write(bytes([layer.shift for layer in (*hidden, weights.last, weights.base)]))
        for layer in hidden:
            file.write(layer.filters.astype("<i2").tobytes())
            if weights.has_noise:
                file.write(layer.offsets.astype("<i2").tobytes())
        for layer in (weights.last, weights.base):
            file.write(layer.filters.astype("<i2").tobytes())


class Reader:
    def __init__(self, file):
        self._file = file

    def bytes(self, count):
        data = self._file.read(count)
        if len(data) != count:
            raise ValueError("the file of weights ends too early")
        return data

    def array(self, *shape):
        return np.frombuffer(self.bytes(2 * int(np.prod(shape))), "<i2").reshape(shape).astype(np.int16)


def read(path):
    with open(path, "rb") as file:
        reader = Reader(file)
        if reader.bytes(4) != _MAGIC:
            raise ValueError(f"{path} holds no weights")
        version, side, inputs, channels, middle, base_size, has_noise = reader.bytes(7)
        if version != _VERSION:
            raise ValueError(f"{path} has version {version}")
        shifts, outputs = reader.bytes(middle + 3), 3 * side**2
        hidden = []
        for layer in range(middle + 1):
            filters = reader.array(channels, 3, 3, channels if layer else inputs)
            offsets = reader.array(channels) if has_noise else np.zeros(channels, np.int16)
            hidden.append(Layer(filters, offsets, shifts[layer]))
        none = np.zeros(outputs, np.int16)
        last = Layer(reader.array(outputs, 3, 3, channels), none, shifts[-2])
        base = Layer(reader.array(outputs, base_size, base_size, inputs), none, shifts[-1])
        return Weights(side, bool(has_noise), hidden, last, base)
