"""A drawing in SVG: rectangles, texts, lines and arrows on a light background, also for dark pages."""
from xml.sax.saxutils import escape

FILTERS = {"R": "#e4675c", "G": "#63b06a", "B": "#5a8ee0", "W": "#ffffff"}
INK = "#26303c"
GREY = "#9aa4b0"
PALE = "#eef1f5"
MARK = "#d9822b"


class Drawing:
    def __init__(self, width, height, title):
        self.size = (width, height)
        self.parts = [
            f'<title>{escape(title)}</title>',
            '<defs><marker id="tip" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" markerHeight="7" '
            f'orient="auto-start-reverse"><path d="M0 0L8 4L0 8z" fill="{INK}"/></marker></defs>',
            f'<rect width="{width}" height="{height}" rx="6" fill="#fbfcfd"/>']

    def rect(self, x, y, width, height, fill, stroke=GREY, line=1, radius=0):
        self.parts.append(f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="{radius}" fill="{fill}" '
                          f'stroke="{stroke}" stroke-width="{line}"/>')

    def text(self, x, y, text, size=13, anchor="middle", colour=INK, weight="normal", family="sans-serif"):
        self.parts.append(f'<text x="{x}" y="{y}" font-size="{size}" text-anchor="{anchor}" fill="{colour}" '
                          f'font-weight="{weight}" font-family="{family}">{escape(text)}</text>')

    def arrow(self, x1, y1, x2, y2, colour=INK, line=1.6):
        self.path(f"M{x1} {y1}L{x2} {y2}", colour, line)

    def path(self, way, colour=INK, line=1.6):
        self.parts.append(f'<path d="{way}" fill="none" stroke="{colour}" stroke-width="{line}" '
                          'marker-end="url(#tip)"/>')

    def box(self, x, y, width, height, lines, fill=PALE):
        """A step of a method: a heading and a description."""
        self.rect(x, y, width, height, fill, radius=6)
        top = y + height / 2 - 8 * (len(lines) - 1) + 4
        for number, line in enumerate(lines):
            size, weight = (12, "normal") if number else (13, "bold")
            self.text(x + width / 2, top + 16 * number, line, size, weight=weight)

    @staticmethod
    def repeated(tile, side):
        """`side` rows and columns of a mosaic."""
        return ["".join(tile[row % len(tile)][column % len(tile)] for column in range(side)) for row in range(side)]

    def mosaic(self, x, y, cell, rows):
        """Sites with the letters of their filters; other letters are empty sites."""
        for row, sites in enumerate(rows):
            for column, site in enumerate(sites):
                left, top = x + column * cell, y + row * cell
                self.rect(left, top, cell, cell, FILTERS.get(site, PALE))
                if site in FILTERS:
                    self.text(left + cell / 2, top + cell / 2 + cell * 0.17, site, round(cell * 0.48), weight="bold")

    def save(self, path):
        width, height = self.size
        path.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
                        f'viewBox="0 0 {width} {height}">\n' + "\n".join(self.parts) + "\n</svg>\n")
