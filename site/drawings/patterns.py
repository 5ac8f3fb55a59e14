"""The pattern guide: every mosaic as the library knows it, with its names."""
from drawings.svg import INK, MARK, Drawing


def repeated(tile, side):
    return ["".join(tile[row % len(tile)][column % len(tile)] for column in range(side)) for row in range(side)]


def draw_mosaics(mosaics, columns, side, cell, title, path):
    """A grid of mosaics (headings and tiles), each `side` sites wide, its first tile framed."""
    step_x, step_y = side * cell + 36, side * cell + 52
    rows = (len(mosaics) + columns - 1) // columns
    drawing = Drawing(columns * step_x + 12, rows * step_y + 8, title)
    for number, (heading, tile) in enumerate(mosaics):
        x, y = 24 + number % columns * step_x, 36 + number // columns * step_y
        drawing.text(x + side * cell / 2, y - 11, heading, 13, weight="bold")
        drawing.mosaic(x, y, cell, repeated(tile, side))
        drawing.rect(x, y, len(tile) * cell, len(tile) * cell, "none", stroke=INK, line=3)
        drawing.rect(x + 2, y + 2, cell - 4, cell - 4, "none", stroke=MARK, line=2)
    drawing.save(path)


def table(rows, headings):
    lines = ["| " + " | ".join(headings) + " |", "|" + "---|" * len(headings)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def code(text):
    return ", ".join(f"`{name}`" for name in text.split(", ")) if text not in ("-", "") else ""


def draw_bayer(tool, folder):
    orders = ["BayerRG", "BayerGR", "BayerGB", "BayerBG"]
    explained = [tool.explain(order + "8") for order in orders]
    draw_mosaics([(f"{order} ({'/'.join(facts.tile)})", facts.tile) for order, facts in zip(orders, explained)], 4, 4,
                 36, "The four Bayer orders", folder / "bayer-orders.svg")
    rows = [[f"{' '.join(facts.tile[0])} / {' '.join(facts.tile[1])}", code(order + "8")] +
            [code(facts.names[scheme]) for scheme in ("GStreamer", "V4L2", "OpenCV")]
            for order, facts in zip(orders, explained)]
    (folder / "bayer-names.md").write_text(
        table(rows, ["tile", "library and PFNC", "GStreamer", "V4L2", "OpenCV's conversion for it"]))


def draw_truesense(tool, folder):
    names = [row["name"] for row in tool.formats()
             if row["name"].startswith("TrueSense_") and row["name"].endswith("_12")]
    explained = {name: tool.explain(name) for name in names}
    draw_mosaics([(name.removeprefix("TrueSense_").removesuffix("_12"), explained[name].tile) for name in names], 4, 4,
                 36, "The sixteen TrueSense phases", folder / "truesense-phases.svg")
    rows = [[code(" ".join(facts.tile)), code(name), code(facts.names["PFNC"]), code(facts.names["this layer"])]
            for name, facts in explained.items()]
    (folder / "truesense-names.md").write_text(table(rows, ["rows of the tile", "library", "PFNC", "frame layer"]))
