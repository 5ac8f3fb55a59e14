"""Lookup of formats."""

from __future__ import annotations

import functools
from typing import Union

from kvxdemosaicing import _native
from kvxdemosaicing._native import Format as Format

FormatLike = Union[Format, str, int]

_by_name = functools.lru_cache(maxsize=512)(_native.format_by_name)


def format(name: FormatLike) -> Format:
    """The format with a name of any scheme (PFNC, GStreamer, V4L2, OpenCV, ...) or with a PFNC code.

    Its attributes are ``name``, ``family`` ("mono", "bayer", "truesense", "colour"), ``bits``, ``layout``
    ("plain", "msb", "big-endian", "pfnc", "gige", "mipi"), ``tile`` (rows of filters), ``channels``, ``dtype``,
    ``algorithms``, ``names`` (scheme and name), ``pfnc_code``, ``fourcc``, ``library_code``, ``is_source``,
    ``is_destination``, ``unpacked`` (the format of the same samples, right-aligned).

    >>> rg = format("rggb12le")
    >>> rg, rg.tile, rg.bits, rg.dtype
    (Format('BayerRG12'), ('RG', 'GB'), 12, dtype('uint16'))
    >>> format(0x010C0059), format(0x010C0059).layout, format("pRCC") == format("BayerRG12mipi")
    (Format('BayerRG12p'), 'pfnc', True)

    ``row_bytes(width)`` is the size of a row without padding. ``at(row, column)`` is the format of a region of a frame
    that starts at this site:

    >>> rg.at(1, 0)
    Format('BayerGB12')

    An unknown name raises UnknownNameError, whose text suggests similar names.
    """
    if isinstance(name, Format):
        return name
    if isinstance(name, str):
        return _by_name(name)
    return _native.format_by_pfnc_code(name)


def formats() -> list[Format]:
    """All formats: sources and destinations.

    >>> [f.name for f in formats() if f.is_source and f.family == "mono" and f.bits == 10]
    ['Mono10', 'Mono10msb', 'Mono10be', 'Mono10p', 'Mono10Packed', 'Mono10mipi']
    """
    return _native.all_formats()
