#!/usr/bin/env python3
"""Checks that charts are found where they are, and nowhere else.

Frames (PGM with a sidecar) must show a colour chart. It must be found in the frame as it is, turned, mirrored and
reduced to a third, and the mean CIEDE2000 after the fit must be at most 4. Folders hold photographs without a chart:
none may be found in them. Frames and folders that are missing are skipped.
"""
import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile

import numpy as np

LARGEST_ERROR = 4
NO_CHART = 4  # exit code


def read_pgm(path):
    header, width, height, maximum, samples = re.match(
        rb"(P5)\s+(\d+)\s+(\d+)\s+(\d+)\s(.*)", path.read_bytes(), re.DOTALL).groups()
    kind = np.uint8 if int(maximum) < 256 else np.dtype(">u2")
    return np.frombuffer(samples, kind).reshape(int(height), int(width)), int(maximum)


def reduced(frame):
    """To a third: means of nine samples of the same colour, whose middle is three sites from the next one."""
    rows, columns = (3 * np.arange(size // 6 * 2) for size in frame.shape)
    shifts = (-2, 0, 2)
    parts = [frame[np.ix_(np.abs(rows + down), np.abs(columns + across))].astype(float)
             for down in shifts for across in shifts]
    return np.rint(np.mean(parts, axis=0)).astype(frame.dtype)


VARIATIONS = {
    "as it is": lambda frame: frame,
    "turned by 90": lambda frame: np.rot90(frame, 1),
    "turned by 180": lambda frame: np.rot90(frame, 2),
    "turned by 270": lambda frame: np.rot90(frame, 3),
    "mirrored": np.fliplr,
    "a third": reduced,
    "a third, turned": lambda frame: np.rot90(reduced(frame), 1),
}


def calibrate(tool, path, folder):
    command = [tool, "calibrate", "chart", path, "-o", folder / "camera.json"]
    return subprocess.run(command, capture_output=True, text=True)


def check_frame(tool, path, folder):
    frame, maximum = read_pgm(path)
    sidecar = json.loads(path.with_suffix(".json").read_text())
    letters = np.frombuffer(sidecar["bayer_pattern"].encode(), np.uint8).reshape(2, 2)
    failures = 0
    for name, change in VARIATIONS.items():
        changed = np.ascontiguousarray(change(frame))
        # The same change of a field of letters, as numbers, gives the pattern.
        sites = change(np.tile(letters, [size // 2 for size in frame.shape]))
        height, width = changed.shape
        target = folder / "frame.pgm"
        target.write_bytes(b"P5 %d %d %d\n" % (width, height, maximum) + changed.tobytes())
        known = {key: sidecar[key] for key in ("bits_per_sample", "black_level", "white_level")}
        known["bayer_pattern"] = sites[:2, :2].tobytes().decode()
        target.with_suffix(".json").write_text(json.dumps(known))
        (folder / "camera.json").unlink(missing_ok=True)
        result = calibrate(tool, target, folder)
        figures = re.search(r"^mean +([\d.]+) +([\d.]+)\n\ngains +(.*)", result.stdout, re.MULTILINE)
        if figures:
            print(f"{path.stem:24} {name:16} before {figures[1]} after {figures[2]}  gains {figures[3]}")
        if not figures or float(figures[2]) > LARGEST_ERROR:
            print(f"{path.stem:24} {name:16} failed: {result.stderr}", end="")
            failures += 1
    return failures


def check_photograph(tool, path, folder):
    """The number of charts found in a photograph: 0 or 1."""
    frame = folder / "photograph.pgm"
    subprocess.run([tool, "mosaic", path, frame, "--format", "BayerRG8", "--linear"], check=True, capture_output=True)
    result = calibrate(tool, frame, folder)
    if result.returncode != NO_CHART or "no chart found" not in result.stderr:
        print(f"{path}: {result.stderr}{result.stdout}", end="")
        return 1
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("tool", type=pathlib.Path, help="kvx-demosaic")
    parser.add_argument("--frames", nargs="*", default=[], type=pathlib.Path, help="PGM files with a chart")
    parser.add_argument("--photographs", nargs="*", default=[], type=pathlib.Path, help="folders without one")
    arguments = parser.parse_args()
    failures = checked = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for frame in filter(pathlib.Path.exists, arguments.frames):
            failures += check_frame(arguments.tool, frame, folder)
            checked += 1
        for photographs in filter(pathlib.Path.is_dir, arguments.photographs):
            pictures = sorted(path for path in photographs.iterdir() if path.suffix in (".png", ".webp", ".tiff"))
            found = sum(check_photograph(arguments.tool, path, folder) for path in pictures)
            print(f"{photographs}: {found} charts found in {len(pictures)} photographs")
            failures += found
            checked += len(pictures)
    if checked == 0:
        parser.error("there is nothing to check")
    return failures > 0


if __name__ == "__main__":
    sys.exit(main())
