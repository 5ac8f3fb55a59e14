#!/usr/bin/env python3
"""Converts raw frames on the workers of a Dask cluster: local, or the one at --scheduler.

    dask_convert.py FRAME... --output FOLDER [--format BayerRG12 --width 1920 --height 1200] [--scheduler ADDRESS]

Options or the file name give format and size, as in scene_1920x1200_BayerRG12.raw. The images are PPM files. A frame
that fails does not stop the others; the list at the end gives the reasons. Exit code: 7 if some frames failed.
"""

import argparse
import contextlib
import pathlib
import re
import sys

import numpy as np
from distributed import Client, LocalCluster, as_completed

import kvxdemosaicing as kvx

NAME = re.compile(r"_(?P<width>\d+)x(?P<height>\d+)_(?P<format>[^.]+)\.")


def convert_file(path: str, output: str, given: dict, settings: dict) -> str:
    """Runs on a worker. Returns the path of the image; raises an exception on failure."""
    found = NAME.search(pathlib.Path(path).name)
    facts = {**(found.groupdict() if found else {}), **given}
    missing = {"width", "height", "format"} - facts.keys()
    if missing:
        raise ValueError(f"neither the file name nor an option gives {', '.join(sorted(missing))}")
    format = kvx.format(facts["format"])
    frame = np.fromfile(path, format.dtype)
    picture = kvx.convert(frame, format, width=int(facts["width"]), height=int(facts["height"]), threads=1, **settings)
    target = pathlib.Path(output) / (pathlib.Path(path).stem + ".ppm")
    part = target.with_suffix(".part")  # an image appears complete or not at all
    part.write_bytes(b"P6 %d %d 255\n" % picture.shape[1::-1] + picture.tobytes())
    part.replace(target)
    return str(target)


def describe(failure: BaseException) -> str:
    code = getattr(failure, "code", None)
    return f"{f'0x{code:08X}' if code else type(failure).__name__}  {failure}"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("frames", nargs="+", metavar="FRAME", help="raw files, or folders of *.raw")
    parser.add_argument("--output", required=True, metavar="FOLDER")
    parser.add_argument("--format")
    parser.add_argument("--width", type=int)
    parser.add_argument("--height", type=int)
    parser.add_argument("--algorithm")
    parser.add_argument("--look", choices=["natural"])
    parser.add_argument("--tone", choices=["linear", "srgb"])
    parser.add_argument("--white-balance", choices=["auto", "grey-world"])
    parser.add_argument("--scheduler", metavar="ADDRESS", help="of a running cluster; default: local processes")
    parser.add_argument("--workers", type=int, default=2, help="processes on this machine (default 2)")
    parser.add_argument("--retries", type=int, default=2, help="retries of a failed frame (default 2)")
    options = parser.parse_args()

    given = {name: getattr(options, name) for name in ("format", "width", "height") if getattr(options, name)}
    names = ("algorithm", "look", "tone", "white_balance")
    settings = {name: getattr(options, name) for name in names if getattr(options, name)}
    paths = [pathlib.Path(frame) for frame in options.frames]
    frames = [str(file) for path in paths for file in (sorted(path.glob("*.raw")) if path.is_dir() else [path])]
    pathlib.Path(options.output).mkdir(parents=True, exist_ok=True)

    failures = {}
    with contextlib.ExitStack() as stack:
        cluster = options.scheduler or stack.enter_context(
            LocalCluster(n_workers=options.workers, threads_per_worker=1, dashboard_address=None)
        )
        client = stack.enter_context(Client(cluster))
        tasks = {
            client.submit(convert_file, frame, options.output, given, settings, retries=options.retries): frame
            for frame in frames
        }
        for count, task in enumerate(as_completed(tasks), 1):
            if task.status != "finished":
                failures[tasks[task]] = describe(task.exception())
            print(f"\r{count} of {len(tasks)} done, {len(failures)} failed", end="", file=sys.stderr)
            task.release()
    print(file=sys.stderr)
    for frame in sorted(failures):
        print(f"failed  {frame}  {failures[frame]}")
    print(f"{len(frames) - len(failures)} of {len(frames)} frames converted into {options.output}")
    return 7 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
