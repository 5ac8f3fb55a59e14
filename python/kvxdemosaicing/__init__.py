"""Converts raw camera frames to pictures, in NumPy arrays.

>>> import kvxdemosaicing as kvx
>>> import numpy as np
>>> frame = np.full((4, 6), 2048, np.uint16)
>>> kvx.convert(frame, "BayerRG12").shape
(4, 6, 3)

A frame is an array of rows and columns of uint8 or uint16, as its format requires. Rows may have any stride, also a
negative one; frames are never copied. A packed frame is an array of uint8: rows of bytes, or one dimension with
``width=`` and ``height=``. A big-endian frame is ``>u2``, or uint16 exactly as read. Bytes, other buffers and grey
images of Pillow are frames, too. Invalid arguments raise Error, whose ``code`` is the result code of the C interface.

All functions release the interpreter's lock while they work. Calls share no state; a Converter that several threads use
serves one call at a time.
"""

from kvxdemosaicing._arrays import ArrayInterface, FrameLike
from kvxdemosaicing._converter import Converter, Parameter, Parameters, convert, measure_gains
from kvxdemosaicing._error import Error, UnknownNameError, WrongTypeError
from kvxdemosaicing._files import FrameFile, Guess, guess, read
from kvxdemosaicing._format import Format, format, formats
from kvxdemosaicing._frames import mosaic, pack, unpack
from kvxdemosaicing._native import __version__

__all__ = [
    "ArrayInterface",
    "Converter",
    "Error",
    "Format",
    "FrameFile",
    "FrameLike",
    "Guess",
    "Parameter",
    "Parameters",
    "UnknownNameError",
    "WrongTypeError",
    "__version__",
    "convert",
    "format",
    "formats",
    "guess",
    "measure_gains",
    "mosaic",
    "pack",
    "read",
    "unpack",
]
