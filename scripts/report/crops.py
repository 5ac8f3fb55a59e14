"""Crops of difficult places, side by side."""
import matplotlib.image
import matplotlib.pyplot as plt
import numpy as np

import names

SHOWN = ["bilinear", "ipp", "fine", "opencv-vng", "libraw-ppg", "libraw-ahd", "libraw-dcb", "libraw-aahd"]
SIDE, ENLARGEMENT, GAP, HEADER = 32, 3, 4, 18
_PAPER, _INK = (250, 250, 250), "#24292f"


def _read(path):
    return (matplotlib.image.imread(path)[..., :3] * 255 + 0.5).astype(np.uint8)


def _hard_places(original, restored):
    """Corners of squares: three where the methods differ most, then three with the largest errors of in-house."""
    pictures = np.array(restored, float)
    # The median ignores differences of a single method.
    difference = np.median(abs(pictures - np.median(pictures, axis=0)), axis=0).sum(axis=2)
    error = ((pictures[SHOWN.index("ipp")] - original) ** 2).sum(axis=2)
    return _peaks(difference, 3, []) + _peaks(error, 3, _peaks(difference, 3, []))


def _peaks(values, count, taken):
    """Corners of the squares with the largest sums, away from each other and from those in `taken`."""
    sums = np.pad(values, ((1, 0), (1, 0))).cumsum(0).cumsum(1)
    totals = sums[SIDE:, SIDE:] - sums[:-SIDE, SIDE:] - sums[SIDE:, :-SIDE] + sums[:-SIDE, :-SIDE]
    border = 10
    totals[:border], totals[:, :border], totals[-border:], totals[:, -border:] = 0, 0, 0, 0
    apart = 3 * SIDE  # neighbours show the same fault

    def strike(row, column):
        totals[max(row - apart, 0):row + apart, max(column - apart, 0):column + apart] = 0

    for corner in taken:
        strike(*corner)
    corners = []
    for _ in range(count):
        corners.append(np.unravel_index(totals.argmax(), totals.shape))
        strike(*corners[-1])
    return corners


def sheet(original_path, results, path):
    """A row per place: the original, then each method."""
    methods = [method for method in SHOWN if (results / "pictures" / method / original_path.name).exists()]
    original = _read(original_path)
    restored = [_read(results / "pictures" / method / original_path.name) for method in methods]
    cell = SIDE * ENLARGEMENT
    corners = _hard_places(original, restored)
    width, height = (cell + GAP) * (len(methods) + 1) + GAP, HEADER + (cell + GAP) * len(corners)
    canvas = np.full((height, width, 3), _PAPER, np.uint8)
    for row, (top, left) in enumerate(corners):
        for column, picture in enumerate([original, *restored]):
            part = picture[top:top + SIDE, left:left + SIDE].repeat(ENLARGEMENT, 0).repeat(ENLARGEMENT, 1)
            y, x = HEADER + row * (cell + GAP), GAP + column * (cell + GAP)
            canvas[y:y + cell, x:x + cell] = part
    dpi = 100
    figure = plt.figure(figsize=(width / dpi, height / dpi), dpi=dpi, layout="none")
    figure.figimage(canvas)
    for column, method in enumerate(["original", *methods]):
        look = names.look(method) if method != "original" else None
        figure.text((GAP + column * (cell + GAP) + cell / 2) / width, 1 - HEADER / 2 / height,
                    look.label if look else method, ha="center", va="center", fontsize=7.5,
                    color=look.colour if look else _INK, fontweight="bold" if look and look.ours else "normal")
    figure.savefig(path, dpi=dpi, format="png", metadata={"Software": None})
    plt.close(figure)
