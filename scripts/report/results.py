"""The measurements of scripts/report.sh."""
import json
import statistics
from dataclasses import dataclass
from pathlib import Path

import names


@dataclass
class Rate:
    """Megapixels a second: the median of the repetitions and their quartiles."""
    median: float
    low: float
    high: float

    @property
    def spread(self):
        """Half the distance of the quartiles, in per cent of the median."""
        return 50 * (self.high - self.low) / self.median


class Speed:
    """Rates by job, size such as "1920x1200", threads, and `who` (the algorithm). Failures have a reason instead."""

    def __init__(self, folder):
        self.rates, self.reasons, self.contexts = {}, {}, []
        for path in sorted(folder.glob("speed-*.json")):
            document = json.loads(path.read_text())
            self.contexts.append(document["context"])
            samples = {}
            for run in document["benchmarks"]:
                if run["run_type"] != "iteration":
                    continue
                key = self._key(run["run_name"])
                if run.get("error_occurred"):
                    self.reasons[key] = run["error_message"]
                else:
                    samples.setdefault(key, []).append(run["Mpixel/s"])
            for key, values in samples.items():
                low, median, high = statistics.quantiles(values, n=4, method="inclusive")
                self.rates[key] = Rate(median, low, high)

    @staticmethod
    def _key(name):
        job, size, threads, who = name.removesuffix("/real_time").split("/")
        return job, size, int(threads.removeprefix("threads:")), who

    def rate(self, job, size, threads, who):
        return self.rates.get((job, size, threads, who))

    def median(self, job, size, threads, who):
        rate = self.rate(job, size, threads, who)
        return rate.median if rate else None

    def people(self, job):
        """All measured algorithms of a job, in the order of names.order."""
        return sorted({who for a, _, _, who in self.rates if a == job}, key=names.order)

    def jobs(self, prefix):
        return list(dict.fromkeys(job for job, *_ in self.rates if job.startswith(prefix)))

    def sizes(self, job):
        found = {size for a, size, _, _ in self.rates if a == job}
        return sorted(found, key=pixels)

    def threads(self, job):
        return sorted({threads for a, _, threads, _ in self.rates if a == job})


def pixels(size):
    width, height = size.split("x")
    return int(width) * int(height)


class Quality:
    """Figures by algorithm and folder, of frames without noise ("quality") or with noise ("noisy")."""

    def __init__(self, folder, kind):
        self.means, self.pictures = {}, {}
        for path in sorted(folder.glob(f"{kind}-*.json")):
            document = json.loads(path.read_text())
            for entry in document["folders"]:
                key = document["algorithm"], Path(entry["path"]).name
                self.means[key] = entry["mean"]
                self.pictures[key] = entry["pictures"]

    def folders(self):
        """The drawn scene last."""
        names = list(dict.fromkeys(folder for _, folder in self.means))
        return sorted(names, key=lambda name: (name == "drawn scene", name == "fine detail", name))

    def mean(self, algorithm, folder, figure="colour"):
        return self.means.get((algorithm, folder), {}).get(figure)

    def count(self, folder):
        return max(len(pictures) for (_, a), pictures in self.pictures.items() if a == folder)


class Noise:
    """Deviations on flat fields and widths of edges by algorithm and analog gain ("none" without noise)."""

    def __init__(self, folder):
        path = folder / "noise.json"
        document = json.loads(path.read_text()) if path.exists() else {"flats": [], "edges": []}
        self._flats, self._edges = document["flats"], document["edges"]
        self.gains = list(dict.fromkeys(row["gain"] for row in self._flats))
        self.algorithms = list(dict.fromkeys(row["algorithm"] for row in self._flats))

    @staticmethod
    def value(gain):
        return 0.0 if gain == "none" else float(gain)

    def deviation(self, algorithm, gain):
        """Root mean square over all flat fields and channels."""
        values = [row[f"sd {channel}"] for row in self._flats
                  if row["algorithm"] == algorithm and row["gain"] == gain for channel in "RGB"]
        return statistics.fmean(value * value for value in values) ** 0.5

    def edge_width(self, algorithm, gain):
        """Of the grey edge, 10 to 90 %, in pixels: the mean of the channels."""
        row = next(row for row in self._edges
                   if row["edge"] == "grey" and row["algorithm"] == algorithm and row["gain"] == gain)
        return statistics.fmean(row[f"width {channel}"] for channel in "RGB")
