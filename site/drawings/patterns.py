"""The pattern guide: every mosaic with its names, as the library describes it."""
from drawings.svg import INK, MARK, Drawing

COLUMNS, SIDE, CELL = 4, 4, 36


def draw_mosaics(mosaics, title, path):
    """A grid of mosaics (headings and tiles), each SIDE sites wide, with first tile and first pixel outlined."""
    step_x, step_y = SIDE * CELL + 36, SIDE * CELL + 52
    rows = (len(mosaics) + COLUMNS - 1) // COLUMNS
    drawing = Drawing(COLUMNS * step_x + 12, rows * step_y + 8, title)
    for number, (heading, tile) in enumerate(mosaics):
        x, y = 24 + number % COLUMNS * step_x, 36 + number // COLUMNS * step_y
        drawing.text(x + SIDE * CELL / 2, y - 11, heading, 13, weight="bold")
        drawing.mosaic(x, y, CELL, drawing.repeated(tile, SIDE))
        drawing.rect(x, y, len(tile) * CELL, len(tile) * CELL, "none", stroke=INK, line=3)
        drawing.rect(x + 2, y + 2, CELL - 4, CELL - 4, "none", stroke=MARK, line=2)
    drawing.save(path)


def write_table(headings, rows, path):
    lines = ["| " + " | ".join(headings) + " |", "|" + "---|" * len(headings)]
    path.write_text("\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n")


def code(text):
    return ", ".join(f"`{name}`" for name in text.split(", ")) if text not in ("-", "") else ""


def draw_bayer(tool, folder):
    explained = {order: tool.explain(order + "8") for order in ("BayerRG", "BayerGR", "BayerGB", "BayerBG")}
    draw_mosaics([(f"{order} ({'/'.join(facts.tile)})", facts.tile) for order, facts in explained.items()],
                 "The four Bayer orders", folder / "bayer-orders.svg")
    write_table(["tile", "library and PFNC", "GStreamer", "V4L2", "OpenCV's conversion for it"],
                [[" / ".join(" ".join(row) for row in facts.tile), code(order + "8")]
                 + [code(facts.names[scheme]) for scheme in ("GStreamer", "V4L2", "OpenCV")]
                 for order, facts in explained.items()], folder / "bayer-names.md")


def draw_truesense(tool, folder):
    explained = {row["name"]: tool.explain(row["name"]) for row in tool.formats()
                 if row["name"].startswith("TrueSense_") and row["name"].endswith("_12")}
    tiles = [(name.removeprefix("TrueSense_").removesuffix("_12"), facts.tile) for name, facts in explained.items()]
    draw_mosaics(tiles, "The sixteen TrueSense phases", folder / "truesense-phases.svg")
    write_table(["rows of the tile", "library", "PFNC", "frame layer"],
                [[code(" ".join(facts.tile)), code(name), code(facts.names["PFNC"]), code(facts.names["this layer"])]
                 for name, facts in explained.items()], folder / "truesense-names.md")
