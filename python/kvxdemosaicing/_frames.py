"""Unpacking and packing of frames, and frames simulated from pictures."""

from __future__ import annotations

from typing import Any, Optional, Sequence, Union

import numpy as np
import numpy.typing as npt

from kvxdemosaicing import _native
from kvxdemosaicing._arrays import ArrayInterface, Frame, FrameLike, as_array
from kvxdemosaicing._error import INVALID_ARGUMENT, UNKNOWN_NAME, refusal
from kvxdemosaicing._format import FormatLike, format as find_format


def unpack(
    frame: FrameLike,
    format: FormatLike,
    *,
    width: Optional[int] = None,
    height: Optional[int] = None,
    out: Optional[Frame] = None,
    threads: int = 0,
) -> Frame:
    """Unpacks a frame of any layout to rows and columns of uint8 or uint16, right-aligned.

    >>> import numpy as np
    >>> unpack(np.array([[0x21, 0x43, 0x65]], np.uint8), "Mono12p")
    array([[ 801, 1620]], dtype=uint16)

    :param width, height: size of a frame in one dimension; ``width`` also of packed rows with padding
    """
    found = find_format(format)
    return _native.unpack(as_array(frame, found), found, out, width, height, threads)


def pack(
    samples: Frame,
    format: FormatLike,
    *,
    padding: str = "line",
    out: Optional[Frame] = None,
    threads: int = 0,
) -> Frame:
    """Packs right-aligned samples into the layout of a format; bits above its depth are dropped.

    >>> import numpy as np
    >>> pack(np.array([[801, 1620]], np.uint16), "Mono12p")
    array([[ 33,  67, 101]], dtype=uint8)

    :param padding: "line": each row starts on a byte, the result has two dimensions; "image": packed rows follow each
        other without a gap, the result has one dimension
    """
    if padding not in ("line", "image"):
        raise refusal(UNKNOWN_NAME, f"padding='{padding}': give line or image")
    return _native.pack(samples, find_format(format), out, padding == "image", threads)


def mosaic(
    picture: Union[npt.NDArray[np.unsignedinteger[Any]], ArrayInterface],
    format: FormatLike,
    *,
    order: str = "RGB",
    white: int = 0,
    linear: bool = False,
    pan_weights: Sequence[float] = (1.0, 1.0, 1.0),
    analog_gain: Optional[float] = None,
    seed: int = 1,
    out: Optional[Frame] = None,
    threads: int = 0,
) -> Frame:
    """Simulates the frame of a sensor from a picture, in any mono, Bayer or TrueSense format, packed or not.

    >>> import numpy as np
    >>> red = np.zeros((2, 4, 3), np.uint8)
    >>> red[..., 0] = 255
    >>> mosaic(red, "BayerRG10")
    array([[1023,    0, 1023,    0],
           [   0,    0,    0,    0]], dtype=uint16)

    :param picture: uint8 or uint16, grey or with 3 or 4 samples per pixel; an array or an image of Pillow
    :param order: order of the samples, "RGB" or "BGR"
    :param white: sample value of white in the picture; 0: the largest value of its type
    :param linear: undo the picture's sRGB encoding first
    :param pan_weights: weights of red, green and blue at clear sites and in mono frames
    :param analog_gain: adds the noise of a sensor at this gain; the model is calibrated from 11.04 to 36.77
    :param seed: seed of the noise: the same seed gives the same frame
    """
    if order not in ("RGB", "BGR"):
        raise refusal(UNKNOWN_NAME, f"order='{order}': give RGB or BGR")
    weights = [float(weight) for weight in pan_weights]
    if len(weights) != 3:
        raise refusal(INVALID_ARGUMENT, f"{len(weights)} pan weights: give three, of red, green and blue")
    array: Any = np.asarray(picture) if hasattr(picture, "__array_interface__") else picture
    return _native.mosaic(
        array, find_format(format), out, order == "BGR", linear, weights, white, analog_gain, seed, threads
    )
