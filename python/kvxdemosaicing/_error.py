"""The exceptions of the module."""

from __future__ import annotations

UNKNOWN_NAME = 2
WRONG_TYPE = 3
OUT_OF_RANGE = 4
INVALID_ARGUMENT = 7

_FRAME_LAYER = 7


class Error(ValueError):
    """An invalid argument: the text says how to fix it, ``code`` is the result code of the C interface.

    >>> import kvxdemosaicing as kvx
    >>> try:
    ...     kvx.Converter("BayerRG12", threads=-1)
    ... except kvx.Error as error:
    ...     print(f"{error.code:#x}: {error}")
    0x80070004: -1 threads: give 1 to 1024, or 0 for OpenMP's setting
    """

    def __init__(self, message: str, code: int) -> None:
        super().__init__(message, code)
        self.code = code

    def __str__(self) -> str:
        return str(self.args[0])


class UnknownNameError(Error, KeyError):
    """The name of a format, algorithm or parameter is unknown."""


class WrongTypeError(Error, TypeError):
    """An array or a value has the wrong type."""


for _kind in (Error, UnknownNameError, WrongTypeError):
    _kind.__module__ = "kvxdemosaicing"  # where users import them from


def error_of(message: str, code: int) -> Error:
    """The exception for a result code."""
    kinds = {UNKNOWN_NAME: UnknownNameError, WRONG_TYPE: WrongTypeError}
    return kinds.get(code & 0xFFFF, Error)(message, code)


def refusal(code: int, message: str) -> Error:
    """The exception for one of the codes above, with the component number of the frame layer."""
    return error_of(message, 0x80000000 | _FRAME_LAYER << 16 | code)
