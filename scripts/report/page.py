"""The page: Markdown."""
import os
import platform
import subprocess
from pathlib import Path

import names
from plots import LARGE, SIZE, edge_width, mean_deviation

_RUN = "scripts/report.sh --step"


def _table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" + "---:|" * (len(head) - 1)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def _rate(speed, job, size, threads, who):
    rate = speed.rate(job, size, threads, who)
    if not rate:
        return "-"
    floor = speed.median(job, size, threads, "floor")
    multiple = floor / rate.median
    share = "" if who == "floor" else f", {multiple:,.0f}×" if multiple >= 100 else f", {multiple:.3g}×"
    return f"{rate.median:,.{0 if rate.median >= 10 else 1}f} ±{rate.spread:.0f} %{share}"


def _settings(speed, job):
    return [(size, threads) for size in (SIZE, LARGE) for threads in speed.threads(job)]


def _speed_table(speed, jobs, people):
    settings = _settings(speed, jobs[0])
    head = ["conversion", "algorithm"]
    head += [f"{size}, {threads} thread{'s' if threads > 1 else ''}" for size, threads in settings]
    rows = []
    for job in jobs:
        source, destination = job.rsplit("_", 1)[1].split("to")
        for who in speed.people(job):
            if not people(who):
                continue
            look = names.look(who)
            label = f"**{look.label}**" if look.ours else look.label
            rows.append([f"{source} bits to RGB{destination}", label]
                        + [_rate(speed, job, size, threads, who) for size, threads in settings])
    return _table(head, rows)


def _left_out(speed):
    reasons = sorted({(names.look(who).label, reason) for (*_, who), reason in speed.reasons.items()})
    return "".join(f"\nNot measured: {label}: {reason}.\n" for label, reason in reasons)


def _quality_table(quality, algorithms, folders, figures):
    head = ["algorithm"] + [f"{folder}: {title}" for folder in folders for _, title in figures]
    best = {(folder, figure): max(quality.mean(a, folder, figure) or 0 for a in algorithms)
            for folder in folders for figure, _ in figures}
    rows = []
    for algorithm in algorithms:
        cells = []
        for folder in folders:
            for figure, _ in figures:
                value = quality.mean(algorithm, folder, figure)
                text = "-" if value is None else f"{value:.3f}" if figure == "ssim" else f"{value:.2f}"
                cells.append(f"**{text}**" if value == best[folder, figure] else text)
        if any(cell != "-" for cell in cells):
            rows.append([names.look(algorithm).label] + cells)
    return _table(head, rows)


def _noise_table(noise):
    gains = list(dict.fromkeys(row["gain"] for row in noise["flats"]))
    algorithms = list(dict.fromkeys(row["algorithm"] for row in noise["flats"]))
    head = ["algorithm"] + [f"gain {gain}" if gain != "none" else "no noise" for gain in gains]
    rows = []
    for algorithm in algorithms:
        label = names.look(algorithm).label
        rows.append([f"{label}: deviation, codes"]
                    + [f"{mean_deviation(noise, algorithm, gain):.1f}" for gain in gains])
        rows.append([f"{label}: edge, pixels"] + [f"{edge_width(noise, algorithm, gain):.2f}" for gain in gains])
    return _table(head, rows)


def _machine():
    processor = next((line.split(":")[1].strip() for line in Path("/proc/cpuinfo").read_text().splitlines()
                      if line.startswith("model name")), platform.machine())
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True, check=True).stdout.splitlines()[0]
    return f"{processor}, {os.cpu_count()} processors; {system}; {compiler}"


def _facts(speed):
    versions, dates = {}, set()
    for context in speed.contexts:
        dates.add(context["date"][:10])
        versions |= {name: context[name] for name in ("OpenCV", "LibRaw", "GStreamer") if name in context}
    peers = ", ".join(f"{name} {version}" for name, version in versions.items())
    if "GStreamer" not in versions:
        peers += "; GStreamer's bayer2rgb was left out: its packages are not installed"
    return f"- Date: {', '.join(sorted(dates))}\n- Machine: {_machine()}\n- Peers: {peers}\n"


def text(speed, quality, noise, summary, plots, crops):
    def plot(name, alt):
        return f"![{alt}]({name}.svg)\n" if name in plots else ""

    parts = ["# Speed and quality, beside other libraries\n",
             "Made by `scripts/report.sh`; nothing here was written by hand. Each figure has the command that renews "
             "it.\n", _facts(speed),
             "\nThe machine is shared with other work: absolute figures and small differences mean little, ratios "
             "within a run count. Speeds are medians of five interleaved repetitions, ± half the distance of the "
             "quartiles.\n",
             "\n## In short\n", "\n".join(f"- {line}" for line in summary) + "\n",
             plot("quality-speed", "Quality and speed"),
             f"Speed at {SIZE} on one thread, 8 bits to RGB8; LibRaw's 12 bits to RGB12.\n",
             "\n## Speed\n", "Mpixel/s; × is time in multiples of the memory floor, a pass that reads the source and "
             "writes the destination once, in the same run.\n",
             "Ours, OpenCV's and GStreamer's figures are whole conversions between buffers that exist already. "
             "GStreamer's element gets and gives buffers in the calling thread, without a pipeline, from a "
             "pool that it keeps; it writes four bytes a pixel and has no threads of its own. LibRaw's figures are its "
             "interpolations alone; it always computes in 16 bits.\n"]
    if bayer := speed.jobs("bayer_1") + speed.jobs("bayer_8"):
        parts += [plot("speed-bayer", "Speed of Bayer conversions"), "\n### Bayer, beside the peers\n",
                  f"`{_RUN} bayer-bytes`, `{_RUN} bayer-words`\n",
                  _speed_table(speed, [job for job in ("bayer_8to8", "bayer_12to12") if job in bayer],
                               lambda who: True),
                  "\n### Bayer, all depths\n",
                  _speed_table(speed, sorted(bayer, key=_depths), lambda who: names.look(who).ours or who == "floor")]
    if truesense := speed.jobs("truesense_algorithms"):
        parts += ["\n### TrueSense, all depths\n", plot("speed-truesense", "Speed of TrueSense conversions"),
                  f"\n`{_RUN} truesense-bytes`, `{_RUN} truesense-words`; default parameters, colour matrix and tone "
                  "curve included.\n", _speed_table(speed, sorted(truesense, key=_depths), lambda who: True)]
    if "speed-size" in plots:
        parts += ["\n### Frame size and threads\n", f"`{_RUN} scaling`. Dashed: peers. Small frames show what a call "
                  "costs, large ones what memory gives.\n", plot("speed-size", "Throughput against frame size"), "\n",
                  plot("speed-threads", "Throughput against threads")]
    parts.append(_left_out(speed))
    if quality.means:
        folders = quality.folders()
        sets = ", ".join(f"{folder} ({quality.count(folder)})" for folder in folders)
        figures = [("colour", "CPSNR"), ("chroma", "chroma"), ("ssim", "SSIM")]
        parts += ["\n## Quality\n", f"`{_RUN} quality KODAK MCMASTER …`: pictures of 8 bits become mosaics and are "
                  f"restored. Sets, with the number of pictures: {sets}; the sets of photographs are parts of the "
                  "public ones of that name and not in this project, the scene is the one of `kvx-demosaic demo`. "
                  "PSNR in dB, of all three channels together and of Cb and Cr; structural similarity of luma; a "
                  "border of 10 pixels does not count. OpenCV's VNG puts its picture two rows too high; it was moved "
                  "back first.\n", "\n### Bayer\n",
                  _quality_table(quality, names.BAYER + names.PEERS, folders, figures),
                  "\n### TrueSense\n", "12-bit frames without noise, pan the mean of red, green and blue, no colour "
                  "matrix, default noise filters. A row can be compared with the Bayer ones only loosely: the sensor "
                  "is another.\n", _quality_table(quality, names.TRUESENSE, folders, figures)]
    if crops:
        parts += ["\n### Where it is hard\n", "Of the drawn scene, three places where the methods differ most, then "
                  "three where in-house errs most; three times enlarged.\n", "![Crops](crops.png)\n"]
    if noise:
        parts += ["\n## Noise and edges, TrueSense\n", plot("noise", "Noise and edge width against gain"),
                  f"\n`{_RUN} noise`: root mean square over flat fields and channels of the standard deviation, 12-bit "
                  "codes; width of a slanted grey edge from 10 to 90 %. What gets narrower as noise grows is not "
                  "sharper: filtering thins the flanks.\n", _noise_table(noise)]
    return "\n".join(part for part in parts if part)


def _depths(job):
    source, destination = job.rsplit("_", 1)[1].split("to")
    return destination != "8", int(source)
