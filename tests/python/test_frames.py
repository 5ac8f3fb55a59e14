"""Formats, layouts and mosaics."""

import pickle

import numpy as np
import pytest

import kvxdemosaicing as kvx


def test_formats_know_their_facts():
    assert len(kvx.formats()) == len({f.name for f in kvx.formats()}) > 400
    for format in kvx.formats():
        assert kvx.format(format.name) == format == pickle.loads(pickle.dumps(format))
        assert hash(kvx.format(format.name)) == hash(format)
        assert format.pfnc_code is None or kvx.format(format.pfnc_code) == format
    packed = kvx.format("pRCC")
    assert (packed.family, packed.bits, packed.layout, packed.channels) == ("bayer", 12, "mipi", 1)
    assert packed.row_bytes(4) == 6 and packed.dtype == np.uint8 and ("v4l2", "pRCC") in packed.names
    assert packed.algorithms == ["bilinear", "ipp", "edge-aware", "fine", "swift"]
    assert kvx.format("RGB8").algorithms == []
    assert packed.at(1, 0).name == "BayerGB12mipi" and packed.at(2, 3).name == "BayerGR12mipi"
    assert kvx.format("RGB8").tile == () and kvx.format("Mono8").tile == ("Y",)


@pytest.mark.parametrize("name", ["Mono8", "BayerGR10mipi", "BayerRG12p", "Mono14be", "BayerBG10msb"])
def test_packing_and_back(name):
    format = kvx.format(name)
    samples = np.random.default_rng(1).integers(0, 2**format.bits, (5, 13), np.uint16)
    samples = samples.astype(format.unpacked.dtype)
    frame = kvx.pack(samples[::-1], name)
    assert frame.dtype == format.dtype and frame.nbytes == 5 * format.row_bytes(13)
    back = np.zeros((5, 20), samples.dtype)[:, :13]
    assert kvx.unpack(frame, name, width=13, out=back) is back
    assert np.array_equal(back, samples[::-1])
    image = kvx.pack(samples, name, padding="image").ravel()
    assert np.array_equal(kvx.unpack(image, name, width=13, height=5), samples)


@pytest.mark.parametrize("format", [kvx.format(name) for name in ("BayerGB12p", "SCF1WGWR10", "Mono16", "BayerRG8")])
def test_mosaics_see_the_picture_through_filters(format):
    picture = np.random.default_rng(1).integers(0, 256, (9, 10, 3), np.uint8)
    light = np.dstack([picture, picture.mean(axis=2)])[..., :]  # red, green, blue, clear
    tile = np.array([["RGBWY".index(c) for c in row] for row in format.tile]).clip(max=3)
    sites = np.tile(tile, (10, 10))[:9, :10]
    expected = np.take_along_axis(light, sites[..., None], axis=2)[..., 0] / 255 * (2**format.bits - 1)
    for array, order in ((picture, "RGB"), (picture[::-1, :, ::-1].copy()[::-1], "BGR")):
        frame = kvx.unpack(kvx.mosaic(array, format, order=order), format, width=10)
        assert np.abs(frame - expected).max() <= 0.5 + 1e-6
    wide = kvx.mosaic(picture.astype(np.uint16) * 16, format, white=4080)
    assert np.array_equal(wide, kvx.mosaic(picture, format))


def test_noise_of_mosaics_comes_by_its_seed():
    grey = np.full((64, 64), 100, np.uint8)
    first, again, other = (kvx.mosaic(grey, "SCF1WBWG12", analog_gain=30, seed=seed) for seed in (1, 1, 2))
    assert np.array_equal(first, again) and not np.array_equal(first, other)
    assert np.ptp(kvx.mosaic(grey, "SCF1WBWG12")) == 0
    assert np.ptp(kvx.mosaic(grey, "SCF1WBWG12", linear=True)) == 0 < np.std(first)
