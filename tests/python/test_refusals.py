"""Invalid arguments: the error names the fix and carries the code, and nothing is written."""

import pickle

import numpy as np
import pytest

import kvxdemosaicing as kvx

WORDS, BYTES = np.zeros((4, 8), np.uint16), np.zeros((4, 8), np.uint8)
SHARED = np.zeros((4, 24), np.uint8)
UNKNOWN, TYPE, RANGE, INVALID = 0x80070002, 0x80070003, 0x80070004, 0x80070007


def read_only(array):
    array.flags.writeable = False
    return array


def picture(*shape, dtype=np.uint8):
    return np.full(shape, 0xA5, dtype)


@pytest.mark.parametrize(
    "frame, format, options, code, sentence",
    [
        (WORDS.astype(float), "BayerRG12", {}, TYPE, "astype(numpy.uint16)"),
        (WORDS.astype(np.int16), "BayerRG12", {}, TYPE, "int16"),
        (WORDS, "BayerRG8", {}, TYPE, "more bits than 8"),
        (BYTES, "BayerRG12", {}, TYPE, "view(numpy.uint16)"),
        (WORDS, "BayerRG12p", {}, TYPE, "not packed: BayerRG12"),
        (WORDS.astype(">u2"), "BayerRG12", {}, TYPE, "big-endian"),
        ([[1]], "Mono8", {}, TYPE, "numpy array"),
        (b"12345", "BayerRG12", {"width": 2, "height": 1}, INVALID, "5 bytes"),
        (b"1234", "BayerRG12", {}, INVALID, "width= and height="),
        (WORDS + 4113, "BayerRG12", {}, RANGE, "try BayerRG14"),
        ([WORDS, WORDS], "BayerRG12", {"out": [picture(4, 8, 3)]}, INVALID, "1 arrays"),
        (WORDS, "BayerRG12", {"algoritm": "ipp"}, UNKNOWN, "did you mean algorithm"),
        (WORDS, "BayerRG12", {"bayeralgtype": 2}, UNKNOWN, "BayerAlgType"),
        (WORDS, "BayerRG12", {"qqqqqqqqqq": 2}, UNKNOWN, "lists them"),
        (WORDS[:, ::2], "BayerRG12", {}, INVALID, "numpy.ascontiguousarray(frame)"),
        (np.asfortranarray(WORDS), "BayerRG12", {}, INVALID, "columns"),
        (np.broadcast_to(WORDS[0], (4, 8)), "BayerRG12", {}, INVALID, "same memory"),
        (WORDS[None], "BayerRG12", {}, INVALID, "3 dimensions"),
        (WORDS.ravel(), "BayerRG12", {}, INVALID, "width= and height="),
        (WORDS, "BayerRG12", {"width": 7}, INVALID, "8 columns"),
        (WORDS, "BayerRG12", {"height": 3}, INVALID, "4 rows"),
        (BYTES[:, :7], "BayerRG12p", {}, INVALID, "give width="),
        (BYTES.ravel(), "BayerRG12p", {"width": 9, "height": 4}, INVALID, "54"),
        (WORDS, 0x01020304, {}, UNKNOWN, "0x01020304"),
        (WORDS, "BayerRG12", {"BayerAlgType": 1.5}, 0x80000003, "0 to 4"),
        (WORDS, "BayerRG12", {"BayerAlgType": "ipp"}, TYPE, "give a number"),
        (WORDS, "BayerRG12", {"black_level": -1}, RANGE, "black_level"),
        (WORDS, "BayerRG12", {"white_level": (1, 2)}, RANGE, "white_level has 2 numbers"),
        (WORDS, "BayerRG12", {"look": "film"}, UNKNOWN, "natural"),
        (WORDS, "BayerRG12", {"exposure": "bright"}, UNKNOWN, "auto"),
        (WORDS, "BayerRG12", {"white_balance": "sun"}, UNKNOWN, "grey-world"),
        (WORDS, "BayerRG12", {"white_balance": (1, 2)}, RANGE, "2 gains"),
        (WORDS, "BayerRG12", {"matrix": [1, 2]}, RANGE, "3 x 3"),
        (WORDS, "BayerRG12", {"tone": "film"}, UNKNOWN, "srgb"),
        (WORDS, "BayerRG12", {"tone": [0, 70000]}, RANGE, "65535"),
        (WORDS, "BayerRG12", {"out": [1]}, TYPE, "numpy array"),
        (WORDS, "BayerRG12", {"out": picture(4, 8, 3, dtype=np.uint16)}, TYPE, "another to="),
        (WORDS, "BayerRG12", {"to": "RGB12", "out": picture(4, 8, 3, dtype=">u2")}, TYPE, "another to="),
        (WORDS, "BayerRG12", {"out": picture(4, 8, 4)}, INVALID, "(height, width, 3)"),
        (WORDS, "BayerRG12", {"out": picture(4, 16, 3)[:, ::2]}, INVALID, "pixels of out"),
        (WORDS, "BayerRG12", {"out": picture(4, 8, 6)[..., ::2]}, INVALID, "samples of out"),
        (WORDS, "BayerRG12", {"out": read_only(picture(4, 8, 3))}, INVALID, "read-only"),
    ],
)
def test_refused(frame, format, options, code, sentence):
    with pytest.raises(kvx.Error) as caught:
        kvx.convert(frame, format, **options)
    error = caught.value
    assert sentence in str(error) and error.code == code
    assert isinstance(error, ValueError)
    assert isinstance(error, TypeError) == (code & 0xFF == 3)
    assert isinstance(error, KeyError) == (code & 0xFF == 2)
    again = pickle.loads(pickle.dumps(error))
    assert (type(again), str(again), again.code) == (type(error), str(error), code)
    out = options.get("out")
    assert not isinstance(out, np.ndarray) or (out == 0xA5).all()


def test_options_are_keywords():
    with pytest.raises(TypeError, match="positional"):
        kvx.convert(WORDS, "BayerRG12", "RGB8")


@pytest.mark.parametrize(
    "call, code, sentence",
    [
        (lambda: kvx.convert(SHARED[:, :8], "BayerRG8", out=SHARED.reshape(4, 8, 3)), INVALID, "share memory"),
        (lambda: kvx.pack(WORDS, "BayerRG12p", padding="none"), UNKNOWN, "line or image"),
        (lambda: kvx.pack(BYTES, "BayerRG12p"), TYPE, "uint16"),
        (lambda: kvx.pack(WORDS, "BayerRG12p", out=BYTES), INVALID, "too small|give width|stride"),
        (lambda: kvx.unpack(BYTES, "RGB8"), INVALID, "no format of frames"),
        (lambda: kvx.mosaic(BYTES.astype(float), "BayerRG8"), TYPE, "uint8"),
        (lambda: kvx.mosaic(BYTES[:, :, None][..., [0, 0]], "BayerRG8"), INVALID, "3 or 4"),
        (lambda: kvx.mosaic(BYTES, "BayerRG8", order="GRB"), UNKNOWN, "RGB or BGR"),
        (lambda: setattr(kvx.Converter("Mono8"), "format", "BayerRG8"), INVALID, "another Converter"),
    ],
)
def test_refused_elsewhere(call, code, sentence):
    with pytest.raises(kvx.Error, match=sentence) as caught:
        call()
    assert caught.value.code == code
