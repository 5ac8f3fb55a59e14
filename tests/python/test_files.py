"""read() and guess(), by the program at KVX_DEMOSAIC."""

import json
import os

import numpy as np
import pytest

import kvxdemosaicing as kvx

pytestmark = pytest.mark.skipif("KVX_DEMOSAIC" not in os.environ, reason="needs the program kvx-demosaic")


@pytest.fixture
def frame():
    """Of a coloured scene with detail, so that its format can be guessed."""
    rows, columns = np.mgrid[0:96, 0:128]
    waves = np.sin(rows / 5) * np.cos(columns / 7)
    scene = np.stack([150 + 90 * waves, 90 + 60 * np.sin(columns / 11), 60 + 40 * waves], axis=2)
    return kvx.mosaic(scene.astype(np.uint8), "BayerGR12")


def test_read_gives_what_convert_needs(frame, tmp_path):
    packed = kvx.pack(frame, "BayerGR12p")
    (tmp_path / "a_128x96_BayerGR12p.raw").write_bytes(b"header" + packed.tobytes())
    file = kvx.read(tmp_path / "a_128x96_BayerGR12p.raw", skip_bytes=6)
    np.testing.assert_array_equal(file.samples, frame)
    assert (file.format.name, file.settings, file.orientation) == ("BayerGR12", {}, 1)

    np.save(tmp_path / "-b.npy", frame)  # no option
    facts = {"format": "BayerRG12", "black_level": [1, 2, 3, 4], "white_level": 4000, "orientation": 6,
             "white_balance_gains": {"R": 1.5, "G": 1, "B": 2}, "colour_matrix": [1, 0, 0, 0, 1, 0, 0.5, 0, 1]}
    (tmp_path / "-b.npy.json").write_text(json.dumps(facts | {"colour_matrx": 1}))
    os.chdir(tmp_path)
    with pytest.warns(UserWarning, match="colour_matrx"):
        file = kvx.read("-b.npy", format="BayerGR12")
    assert (file.format.name, file.orientation) == ("BayerGR12", 6)
    expected = kvx.convert(frame, "BayerGR12", black_level=[1, 2, 3, 4], white_level=4000, white_balance=[1.5, 1, 2],
                           matrix=facts["colour_matrix"])
    np.testing.assert_array_equal(kvx.convert(file.samples, file.format, **file.settings), expected)


def test_guess_ranks_files_and_arrays(frame, tmp_path):
    (tmp_path / "a.raw").write_bytes(frame.tobytes())
    for best in (kvx.guess(frame)[:2], kvx.guess(tmp_path / "a.raw", width=128, height=96)[:2]):
        assert {guess.format.name for guess in best} == {"BayerGR12", "BayerGB12"}
        assert (best[0].width, best[0].height) == (128, 96)


def test_refusals_name_the_reason(tmp_path, monkeypatch):
    with pytest.raises(FileNotFoundError, match="missing.raw"):
        kvx.read(tmp_path / "missing.raw")
    (tmp_path / "a.raw").write_bytes(bytes(7))
    with pytest.raises(kvx.Error, match="a.raw.*format"):
        kvx.read(tmp_path / "a.raw")
    monkeypatch.delenv("KVX_DEMOSAIC")
    monkeypatch.setenv("PATH", "")
    with pytest.raises(FileNotFoundError, match="KVX_DEMOSAIC"):
        kvx.read(tmp_path / "a.raw")
