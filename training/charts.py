"""Pictures drawn for what photographs rarely show: zone plates, lines, text, saturated edges, flat fields."""
import numpy as np
from PIL import Image, ImageDraw

_SIDE = 512


def _colour(rng):
    """Saturated as often as not."""
    colour = rng.integers(0, 256, 3)
    return tuple(int(v) for v in (np.where(rng.random(3) < 0.5, colour, rng.choice([0, 255], 3))))


def _zone_plate(rng):
    y, x = np.mgrid[:_SIDE, :_SIDE] - rng.uniform(0, _SIDE, 2)[:, None, None]
    waves = np.cos((x**2 + y**2) * np.pi / _SIDE / rng.uniform(1.1, 3)) * 0.5 + 0.5
    first, second = (np.array(_colour(rng), float) for _ in range(2))
    if rng.random() < 0.6:
        first, second = np.full(3, rng.uniform(0, 100)), np.full(3, rng.uniform(150, 255))
    return np.rint(first + waves[..., None] * (second - first)).astype(np.uint8)


def _drawing(rng):
    """Shapes, lines and text, drawn at four times the size and averaged."""
    scale = 4
    image = Image.new("RGB", (_SIDE * scale, _SIDE * scale), _colour(rng))
    draw = ImageDraw.Draw(image)
    for _ in range(60):
        points = [tuple(p) for p in rng.integers(0, _SIDE * scale, (4, 2)).tolist()]
        kind = rng.integers(4)
        if kind == 0:
            draw.polygon(points[:3], fill=_colour(rng))
        elif kind == 1:
            draw.ellipse([points[0], tuple(np.add(points[0], rng.integers(8, 400, 2)).tolist())], fill=_colour(rng))
        else:
            draw.line(points[:2], fill=_colour(rng), width=int(rng.integers(2, 14)))
    reduced = image.resize((_SIDE, _SIDE), Image.Resampling.BOX)
    draw = ImageDraw.Draw(reduced)
    for _ in range(25):
        letters = "".join(chr(c) for c in rng.integers(33, 127, rng.integers(4, 20)))
        draw.text(tuple(rng.integers(0, _SIDE, 2).tolist()), letters, fill=_colour(rng))
    return np.asarray(reduced)


def drawn(count, seed):
    rng = np.random.default_rng(seed)
    return [(_zone_plate if i % 3 == 0 else _drawing)(rng) for i in range(count)]
