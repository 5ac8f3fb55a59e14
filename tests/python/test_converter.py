"""Converters: parameters by name, and threads."""

import concurrent.futures
import json
import math
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
    lists = {filter: [1, 2, 1, 2] for filter in ("R", "Gr", "Gb", "B")}
    profile = {"kvx_camera_profile": 1, "format": "BayerRG12", "width": 8, "height": 6, "black_level": 64,
               "dead_pixels": [[3, 2]], "shading": {"columns": 2, "rows": 2, "gains": lists}}
    path = tmp_path / "camera.json"
    path.write_text(json.dumps(profile))
    picture = kvx.convert(frame, "BayerRG12", to="RGB12", camera=path)
    level = 1000 / 4031 * 4095
    for column in range(1, 7):  # bilinear: border columns repeat these
        assert np.allclose(picture[:, column], level * (1 + column / 7), atol=2)
    assert np.all(picture[2, 3] < 2 * level)
    with pytest.raises(kvx.Error, match="for frames of 8x6"):
        kvx.convert(frame[:4], "BayerRG12", camera=str(path))
    with pytest.raises(kvx.Error, match="cannot be read"):
        kvx.convert(frame, "BayerRG12", camera="missing.json")
    assert kvx.convert(frame, "BayerRG12", to="RGB12", defects="auto").max() <= 1066
    with pytest.raises(kvx.Error, match="listed"):
        kvx.convert(frame, "BayerRG12", defects="all")


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
