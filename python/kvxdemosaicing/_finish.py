"""Converts the Python options for sample values to a finish of the frame layer."""

from __future__ import annotations

from typing import Any, Optional, Sequence, Union

import numpy as np
import numpy.typing as npt

from kvxdemosaicing import _native
from kvxdemosaicing._error import OUT_OF_RANGE, UNKNOWN_NAME, refusal

WhiteBalance = Union[str, Sequence[float], "npt.NDArray[Any]"]
Levels = Union[float, Sequence[float], "npt.NDArray[Any]"]
Exposure = Union[float, str]
Tone = Union[str, "npt.ArrayLike"]


def make_finish(
    look: Optional[str],
    black_level: Optional[Levels],
    white_level: Optional[Levels],
    white_balance: Optional[WhiteBalance],
    exposure: Optional[Exposure],
    matrix: Optional[npt.ArrayLike],
    tone: Optional[Tone],
) -> Optional[_native.Finish]:
    """The finish for these options; None if none is given."""
    options = (look, black_level, white_level, white_balance, exposure, matrix, tone)
    if all(option is None for option in options):
        return None
    if look is not None:
        if look != "natural":
            raise refusal(UNKNOWN_NAME, f"look={look!r}: give natural")
        white_balance = "auto" if white_balance is None else white_balance
        exposure = "auto" if exposure is None else exposure
        tone = "srgb" if tone is None else tone
    method, gains = _balance(white_balance)
    curve, table = _curve(tone)
    return _native.Finish(
        black_level=_levels("black_level", black_level),
        white_level=_levels("white_level", white_level),
        white_balance=method,
        gains=gains,
        exposure=_ev(exposure),
        auto_exposure=exposure == "auto",
        matrix=_coefficients(matrix),
        tone=curve,
        table=table,
        given=[
            black_level is not None,
            white_level is not None,
            not (white_balance is None or isinstance(white_balance, str)),
            matrix is not None,
        ],
    )


def _levels(name: str, levels: Optional[Levels]) -> list[float]:
    given = np.ravel(np.asarray(0 if levels is None else levels, np.float64))
    values = [float(level) for level in given] * (4 if given.size == 1 else 1)
    if len(values) != 4:
        raise refusal(OUT_OF_RANGE, f"{name} has {len(values)} numbers: give one, or one for each of the four filters")
    if not all(0 <= level <= 0xFFFF for level in values):
        raise refusal(OUT_OF_RANGE, f"{name}={levels}: give sample values from 0 to 65535")
    return values


def _ev(exposure: Optional[Exposure]) -> float:
    if isinstance(exposure, str) and exposure != "auto":
        raise refusal(UNKNOWN_NAME, f"exposure={exposure!r}: give auto, or a number in EV")
    return 0.0 if exposure is None or isinstance(exposure, str) else float(exposure)


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
