"""Converters: parameters by name, and threads."""

import array
import concurrent.futures
import json
import math
import pickle
import sys
import time

import numpy as np
import pytest

import kvxdemosaicing as kvx


def noise(shape=(600, 800), seed=1):
    return np.random.default_rng(seed).integers(0, 4096, shape, np.uint16)


def test_parameters_are_a_mapping():
    parameters = kvx.Converter("SCF1WBWG12", sharpnessEnable=False, globalGain=np.float32(1.5)).parameters
    assert len(parameters) == len(list(parameters)) > 60
    assert parameters["sharpnessEnable"] == 0 and parameters["globalGain"] == 1.5
    for name, value in parameters.items():
        facts = parameters.describe(name)
        assert len({isinstance(number, int) for number in (value, facts.default, facts.minimum, facts.maximum)}) == 1
        assert facts.minimum <= value <= facts.maximum
        if facts.writable:
            parameters[name] = value
            assert parameters[name] == value
    assert parameters.describe("globalGain").minimum == -math.inf or parameters.describe("globalGain").minimum >= 0
    assert "threads" not in parameters and parameters.get("threads") is None
    for use in (parameters.__getitem__, parameters.describe):
        with pytest.raises(KeyError, match="threads"):
            use("threads")
    with pytest.raises(kvx.Error):
        del parameters["globalGain"]
    with pytest.raises(kvx.Error):
        parameters["globalGain"] = math.nan
    assert list(kvx.Converter("Mono8").parameters) == []


def test_parameters_act():
    frame, converter = noise(), kvx.Converter("BayerRG12")
    converter.parameters["BayerAlgType"] = 2
    assert converter.algorithm == "edge-aware"
    assert np.array_equal(converter.convert(frame), kvx.convert(frame, "BayerRG12", algorithm="edge-aware"))
    converter.format = "BayerGB12"
    converter.release()
    assert np.array_equal(converter.convert(frame[1:]), kvx.convert(frame[1:], "BayerGB12", algorithm=2))


def run_all(calls):
    """Runs the calls in threads of their own. What they raise is raised."""
    with concurrent.futures.ThreadPoolExecutor(len(calls)) as threads:
        for future in [threads.submit(call) for call in calls]:
            future.result()


@pytest.mark.parametrize("name", ["convert", "mosaic"])
def test_other_threads_run_during_a_call(name):
    large, ticks, span = noise((3000, 4000)), [], []
    converter = kvx.Converter("BayerRG12", algorithm="ipp", threads=1)
    calls = {
        "convert": lambda: converter.convert(large),
        "mosaic": lambda: kvx.mosaic(large, "BayerRG12p", white=4095, analog_gain=30, threads=1),
    }

    def work():
        span.append(time.perf_counter())
        calls[name]()
        span.append(time.perf_counter())

    def tick():
        while len(span) < 2:
            ticks.append(time.perf_counter())

    interval = sys.getswitchinterval()
    sys.setswitchinterval(10)  # the interpreter takes its lock from no thread that does not release it
    try:
        run_all([work, tick])
    finally:
        sys.setswitchinterval(interval)
    assert sum(span[0] < time < span[1] for time in ticks) >= 3


def test_a_camera_corrects_its_frames(tmp_path):
    frame = np.full((6, 8), 1064, np.uint16)
    frame[2, 3] = 4095
    profile = {"kvx_camera_profile": 1, "format": "BayerRG12", "width": 8, "height": 6, "black_level": 64,
               "dead_pixels": [[3, 2]]}
    path = tmp_path / "camera.json"
    path.write_text(json.dumps(profile))
    assert (kvx.convert(frame, "BayerRG12", to="RGB12", camera=path) == round(1000 / 4031 * 4095)).all()
    assert (kvx.convert(frame, "BayerRG12", to="RGB12", defects="auto") == 1064).all()
    refused = [({"camera": path}, "frames of 8x6"), ({"camera": "missing"}, "read"), ({"defects": "all"}, "listed")]
    for options, sentence in refused:
        with pytest.raises(kvx.Error, match=sentence):
            kvx.convert(frame[:4], "BayerRG12", **options)


def test_what_is_given_holds_against_a_camera(tmp_path):
    path = tmp_path / "camera.json"
    path.write_text(json.dumps({"kvx_camera_profile": 1, "format": "BayerRG12", "black_level": 400, "white_level": 2000,
                                "white_balance_gains": {"R": 2, "G": 1, "B": 3}, "blak_level": 1,
                                "colour_matrix": [2, -1, 0, 0, 1, 0, 0, -1, 2]}))
    frame = noise((20, 30)) // 2
    neutral = {"black_level": 0, "white_level": 4095, "white_balance": (1, 1, 1), "matrix": np.eye(3)}
    with pytest.warns(UserWarning, match="black_level"):
        converter = kvx.Converter("BayerRG12", camera=path, **neutral)
    assert np.array_equal(converter.convert(frame), kvx.convert(frame, "BayerRG12", **neutral))
    with pytest.warns(UserWarning):
        assert not np.array_equal(kvx.convert(frame, "BayerRG12", camera=path), converter.convert(frame))


@pytest.mark.parametrize("name", ["BayerRG8", "BayerRG12", "BayerRG12be", "BayerRG12p"])
def test_frames_are_arrays_and_what_shares_their_memory(name):
    format = kvx.format(name)
    frame = kvx.pack(noise((6, 8)).astype(format.unpacked.dtype), name)
    data, size = frame.tobytes(), {"width": 8, "height": 6}
    converter = kvx.Converter(name)
    expected = converter.convert(frame)
    for same in (data, bytearray(data), memoryview(data), array.array("B", data)):
        assert np.array_equal(converter.convert(same, **size), expected)
        assert np.array_equal(kvx.unpack(same, name, **size), kvx.unpack(frame, name))
    if frame.shape[1] == 8:
        assert np.array_equal(converter.convert(memoryview(frame)), expected)
    out = [np.empty_like(expected) for _ in range(2)]
    pictures = converter.convert((data, data), out=out, **size)
    assert len(pictures) == 2 and all(a is b and np.array_equal(a, expected) for a, b in zip(pictures, out))


def test_frames_are_images_of_pillow():
    pil = pytest.importorskip("PIL.Image")
    grey, colour = noise((6, 8)).astype(np.uint8), noise((6, 8, 3)).astype(np.uint8)
    assert np.array_equal(kvx.convert(pil.fromarray(grey), "BayerRG8"), kvx.convert(grey, "BayerRG8"))
    assert np.array_equal(kvx.mosaic(pil.fromarray(colour), "BayerRG8"), kvx.mosaic(colour, "BayerRG8"))


@pytest.mark.parametrize("name, options", [
    ("Mono8", {}),
    ("BayerRG12p", {"to": "BGRa8", "algorithm": "swift", "threads": 2, "look": "natural", "check_depth": False}),
    ("SCF1WBWG12", {"algorithm": "simple", "analog_gain": 12, "globalGain": 1.5, "matrix": np.eye(3)[::-1]}),
])
def test_converters_are_shown_and_pickled(name, options):
    converter = kvx.Converter(name, **options)
    again = pickle.loads(pickle.dumps(converter))
    frame = kvx.pack(noise((8, 12)).astype(converter.format.unpacked.dtype), name)
    assert np.array_equal(again.convert(frame), converter.convert(frame))
    assert dict(again.parameters) == dict(converter.parameters)
    shown = eval(repr(converter), {"Converter": kvx.Converter, "array": np.array})
    assert repr(shown) == repr(converter) == repr(again)
    assert all(f"{key}=" in repr(converter) for key in options)


def test_one_converter_in_many_threads():
    frames = [noise(seed=seed) for seed in range(4)]
    converter = kvx.Converter("BayerRG12", algorithm="ipp", black_level=64)
    expected = [converter.convert(frame) for frame in frames]

    def convert(index):
        for _ in range(5):
            assert np.array_equal(converter.convert(frames[index]), expected[index])
            converter.threads = index + 1
            assert converter.parameters["BayerAlgType"] == 1 and converter.gains == (1, 1, 1, 1)
            converter.release()

    run_all([lambda index=index: convert(index) for index in range(4)])
