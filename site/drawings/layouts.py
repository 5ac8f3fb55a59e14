"""The position of sample bits in memory, as the library describes it."""
from drawings.svg import PALE, Drawing

SAMPLES = {"a": "#f6c7a1", "b": "#b9d8f2", "c": "#c9e5b5", "d": "#e3c4ea", "-": PALE}
LAYOUTS = {
    "layout-words": ["BayerRG12", "BayerRG12msb", "BayerRG12be"],
    "layout-10": ["BayerRG10p", "BayerRG10Packed", "BayerRG10mipi"],
    "layout-12": ["BayerRG12p", "BayerRG12Packed", "BayerRG12mipi"],
    "layout-14": ["BayerRG14p", "BayerRG14mipi"],
}


def draw_layouts(tool, folder):
    for file, names in LAYOUTS.items():
        explained = [tool.explain(name) for name in names]
        bytes_in_all = sum(len(facts.memory) for facts in explained)
        drawing = Drawing(560, 34 * len(names) + 25 * bytes_in_all + 12, "Bits in memory: " + ", ".join(names))
        y = 8
        for name, facts in zip(names, explained):
            drawing.text(16, y + 18, name, 14, anchor="start", weight="bold")
            drawing.text(544, y + 18, facts.description.rpartition("; ")[2], 12, anchor="end")
            y += 26
            for number, bits in enumerate(facts.memory):
                drawing.text(66, y + 17, f"byte {number}", 12, anchor="end")
                for place, bit in enumerate(bits):
                    drawing.rect(78 + 58 * place, y, 58, 24, SAMPLES[bit[0]])
                    drawing.text(78 + 58 * place + 29, y + 17, bit, 12, family="monospace")
                y += 25
            y += 8
        drawing.save(folder / f"{file}.svg")
