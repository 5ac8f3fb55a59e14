"""The tool, the module and the element give the same bytes for the same settings."""

import json
import os
import subprocess

import numpy as np
import pytest

import kvxdemosaicing as kvx

WIDTH, HEIGHT = 48, 32
LEVELS, GAINS = (12.5, 13, 12, 12.25), (1.5, 1.25, 2)


def write_profile(path, name):
    """A camera with everything that is corrected."""
    filters = ["R", "G", "B", "W"] if name.startswith("SCF") else ["R", "Gr", "Gb", "B"]
    path.write_text(json.dumps({
        "kvx_camera_profile": 1, "format": name, "width": WIDTH, "height": HEIGHT, "black_level": LEVELS,
        "white_balance_gains": {"R": 1.5, "G": 1, "B": 2}, "colour_matrix": [1.5, -0.5, 0, 0, 1, 0, 0, -0.5, 1.5],
        "noise": {"slope": 2, "intercept": 30}, "hot_pixels": [[3, 4], [47, 31]], "dead_pixels": [[20, 9], [21, 9]],
        "shading": {"columns": 2, "rows": 2, "gains": {name: [1, 1.5, 1.25, 2] for name in filters}}}))
    return path


def text(numbers):
    return ",".join(str(number) for number in numbers)


# Arguments of Python, which the others spell with dashes.
@pytest.mark.parametrize(
    "settings",
    [
        {},
        {"look": "natural"},
        {"look": "natural", "black_level": 12.5, "algorithm": "fine", "analog_gain": 12},
        {"look": "natural", "exposure": -0.5, "white_balance": "grey-world"},
        {"black_level": LEVELS, "white_level": 250.5, "white_balance": GAINS, "exposure": 0.25, "algorithm": "ipp"},
        {"white_balance": "auto", "exposure": "auto", "algorithm": "swift"},
        {"camera": "camera.json", "tone": "srgb", "exposure": "auto", "algorithm": "fine"},
        {"camera": "camera.json", "look": "natural", "algorithm": "ipp"},
        {"white_balance": "white-patch", "tone": "srgb", "matrix": (1.5, -0.5, 0, -0.2, 1.4, -0.2, 0, -0.5, 1.5)},
    ],
)
@pytest.mark.parametrize("name, caps", [("BayerGB8", "gbrg"), ("BayerRG12", "rggb12le"), ("SCF1WBWG12", "SCF1WBWG12")])
def test_the_same_bytes(tmp_path, settings, name, caps):
    if name.startswith("SCF") and settings.get("algorithm") == "ipp":
        settings = {**settings, "algorithm": "kodak-like"}
    if "camera" in settings:
        settings = {**settings, "camera": write_profile(tmp_path / settings["camera"], name)}
    format = kvx.format(name)
    scene = np.random.default_rng(1).integers(0, 2**format.bits, (HEIGHT, WIDTH), format.dtype) // 2
    raw, ppm, rgb = tmp_path / "frame.raw", tmp_path / "picture.ppm", tmp_path / "picture.rgb"
    scene.tofile(raw)

    expected = kvx.convert(scene, name, **settings).tobytes()
    spelled = {key.replace("_", "-"): text(v) if isinstance(v, tuple) else str(v) for key, v in settings.items()}
    options = [f"--{key}={value}" for key, value in spelled.items()]
    size = [f"--format={name}", f"--width={WIDTH}", f"--height={HEIGHT}"]
    subprocess.run([os.environ["KVX_DEMOSAIC"], "convert", raw, ppm, *size, *options], check=True)
    assert ppm.read_bytes()[-len(expected):] == expected

    media = "video/x-kvx-truesense" if name.startswith("SCF") else "video/x-bayer"
    source = ["filesrc", f"location={raw}", f"blocksize={scene.nbytes}", "!"]
    element = ["kvxdemosaic", *(f"{key}={value}" for key, value in spelled.items()), "!", "video/x-raw,format=RGB", "!"]
    given = [f"{media},format={caps},width={WIDTH},height={HEIGHT}", "!"]
    subprocess.run(["gst-launch-1.0", "-q", *source, *given, *element, "filesink", f"location={rgb}"], check=True)
    assert rgb.read_bytes() == expected
