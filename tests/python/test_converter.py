"""Converters: parameters by name, and threads."""

import math
import sys
import threading
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
    bilinear = converter.convert(frame)
    converter.parameters["BayerAlgType"] = 2
    assert converter.algorithm == "edge-aware"
    assert np.array_equal(converter.convert(frame), kvx.convert(frame, "BayerRG12", algorithm="edge-aware"))
    assert not np.array_equal(converter.convert(frame), bilinear)
    converter.format = "BayerGB12"
    converter.release()
    assert np.array_equal(converter.convert(frame[1:]), kvx.convert(frame[1:], "BayerGB12", algorithm=2))


def run_all(calls):
    """Runs the calls in threads of their own. What they raise is raised."""
    failures = []

    def guarded(call):
        try:
            call()
        except BaseException as failure:
            failures.append(failure)

    threads = [threading.Thread(target=guarded, args=(call,)) for call in calls]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        raise failures[0]


def test_two_threads_convert_at_the_same_time():
    """While one conversion runs, the other thread gets through Python code and a conversion of its own."""
    large, small = noise((3000, 4000)), noise((40, 60))
    slow = kvx.Converter("BayerRG12", algorithm="ipp", threads=1)
    expected_large, expected_small = slow.convert(large), kvx.convert(small, "BayerRG12", algorithm="ipp")
    spans, done = {}, threading.Event()

    def convert_large():
        start = time.perf_counter()
        picture = slow.convert(large)
        spans["large"] = start, time.perf_counter()  # nothing else here lets the other thread run
        done.set()
        assert np.array_equal(picture, expected_large)

    def convert_small():
        fast, finished = kvx.Converter("BayerRG12", algorithm="ipp", threads=1), []
        while not done.is_set():
            start = time.perf_counter()
            assert np.array_equal(fast.convert(small), expected_small)
            finished.append((start, time.perf_counter()))
        spans["small"] = finished

    interval = sys.getswitchinterval()
    sys.setswitchinterval(10)  # nobody takes the interpreter's lock from a thread that does not give it away
    try:
        run_all([convert_large, convert_small])
    finally:
        sys.setswitchinterval(interval)
    start, end = spans["large"]
    inside = [span for span in spans["small"] if start < span[0] and span[1] < end]
    assert len(inside) >= 3


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
