"""Converts the Python options for sample values to a finish of the frame layer."""

from __future__ import annotations

from typing import Any, Optional, Sequence, Union

import numpy as np
import numpy.typing as npt

from kvxdemosaicing import _native
from kvxdemosaicing._error import OUT_OF_RANGE, refusal

WhiteBalance = Union[str, Sequence[float], "npt.NDArray[Any]"]
Tone = Union[str, "npt.ArrayLike"]


def make_finish(
    black_level: Optional[int],
    white_level: Optional[int],
    white_balance: Optional[WhiteBalance],
    matrix: Optional[npt.ArrayLike],
    tone: Optional[Tone],
) -> Optional[_native.Finish]:
    """The finish for these options; None if none is given."""
    if all(option is None for option in (black_level, white_level, white_balance, matrix, tone)):
        return None
    method, gains = _balance(white_balance)
    curve, table = _curve(tone)
    return _native.Finish(
        black_level=_level("black_level", black_level),
        white_level=_level("white_level", white_level),
        white_balance=method,
        gains=gains,
        matrix=_coefficients(matrix),
        tone=curve,
        table=table,
    )


def _level(name: str, level: Optional[int]) -> int:
    level = 0 if level is None else int(level)
    if not 0 <= level <= 0xFFFF:
        raise refusal(OUT_OF_RANGE, f"{name}={level}: give a sample value from 0 to 65535")
    return level


def _balance(white_balance: Optional[WhiteBalance]) -> tuple[str, list[float]]:
    if isinstance(white_balance, str):
        return white_balance, [1.0] * 4
    gains = [1.0] * 4 if white_balance is None else [float(gain) for gain in white_balance]
    if len(gains) == 3:
        gains.append(gains[1])  # clear sites get green's gain, as in sidecars, the tool and the element
    if len(gains) != 4:
        raise refusal(OUT_OF_RANGE, f"white_balance has {len(gains)} gains: give red, green, blue, and perhaps pan")
    return "given", gains


def _coefficients(matrix: Optional[npt.ArrayLike]) -> list[float]:
    values = np.asarray(np.eye(3) if matrix is None else matrix, np.float64)
    if values.size != 9:
        raise refusal(OUT_OF_RANGE, f"matrix has {values.size} numbers: give 3 x 3")
    return [float(value) for value in values.flat]


def _curve(tone: Optional[Tone]) -> tuple[str, list[int]]:
    if tone is None or isinstance(tone, str):
        return tone or "linear", []
    table = [int(value) for value in np.ravel(np.asarray(tone))]
    if not all(0 <= value <= 0xFFFF for value in table):
        raise refusal(OUT_OF_RANGE, "tone: give a table of values from 0 to 65535")
    return "table", table
