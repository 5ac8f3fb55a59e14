"""Plots for light and dark pages, with labels that do not overlap."""
import matplotlib

matplotlib.use("agg")
import matplotlib.pyplot as plt  # noqa: E402

#: Colours of a light page, which the file maps to those of a dark page. No data has these colours.
_INK, _PAPER, _FAINT = "#24292f", "#ffffff", "#d8dee4"
_DARK = {_INK: "#e6edf3", _PAPER: "#161b22", _FAINT: "#373e47"}

plt.rcParams.update({
    "font.family": "DejaVu Sans", "font.size": 9, "figure.dpi": 72, "svg.fonttype": "path", "svg.hashsalt": "report",
    "text.color": _INK, "axes.labelcolor": _INK, "xtick.color": _INK, "ytick.color": _INK, "axes.edgecolor": _FAINT,
    "axes.facecolor": _PAPER, "figure.facecolor": _PAPER, "savefig.facecolor": _PAPER,
    "grid.color": _FAINT, "grid.linewidth": 0.6, "axes.grid": True, "axes.axisbelow": True,
    "axes.spines.top": False, "axes.spines.right": False, "axes.titlesize": 10, "axes.titleweight": "bold",
    "axes.titlelocation": "left", "xtick.major.size": 0, "ytick.major.size": 0, "xtick.minor.size": 0,
    "ytick.minor.size": 0, "figure.constrained_layout.use": True, "lines.linewidth": 1.8, "lines.markersize": 5,
})

INK = _INK


def save(figure, path):
    figure.savefig(path, metadata={"Date": None})
    plt.close(figure)
    rules = "".join(f'[style*="{part}: {light}"] {{ {part}: {dark} !important }} '
                    for light, dark in _DARK.items() for part in ("fill", "stroke"))
    text = path.read_text()
    end = text.index(">", text.index("<svg")) + 1
    path.write_text(f"{text[:end]}\n<style>@media (prefers-color-scheme: dark) {{ {rules}}}</style>{text[end:]}")


def plain_log(axis):
    """Labels 1, 10, 100, 1,000 instead of powers of ten."""
    axis.set_major_formatter(matplotlib.ticker.FuncFormatter(lambda value, _: f"{value:,.10g}"))
    axis.set_minor_formatter(matplotlib.ticker.NullFormatter())


def _apart(levels, distance):
    """Moves ascending levels as little as possible (least squares) so that neighbours keep a distance."""
    groups = []  # [sum of the members' proposals for the level of the first, count]
    for index, level in enumerate(levels):
        groups.append([level, 1])
        while len(groups) > 1:
            (proposals, count), (below, lower) = groups[-1], groups[-2]
            if proposals / count >= below / lower + lower * distance:
                break
            proposals, count = groups.pop()
            groups[-1][0] += proposals - count * groups[-1][1] * distance
            groups[-1][1] += count
    return [proposals / count + member * distance for proposals, count in groups for member in range(count)]


def label_ends(axes, ends, size=8):
    """
    Labels lines at their right ends without overlap: `ends` has (x, y, text, colour). Call this when the figure is
    complete, because the layout determines the position of the axes.
    """
    axes.figure.draw_without_rendering()
    ends = sorted(ends, key=lambda end: end[1])
    places = [axes.transData.transform(end[:2]) for end in ends]
    for (right, up), level, (*_, text, colour) in zip(places, _apart([up for _, up in places], size * 1.25), ends):
        label = axes.annotate(text, (right, up), xycoords="figure pixels", xytext=(right + 8, level),
                              textcoords="figure pixels", color=colour, fontsize=size, va="center",
                              annotation_clip=False)
        label.set_in_layout(False)


def label_points(axes, points, size=8):
    """
    Labels points: `points` has (x, y, text, colour). Each label goes to the nearest free place. Call this when the
    figure is complete.
    """
    figure = axes.figure
    figure.draw_without_rendering()
    renderer = figure.canvas.get_renderer()
    places = [axes.transData.transform((x, y)) for x, y, *_ in points]
    taken = [matplotlib.transforms.Bbox.from_bounds(x - 4, y - 4, 8, 8) for x, y in places]
    frame = axes.get_window_extent()
    for (right, up), (x, y, text, colour) in zip(places, points):
        best = None
        for distance in (7, 14, 22, 32, 44, 58):
            for dx, dy, align in ((1, 0, "left"), (-1, 0, "right"), (0, 1, "center"), (0, -1, "center"),
                                  (0.7, 0.8, "left"), (0.7, -0.8, "left"), (-0.7, 0.8, "right"), (-0.7, -0.8, "right")):
                label = axes.annotate(text, (x, y), xytext=(dx * distance, dy * distance), textcoords="offset pixels",
                                      ha=align, va="center", color=colour, fontsize=size,
                                      arrowprops={"arrowstyle": "-", "color": colour, "lw": 0.5, "shrinkA": 0,
                                                  "shrinkB": 3} if distance > 14 else None)
                label.set_in_layout(False)
                label.update_positions(renderer)
                box = matplotlib.text.Text.get_window_extent(label, renderer)
                inside = box.x0 >= frame.x0 and box.x1 <= frame.x1 and box.y0 >= frame.y0 and box.y1 <= frame.y1
                if inside and not any(box.overlaps(other) for other in taken):
                    best = box
                    break
                label.remove()
            if best:
                break
        if best:
            taken.append(best)
        else:
            axes.annotate(text, (x, y), xytext=(7, 0), textcoords="offset pixels", va="center", color=colour,
                          fontsize=size)
