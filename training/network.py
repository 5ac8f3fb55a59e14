"""The network in floating point: which constraints make flat fields exact, and which layers there are.

The input has planes of samples (inputs_of()), the result a plane for each site of the tile and each colour. There are
no biases: scaling the exposure scales the result. The first layer's filters sum to zero over the samples of each
colour, so that a field of any one colour gives zero everywhere inside; the linear base reproduces such a field exactly.
"""
import torch
import torch.nn as nn
import torch.nn.functional as F

from .mosaics import COLOURS, inputs_of, letters_of, side_of
from .weights import LEAK


def _groups(family):
    """Masks (letters, input planes) of the samples of each colour."""
    inputs = inputs_of(family)
    return torch.tensor([[float(letter == one) for letter in inputs] for one in sorted(set(inputs))])


def _kernel(out, into, size, gain=1.0):
    return nn.Parameter(torch.randn(out, into, size, size) * gain * (2 / (into * size**2)) ** 0.5)


def _identity(family, size):
    """The filters that take each output from the input plane of its site (and colour, where the input is a picture)."""
    inputs, outputs = len(inputs_of(family)), 3 * len(letters_of(family))
    filters = torch.zeros(outputs, inputs, size, size)
    for plane in range(outputs):
        filters[plane, plane * inputs // outputs, size // 2, size // 2] = 1
    return filters


def _first_base(family):
    """Initial weights: the mean of the surrounding colour, or the interpolation in the input."""
    if family == "truesense":
        return torch.zeros(3 * len(letters_of(family)), len(inputs_of(family)), 3, 3)
    return _identity(family, 1)


def _leaky(x):
    return F.leaky_relu(x, 2.0**-LEAK)


def _cropped(x, shape):
    border = (x.shape[-1] - shape[-1]) // 2
    return x[..., border:x.shape[-2] - border, border:x.shape[-1] - border] if border else x


class Network(nn.Module):
    """`channels` per layer; `middle` layers between the first and the last; `noise`: with a plane of deviations."""

    def __init__(self, family, channels, middle, noise):
        super().__init__()
        self.family, self.noise = family, noise
        letters, inputs = letters_of(family), inputs_of(family)
        outputs = [(site, colour) for site in range(len(letters)) for colour in COLOURS]
        self.first = _kernel(channels, len(inputs), 3)
        self.middle = nn.ParameterList(_kernel(channels, channels, 3, 0.5) for _ in range(middle))
        self.last = nn.Parameter(torch.zeros(len(outputs), channels, 3, 3))
        self.base = nn.Parameter(_first_base(family))
        # Most above 0: about there a filter that sees nothing but noise is linear, and can average.
        self.offsets = nn.ParameterList(
            nn.Parameter(torch.randn(channels) + 0.5) for _ in range(middle + 1 if noise else 0)
        )
        known = torch.tensor([letters[site] == colour for site, colour in outputs])
        target = torch.tensor([[float(colour == one) for one in sorted(set(inputs))] for _, colour in outputs])
        constants = {"groups": _groups(family), "known": known[:, None, None, None], "target": target}
        constants["identity"] = _identity(family, self.base.shape[-1])
        for name, constant in constants.items():
            self.register_buffer(name, constant, persistent=False)

    @property
    def halo(self):
        """Cells on each side of the picture that the result depends on."""
        return 2 + len(self.middle)

    def begin_with(self, state):
        """Takes the parameters of a network with as many middle layers or fewer. The other layers get small weights, so
        that they add little to what they skip."""
        with torch.no_grad():
            for weight in self.middle:
                weight.mul_(0.1)
        missing = self.load_state_dict(state, strict=False).missing_keys
        assert all(name.startswith(("middle.", "offsets.")) for name in missing), missing

    def _sums(self, weight):
        """(filters, letters): the sum of each filter over the samples of each colour."""
        return weight.sum((2, 3)) @ self.groups.T

    def _spread(self, amounts, size):
        """A filter for each row of `amounts`, constant over the samples of each colour, with these sums."""
        return ((amounts / (size**2 * self.groups.sum(1))) @ self.groups)[..., None, None]

    def first_kernel(self):
        return self.first - self._spread(self._sums(self.first), 3)

    def base_kernel(self):
        """Sums of 1 over the samples of a plane's own colour and of 0 over the others. Without noise the known samples
        stay as they are."""
        kernel = self.base + self._spread(self.target - self._sums(self.base), self.base.shape[-1])
        return kernel if self.noise else torch.where(self.known, self.identity, kernel)

    def last_kernel(self):
        return self.last if self.noise else self.last * ~self.known

    def forward(self, cells, sigma=None):
        """Cells of the input (and of the noise's deviation) to cells of a picture, `halo` less on each side."""
        x, skip = F.conv2d(cells, self.first_kernel()), None
        for layer in range(len(self.middle) + 1):
            if layer:
                skip, x = x, F.conv2d(x, self.middle[layer - 1])
            if self.noise:
                near, factors = _cropped(sigma, x.shape), self.offsets[layer][:, None, None]
                x = _leaky(x + factors * near) - _leaky(factors) * near
            else:
                x = _leaky(x)
            if layer:
                x = x + _cropped(skip, x.shape)
        correction = F.conv2d(x, self.last_kernel())
        return _cropped(F.conv2d(cells, self.base_kernel()), correction.shape) + correction

    def multiply_adds(self):
        """Multiplications for each pixel of the picture."""
        weights = [self.first, *self.middle, self.last, self.base]
        return sum(weight.numel() for weight in weights) / side_of(self.family) ** 2
