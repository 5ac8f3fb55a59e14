"""What counts as a frame: arrays, and objects that share their memory, such as bytes and Pillow's images."""

from __future__ import annotations

from typing import Any, Protocol, Union

import numpy as np
import numpy.typing as npt

from kvxdemosaicing._error import INVALID_ARGUMENT, refusal
from kvxdemosaicing._format import Format

Frame = npt.NDArray[np.unsignedinteger[Any]]
Picture = npt.NDArray[np.unsignedinteger[Any]]


class ArrayInterface(Protocol):
    """Objects with NumPy's array interface: images of Pillow, and arrays of other libraries."""

    @property
    def __array_interface__(self) -> dict[str, Any]: ...


FrameLike = Union[Frame, bytes, bytearray, memoryview, ArrayInterface]


def as_array(frame: Any, format: Format) -> Any:
    """An array over the memory of a frame. Bytes become samples of the format. What is no frame is returned as it is:
    the native part refuses it."""
    if isinstance(frame, np.ndarray):
        return frame
    if hasattr(frame, "__array_interface__"):
        return np.asarray(frame)
    try:
        view = memoryview(frame)
    except TypeError:
        return frame
    if view.format not in ("B", "b", "c") or view.ndim != 1 or not view.contiguous:
        return np.asarray(view)
    if view.nbytes % format.dtype.itemsize:
        raise refusal(
            INVALID_ARGUMENT, f"frame has {view.nbytes} bytes, no whole number of {format.name} samples of 2 bytes"
        )
    return np.frombuffer(view, format.dtype)
