#!/usr/bin/env python3
"""Measures the cost of Python per conversion, and the gain of a second Python thread.

    PYTHONPATH=build/release/python bench/python/overhead.py build/release/bench/kvx_converter_time

The program does the same work in C++; without it, only Python's times are printed. Medians, one thread per conversion.
"""

import statistics
import subprocess
import sys
import threading
import time

import numpy as np

import kvxdemosaicing as kvx

SIZES = ((4, 4), (640, 480), (1920, 1200))


def median_of(call, seconds):
    call()
    times, end = [], time.perf_counter() + seconds
    while not times or time.perf_counter() < end:
        start = time.perf_counter()
        call()
        times.append(time.perf_counter() - start)
    return statistics.median(times) * 1e6


def overhead(program, seconds, rounds):
    print("BayerRG12 to RGB8, bilinear, microseconds: C++ Converter, Python Converter.convert(), convert()")
    for width, height in SIZES:
        frame = np.full((height, width), 1000, np.uint16)
        out = np.empty((height, width, 3), np.uint8)
        converter = kvx.Converter("BayerRG12", threads=1)
        columns = []
        for _ in range(rounds):
            native = float("nan")
            if program:
                command = [program, str(width), str(height), str(seconds)]
                native = float(subprocess.run(command, check=True, capture_output=True).stdout)
            kept = median_of(lambda: converter.convert(frame, out=out), seconds)
            single = median_of(lambda: kvx.convert(frame, "BayerRG12", out=out, threads=1), seconds)
            columns.append((native, kept, single))
        print(f"{width}x{height}", *(f"{statistics.median(column):8.1f}" for column in zip(*columns)))


def two_threads(seconds):
    """Frames per second of two threads relative to one."""

    def work(counts, index, end):
        frame = np.full((1200, 1920), 1000, np.uint16)
        out = np.empty((1200, 1920, 3), np.uint8)
        converter = kvx.Converter("BayerRG12", algorithm="ipp", threads=1)
        while time.perf_counter() < end:
            converter.convert(frame, out=out)
            counts[index] += 1

    done = []
    for count in (1, 2):
        counts, end = [0] * count, time.perf_counter() + seconds
        threads = [threading.Thread(target=work, args=(counts, index, end)) for index in range(count)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        done.append(sum(counts))
    print(f"two Python threads, 1920x1200, ipp: {done[1] / done[0]:.2f} times the frames of one")


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--briefly"]
    is_brief = len(arguments) < len(sys.argv) - 1
    overhead(arguments[0] if arguments else None, 0.01 if is_brief else 1, 1 if is_brief else 5)
    two_threads(0.2 if is_brief else 10)


main()
