"""Drawings of the methods: the samples that a site uses, and the order of the steps."""
from drawings.svg import MARK, Drawing

CELL = 44


def neighbourhood(drawing, x, y, heading, rows, centre, from_sites, notes):
    """A part of a mosaic with its centre outlined and arrows from the sites that the centre is computed from."""
    side = len(rows)
    drawing.text(x + side * CELL / 2, y - 12, heading, 14, weight="bold")
    drawing.mosaic(x, y, CELL, rows)
    middle = CELL * (side / 2)
    for row, column in from_sites:
        dx, dy = (column + 0.5) * CELL - middle, (row + 0.5) * CELL - middle
        drawing.arrow(x + middle + dx * 0.72, y + middle + dy * 0.72, x + middle + dx * 0.32, y + middle + dy * 0.32)
    drawing.rect(x + centre[1] * CELL, y + centre[0] * CELL, CELL, CELL, "none", stroke=MARK, line=4)
    for number, note in enumerate(notes):
        drawing.text(x + side * CELL / 2, y + side * CELL + 20 + 17 * number, note, 12)


def draw_bilinear(folder):
    sides, corners = [(0, 1), (1, 0), (1, 2), (2, 1)], [(0, 0), (0, 2), (2, 0), (2, 2)]
    drawing = Drawing(760, 240, "Bilinear interpolation")
    red, green = ["BGB", "GRG", "BGB"], ["GBG", "RGR", "GBG"]
    neighbourhood(drawing, 30, 42, "green at red", red, (1, 1), sides, ["mean of four"])
    neighbourhood(drawing, 220, 42, "blue at red", red, (1, 1), corners, ["mean of four diagonals"])
    neighbourhood(drawing, 410, 42, "red at green", green, (1, 1), [(1, 0), (1, 2)], ["mean of two"])
    neighbourhood(drawing, 600, 42, "blue at green", green, (1, 1), [(0, 1), (2, 1)], ["mean of two"])
    drawing.save(folder / "bilinear.svg")


def draw_edge_aware(folder):
    drawing = Drawing(600, 250, "Edge-aware interpolation of green")
    red = ["BGB", "GRG", "BGB"]
    neighbourhood(drawing, 90, 42, "horizontal: |left - right|", red, (1, 1), [(1, 0), (1, 2)],
                  ["smaller, or equal: green is the", "mean of left and right"])
    neighbourhood(drawing, 380, 42, "vertical: |above - below|", red, (1, 1), [(0, 1), (2, 1)],
                  ["smaller: green is the mean", "of above and below"])
    drawing.save(folder / "edge-aware.svg")


def draw_chain(title, steps, path, per_row=4):
    """Boxes connected by arrows, row by row."""
    width, height, gap = 196, 74, 26
    rows = (len(steps) + per_row - 1) // per_row
    drawing = Drawing(per_row * (width + gap) + 6, rows * (height + 40), title)
    for number, lines in enumerate(steps):
        row, column = divmod(number, per_row)
        x, y = 20 + column * (width + gap), 20 + row * (height + 40)
        drawing.box(x, y, width, height, lines)
        if number + 1 < len(steps):
            if column + 1 < per_row:
                drawing.arrow(x + width + 3, y + height / 2, x + width + gap - 3, y + height / 2)
            else:
                below = y + height + 20
                drawing.path(f"M{x + width / 2} {y + height + 2}V{below}H{20 + width / 2}V{below + 17}")
    drawing.save(path)


def draw_in_house(folder):
    draw_chain("The in-house interpolator", [
        ["1 differences", "green - colour, along the", "row and down the column"],
        ["2 activity", "gradient, change and", "noise of the differences"],
        ["3 directions", "a cost for each axis,", "from a window of 5x5"],
        ["4 green", "four half lines, weighted", "by 1 / cost"],
        ["5 slopes", "how much red and blue", "follow green here"],
        ["6 red and blue", "at the other colour's sites", "by four diagonals"],
        ["6 red and blue", "at green sites", "by four direct neighbours"],
        ["picture", "known samples kept,", "rounded, clamped"]], folder / "in-house.svg")


def draw_pan(folder, tile):
    """The mosaic, then its pan sites and its colour sites."""
    rows = Drawing.repeated(tile, 6)

    def only(kept):
        return ["".join(site if site in kept else " " for site in row) for row in rows]

    drawing = Drawing(880, 330, "A TrueSense mosaic is pan and colour")
    for number, (heading, part) in enumerate((("the mosaic", rows), ("pan: half of the sites", only("W")),
                                              ("colour: one site in four or eight", only("RGB")))):
        x = 26 + 288 * number
        drawing.text(x + 3 * CELL, 32, heading, 14, weight="bold")
        drawing.mosaic(x, 44, CELL, part)
    drawing.save(folder / "pan-and-colour.svg")


def draw_fast(folder):
    draw_chain("The fast TrueSense interpolator", [
        ["1 pan at colour sites", "mean of the pan pair with", "the smaller difference"],
        ["2 differences", "pan - colour,", "one colour at each site"],
        ["3 green everywhere", "mean of four differences", "two sites away"],
        ["3 red at blue, blue at red", "mean of four differences", "at the diagonals"],
        ["4 red and blue at green", "mean of four differences", "two sites away"],
        ["5 colours at pan sites", "mean of the adjacent sites,", "along the smaller gradient"],
        ["6 pixels", "pan - difference, then", "colour matrix, tone curve"]], folder / "truesense-fast.svg")


def draw_pipeline(folder):
    drawing = Drawing(900, 490, "The noise-reducing pipeline")
    drawing.box(20, 30, 170, 62, ["raw samples", "minus the dark floor"])
    drawing.box(230, 30, 190, 62, ["Alg_WhiteBalance", "quarter planes"])
    drawing.box(470, 30, 190, 62, ["Alg_InterpolatePan", "pan at every site"])
    drawing.box(700, 120, 180, 62, ["full-resolution pan", "detail"], "#fdf1e3")
    drawing.box(470, 130, 190, 62, ["Alg_GenerateLow", "half resolution"])
    drawing.box(330, 230, 210, 62, ["Alg_LowColorDiffClean", "filters colour"], "#e6f1fb")
    drawing.box(570, 230, 190, 62, ["Alg_LowPanClean", "filters pan"], "#e6f1fb")
    drawing.box(330, 320, 210, 62, ["Alg_LowColorDiffUpSample", "colour minus pan"])
    drawing.box(570, 320, 190, 62, ["Alg_LowPanUpSample", "low-pass pan"])
    drawing.box(330, 412, 210, 58, ["Alg_ColorCorrection", "matrix, tone"])
    drawing.box(570, 412, 190, 58, ["Alg_Sharpness", "detail added"])
    drawing.box(790, 412, 96, 58, ["picture", "8-bit RGB"])
    for line in ((190, 61, 227, 61), (420, 61, 467, 61), (565, 92, 565, 127), (660, 61, 745, 117), (500, 192, 440, 227),
                 (620, 192, 665, 227), (435, 292, 435, 317), (665, 292, 665, 317), (435, 382, 435, 409),
                 (580, 383, 520, 410), (665, 382, 665, 409), (835, 182, 735, 409), (540, 441, 567, 441),
                 (760, 441, 787, 441)):
        drawing.arrow(*line)
    drawing.save(folder / "pipeline.svg")


def draw_methods(tool, folder):
    draw_bilinear(folder)
    draw_edge_aware(folder)
    draw_in_house(folder)
    draw_pan(folder, tool.explain("SCF1WBWG8").tile)
    draw_fast(folder)
    draw_pipeline(folder)
