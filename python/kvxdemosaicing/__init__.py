"""Raw camera frames become pictures, in NumPy arrays.

>>> import kvxdemosaicing as kvx
>>> import numpy as np
>>> frame = np.full((4, 6), 2048, np.uint16)
>>> kvx.convert(frame, "BayerRG12").shape
(4, 6, 3)

Frames are arrays of rows and columns, uint8 or uint16 as the format has its samples, with any step from row to row,
also a negative one; they are never copied. Packed formats are uint8: rows of bytes, or one dimension with ``width=``
and ``height=``. Big-endian formats are ``>u2``, or uint16 as it was read. What is refused raises Error, whose ``code``
is that of the C interface.

All functions let other Python threads run while they work. Nothing is shared between calls; a Converter used by several
threads serves one after the other.
"""

from kvxdemosaicing._converter import Converter, Parameter, Parameters, convert
from kvxdemosaicing._error import Error, UnknownNameError, WrongTypeError
from kvxdemosaicing._format import Format, format, formats
from kvxdemosaicing._frames import mosaic, pack, unpack
from kvxdemosaicing._native import __version__

__all__ = [
    "Converter",
    "Error",
    "Format",
    "Parameter",
    "Parameters",
    "UnknownNameError",
    "WrongTypeError",
    "__version__",
    "convert",
    "format",
    "formats",
    "mosaic",
    "pack",
    "unpack",
]
