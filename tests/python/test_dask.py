"""The recipe for many machines, with two processes on this one."""

import pathlib
import subprocess
import sys

import numpy as np

import kvxdemosaicing as kvx

RECIPE = pathlib.Path(__file__).parents[2] / "examples" / "dask_convert.py"


def test_one_broken_frame_of_twenty(tmp_path):
    frames, pictures = tmp_path / "frames", tmp_path / "pictures"
    frames.mkdir()
    expected = {}
    for index in range(20):
        samples = np.random.default_rng(index).integers(0, 4096, (24, 32), np.uint16)
        path = frames / f"frame{index}_32x24_BayerRG12p.raw"
        content = kvx.pack(samples, "BayerRG12p").tobytes()
        path.write_bytes(content[:-1] if index == 13 else content)
        expected[path.stem + ".ppm"] = kvx.convert(samples, "BayerRG12", algorithm="ipp", tone="srgb").tobytes()
    del expected["frame13_32x24_BayerRG12p.ppm"]
    command = [sys.executable, RECIPE, frames, frames / "none_8x8_Mono8.raw", "--output", pictures]
    options = ["--retries", "1", "--algorithm", "ipp", "--tone", "srgb"]
    run = subprocess.run([*command, *options], capture_output=True, text=True, timeout=300)
    assert run.returncode == 7, run.stderr
    lines = run.stdout.splitlines()
    assert lines[-1].startswith("19 of 21 frames converted")
    assert len(lines) == 3 and "frame13_" in lines[0] and "0x80070007" in lines[0] and "FileNotFoundError" in lines[1]
    assert "21 of 21 done, 2 failed" in run.stderr
    assert {path.name: path.read_bytes()[13:] for path in pictures.iterdir()} == expected
