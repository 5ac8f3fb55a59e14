"""Arrays of any size, type, stride and format give the pictures of plain arrays, which keep the samples of frames."""

import sys

import numpy as np
import pytest
from hypothesis import given, settings, strategies as st

import kvxdemosaicing as kvx

settings.register_profile("busy", deadline=None, max_examples=60, database=None)
settings.load_profile("busy")

BAYER = [f"Bayer{phase}{bits}" for phase in ("GR", "RG", "GB", "BG") for bits in (8, 10, 12, 14, 16)]
TRUESENSE = [f.name for f in kvx.formats() if f.family == "truesense" and f.layout == "plain" and f.is_source]


def random_samples(format, height, width, seed=1):
    random = np.random.default_rng(seed)
    return random.integers(0, 2**format.bits, (height, width), format.dtype, endpoint=False)


@st.composite
def arrays(draw):
    """Padding and direction of the rows: `place(values)` is such an array with these values."""
    slack, is_flipped = draw(st.integers(0, 5)), draw(st.booleans())

    def place(values):
        height, width, *samples = values.shape
        array = np.full((height, width + slack, *samples), 0xA5, values.dtype)[:, :width]
        array = array[::-1] if is_flipped else array
        array[...] = values
        return array

    return place


SIZES = st.integers(1, 37)


def check(format, to, height, width, place, place_out=lambda values: values, **options):
    """Returns the picture of a plain array."""
    samples = random_samples(format, height, width)
    expected = kvx.convert(samples, format, to=to, **options)
    assert expected.shape == (height, width, kvx.format(to).channels) and expected.flags.c_contiguous
    frame, out = place(samples), place_out(np.zeros_like(expected))
    assert np.array_equal(kvx.convert(frame, format, to=to, **options), expected)
    assert kvx.convert(frame, format, to=to, out=out, **options) is out
    assert np.array_equal(out, expected)
    assert np.array_equal(frame, samples)
    assert out.base is None or (out.base[:, width:] == 0xA5).all()  # padding
    return samples, expected


@given(st.sampled_from(BAYER), st.sampled_from(["RGB", "BGR"]), SIZES, SIZES, arrays(), arrays(), st.integers(0, 1))
def test_bayer_frames_of_any_shape(name, order, height, width, place, place_out, algorithm):
    format = kvx.format(name)
    samples, picture = check(format, f"{order}{format.bits}", height, width, place, place_out, algorithm=algorithm)
    for row in range(1, height - 1):
        for column in range(1, width - 1):  # the filter's colour is the sample's
            assert picture[row, column, order.index(format.at(row, column).tile[0][0])] == samples[row, column]


@given(st.sampled_from(TRUESENSE), st.sampled_from(["RGB8", "BGR8", "RGBa8", "BGRa8"]), SIZES, SIZES, arrays())
def test_truesense_frames_of_any_shape(name, to, height, width, place):
    _, picture = check(kvx.format(name), to, height, width, place)
    order = [to.index(colour) for colour in "RGB"]
    plain = kvx.convert(random_samples(kvx.format(name), height, width), name)
    assert np.array_equal(picture[..., order], plain) and (picture[..., 3:] == 255).all()


@given(st.sampled_from(["BayerGB12p", "BayerGR10mipi"]), SIZES, SIZES, arrays())
def test_packed_frames_mean_their_samples(name, height, width, place):
    unpacked = kvx.format(name).unpacked
    to = f"RGB{unpacked.bits}"
    samples = random_samples(unpacked, height, width, seed=height)
    expected, packed = kvx.convert(samples, unpacked, to=to), kvx.pack(samples, name)
    for array in (place(packed), packed.ravel(), np.pad(packed, ((0, 0), (0, 3)))):
        assert np.array_equal(kvx.convert(array, name, to=to, width=width, height=height), expected)


@pytest.mark.parametrize(
    "name, spell",
    [
        ("BayerRG12be", lambda samples: samples.astype(">u2")),
        ("BayerRG12be", lambda samples: samples.byteswap()),
        ("BayerRG12msb", lambda samples: samples << 4),
        ("BayerRG12", np.ravel),
        ("BayerRG12", np.asfortranarray),
    ],
)
def test_words_however_they_are_spelled(name, spell):
    samples = random_samples(kvx.format("BayerRG12"), 7, 1 if spell is np.asfortranarray else 10)
    height, width = samples.shape
    picture = kvx.convert(spell(samples), name, to="RGB12", width=width, height=height)
    assert np.array_equal(picture, kvx.convert(samples, "BayerRG12", to="RGB12"))


def test_finish_in_python_spelling():
    grey = np.full((4, 4), 256 + 3839 // 2, np.uint16)
    assert (kvx.convert(grey, "BayerRG12", black_level=256, tone="srgb") == 187).all()
    negative = kvx.convert(grey, "BayerRG12", to="RGB16", tone=[65535, 0], white_level=4000)
    assert (negative == 65535 - (2175 * 65535 + 2000) // 4000).all()
    swapped = kvx.convert(grey, "BayerRG12", white_balance=(1, 0.5, 0.25), matrix=np.eye(3)[::-1])
    assert swapped[2, 2].tolist() == [34, 68, 135]
    for balance, gains in (((2, 1.5, 1), (2, 1.5, 1, 1.5)), ((2, 1.5, 1, 3), (2, 1.5, 1, 3))):  # clear sites: green's
        for family in ("BayerRG12", "SCF1WBWG12", "Mono12"):
            converter = kvx.Converter(family, white_balance=balance)
            converter.convert(grey)
            assert converter.gains == gains
    converter = kvx.Converter("BayerRG12", white_balance="grey-world")
    red = kvx.mosaic(np.full((8, 8, 3), (50, 100, 200), np.uint8), "BayerRG12")
    assert np.ptp(converter.convert(red).astype(int)) <= 1
    assert np.allclose(converter.gains, (4, 2, 1, 2), rtol=0.01)
    grey = kvx.measure_gains(red, "BayerRG12", place=(2, 2, 4, 4))
    assert np.allclose(grey, kvx.measure_gains(red, "BayerRG12", method="grey-world"), rtol=0.01)
    converter.set_finish(white_balance=grey, exposure="auto")
    assert np.ptp(converter.convert(red).astype(int)) <= 1 and converter.exposure > 0
    converter.set_finish()
    assert np.array_equal(converter.convert(red), kvx.convert(red, "BayerRG12")) and converter.gains == (1, 1, 1, 1)


def test_out_is_reused_and_nothing_leaks():
    frame, out = random_samples(kvx.format("BayerRG12"), 480, 640), np.empty((480, 640, 3), np.uint8)
    converter = kvx.Converter("BayerRG12", algorithm="ipp")
    converter.convert(frame, out=out)
    counted = frame, out, converter
    counts, resident = [sys.getrefcount(item) for item in counted], _resident_bytes()
    for _ in range(300):  # 300 new pictures would be 276 MB
        converter.convert(frame, out=out)
        kvx.convert(frame, "BayerRG12")
        with pytest.raises(kvx.Error):
            converter.convert(frame[:1], out=out)
    assert [sys.getrefcount(item) for item in counted] == counts
    assert _resident_bytes() - resident < 20e6


def _resident_bytes():
    with open("/proc/self/statm") as statm:
        return int(statm.read().split()[1]) * 4096
