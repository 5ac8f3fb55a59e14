"""The C functions through ctypes: what the module is held against."""

import ctypes
import os

import numpy as np

import kvxdemosaicing as kvx

_library = ctypes.CDLL(os.environ["KVX_LIBRARY"])
_library.KvxTrueSense_CreateComponent.restype = ctypes.c_void_p


class _Image(ctypes.Structure):
    """_KvxImage"""

    _fields_ = [
        *((name, ctypes.c_uint32) for name in ("struct_size", "struct_version", "pixel_type", "pixel_depth")),
        ("reserved16", ctypes.c_uint8 * 20),
        *((name, ctypes.c_uint32) for name in ("width", "height", "image_size", "line_step")),
        ("reserved52", ctypes.c_uint8 * 28),
        ("data", ctypes.c_void_p),
        ("reserved88", ctypes.c_uint8 * 8),
    ]


def _record(array, name, bits):
    assert array.flags.c_contiguous and ctypes.sizeof(_Image) == 96
    image = _Image(96, 0x00020000, kvx.format(name).library_code, bits)
    image.height, image.width = array.shape[:2]
    image.image_size, image.line_step = array.nbytes, array.strides[0]
    image.data = array.ctypes.data
    return image


def converted(samples, name, to, algorithm=0):
    """A picture of an unpacked frame, of samples that lie side by side."""
    family, bits = kvx.format(name).family, kvx.format(name).bits
    picture = np.zeros((*samples.shape, kvx.format(to).channels), np.uint8 if kvx.format(to).bits == 8 else np.uint16)
    samples = np.ascontiguousarray(samples)
    source, destination = _record(samples, name, bits), _record(picture, to, kvx.format(to).bits)
    if family == "bayer":
        result = _library.BayerToColor(ctypes.byref(source), ctypes.byref(destination), algorithm)
    else:
        # The frame layer's way; TrueSenseToColor() with the default record may round a sample of it the other way.
        assert algorithm == 0
        component = ctypes.c_void_p(_library.KvxTrueSense_CreateComponent())
        result = _library.KvxTrueSense_ConvertImage(component, ctypes.byref(source), ctypes.byref(destination))
        _library.KvxTrueSense_DeleteComponent(component)
    assert result == 0, hex(result & 0xFFFFFFFF)
    return picture
