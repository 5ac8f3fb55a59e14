"""The input of a network: a TrueSense frame itself, a Bayer frame interpolated by `ipp`."""
import numpy as np

MARGIN = {"bayer": 6, "truesense": 0}  # cells at the border of a patch that know too little of what is outside
_BAYER_FORMATS = {(0, 0): "BayerRG16", (0, 1): "BayerGR16", (1, 0): "BayerGB16", (1, 1): "BayerBG16"}


def input_of(words, family, phase=(0, 0)):
    """`words`: a frame of 16-bit words. `phase`: the tile's row and column at its sample (0, 0)."""
    words = np.ascontiguousarray(words, np.uint16)
    if family == "truesense":
        return words
    import kvxdemosaicing  # not needed for TrueSense frames

    name = _BAYER_FORMATS[tuple(phase)]
    return kvxdemosaicing.convert(words, name, to="RGB16", algorithm="ipp", tone="linear", threads=1)
