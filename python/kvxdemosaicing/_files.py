"""Frames in files. The program kvx-demosaic reads them, so that its rules for names, sidecars and kinds of files hold
here, too."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import tempfile
import warnings
from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from typing import Any, NamedTuple, Optional, Union

import numpy as np

from kvxdemosaicing._arrays import Frame
from kvxdemosaicing._error import INVALID_ARGUMENT, refusal
from kvxdemosaicing._format import Format, FormatLike, format as find_format

PathLike = Union[str, "os.PathLike[str]"]


class FrameFile(NamedTuple):
    """A frame as read() returns it: ``convert(file.samples, file.format, **file.settings)`` makes its picture."""

    samples: Frame
    """rows and columns of uint8 or uint16, right-aligned"""
    format: Format
    """of the samples, not packed"""
    settings: dict[str, Any]
    """what file and sidecar say, as keywords of convert(): black_level, white_level, white_balance, matrix"""
    orientation: int
    """how to turn the picture, 1 to 8 as in Exif; 1: it is upright"""


class Guess(NamedTuple):
    """A possible format of a frame."""

    format: Format
    width: int
    height: int
    score: float
    """0 to 1; formats with the same score cannot be told apart by the samples"""


def read(
    path: PathLike,
    *,
    format: Optional[FormatLike] = None,
    width: Optional[int] = None,
    height: Optional[int] = None,
    stride: Optional[int] = None,
    skip_bytes: Optional[int] = None,
    frame: Optional[int] = None,
) -> FrameFile:
    """Reads a frame from a file: headerless, PGM, PNG, TIFF, NumPy, DNG or another camera raw file, packed or not.

    What is not given comes from the sidecar (``NAME.json``), the name of the file or the file itself, as for the
    program ``kvx-demosaic``, which must be installed: on the search path, or at the path in the variable KVX_DEMOSAIC.
    Without it, or without the file, raises FileNotFoundError; Error if the file is no such frame. What the program
    notices about the file is a warning.

    :param stride: bytes from row to row of a headerless file; None: rows without padding
    :param skip_bytes: bytes before the first row of a headerless file
    :param frame: frame of a headerless file that has several, from 0
    """
    name = None if format is None else find_format(format).name
    with _reachable(path) as file, tempfile.TemporaryDirectory() as folder:
        unpacked = os.path.join(folder, "frame.npy")
        options = {"width": width, "height": height, "stride": stride, "skip-bytes": skip_bytes, "frame": frame}
        _run(["unpack", file, unpacked], {"format": name, **options})
        samples = np.load(unpacked)
        with open(f"{unpacked}.json", encoding="utf-8") as written:
            known = json.load(written)
    settings = {key: known[key] for key in ("black_level", "white_level") if key in known}
    if gains := known.get("white_balance_gains"):
        settings["white_balance"] = [gains[colour] for colour in "RGB"]
    if matrix := known.get("colour_matrix"):
        settings["matrix"] = matrix
    return FrameFile(samples, find_format(known["format"]), settings, known.get("orientation", 1))


def guess(
    frame: Union[PathLike, Frame],
    *,
    width: Optional[int] = None,
    height: Optional[int] = None,
    depth: Optional[int] = None,
    skip_bytes: Optional[int] = None,
) -> list[Guess]:
    """Guesses the format of a frame from its samples, best guess first, as ``kvx-demosaic guess`` does.

    Red and blue have the same score when they are exchanged; the warmer one comes first. Needs the program, as read().

    :param frame: path of a file, or an array of rows and columns
    :param width, height: of a headerless file; None: every size that fills the file is tried
    :param depth: bits per sample; None: guessed, too
    """
    options = {"width": width, "height": height, "depth": depth, "skip-bytes": skip_bytes}
    with _reachable(frame) as file, tempfile.TemporaryDirectory() as folder:
        answer = _run(["guess", "--json", file, f"--output={folder}/sheet.png"], options)
    ranking = json.loads(answer)["ranking"]
    return [Guess(find_format(row["format"]), row["width"], row["height"], row["score"]) for row in ranking]


@contextmanager
def _reachable(frame: Union[PathLike, Frame]) -> Iterator[str]:
    """The path of an existing file; an array becomes a file for a while."""
    if not isinstance(frame, np.ndarray):
        os.stat(frame)  # raises FileNotFoundError with the name
        yield os.path.abspath(frame)  # a relative one could look like an option
        return
    with tempfile.TemporaryDirectory() as folder:
        name = os.path.join(folder, "frame.npy")
        np.save(name, frame)
        yield name


def _run(words: Sequence[str], options: dict[str, Any]) -> str:
    """The standard output of the program; its messages are warnings, or an Error if it fails."""
    program = os.environ.get("KVX_DEMOSAIC") or shutil.which("kvx-demosaic")
    if program is None:
        raise FileNotFoundError("read() and guess() need the program kvx-demosaic: install it, or set KVX_DEMOSAIC")
    given = [f"--{name}={value}" for name, value in options.items() if value is not None]
    done = subprocess.run([program, *words, *given], capture_output=True, check=False)
    lines = done.stderr.decode(errors="replace").splitlines()
    messages = [line.removeprefix("kvx-demosaic: ") for line in lines]
    if done.returncode != 0:
        raise refusal(INVALID_ARGUMENT, "\n".join(messages))
    for message in messages:
        if " taken from " not in message:  # the format is in the result
            warnings.warn(message, stacklevel=3)
    return done.stdout.decode()
