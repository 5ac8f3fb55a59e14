"""The page: Markdown."""
import os
import platform
import subprocess
from pathlib import Path

import names
from plots import LARGE, SIZE

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
    return f"{_number(rate.median)} ±{rate.spread:.0f} %{share}"


def _number(value):
    return f"{value:,.{0 if value >= 10 else 1}f}"


def _label(who):
    look = names.look(who)
    return f"**{look.label}**" if look.ours else look.label


def _titles(settings):
    return [f"{size}, {threads} thread{'s' if threads > 1 else ''}" for size, threads in settings]


def _settings(speed, job):
    return [(size, threads) for size in (SIZE, LARGE) for threads in speed.threads(job)]


def _speed_table(speed, jobs, people):
    settings = _settings(speed, jobs[0])
    head = ["conversion", "algorithm"] + _titles(settings)
    rows = []
    for job in jobs:
        source, destination = job.rsplit("_", 1)[1].split("to")
        for who in speed.people(job):
            if not people(who):
                continue
            rows.append([f"{source} bits to RGB{destination}", _label(who)]
                        + [_rate(speed, job, size, threads, who) for size, threads in settings])
    return _table(head, rows)


def _finished_table(speed, job):
    """Conversions alone and finished; × is the time as a multiple of the bilinear conversion alone."""
    settings = _settings(speed, job)
    head = ["algorithm", "result"] + _titles(settings)
    rows = []
    for who in speed.people(job):
        for kind, title in (("_finished", "finished"), ("", "conversion alone")):
            cells = []
            for size, threads in settings:
                rate = speed.rate(job + kind, size, threads, who)
                base = speed.median("frame_bayer_12to8", size, threads, "bilinear") / rate.median
                cells.append(f"{_number(rate.median)} ±{rate.spread:.0f} %, {base:.{0 if base >= 100 else 1}f}×")
            rows.append([_label(who), title] + cells)
    return _table(head, rows)


def _instruction_sets_table(speed):
    """Times as a multiple of those with the newest instruction set of the processor."""
    sets = {job.split("_frame_")[0] for job in speed.jobs("") if "_frame_" in job}
    sets = sorted(sets, key=lambda name: -speed.median(f"{name}_frame_bayer_12to8", SIZE, 1, "bilinear"))
    rows = []
    for job, title in (("frame_bayer_12to8", "Bayer"), ("frame_truesense_12to8", "TrueSense")):
        for who in speed.people(f"{sets[0]}_{job}"):
            row = [f"{title}, {names.look(who).label}"]
            for kind in ("", "_finished"):
                rates = [speed.median(f"{name}_{job}{kind}", SIZE, 1, who) for name in sets]
                row += [_number(rates[0])] + [f"{rates[0] / rate:.2f}" for rate in rates[1:]]
            rows.append(row)
    columns = [f"{sets[0]}, Mpixel/s"] + [f"{name}, time" for name in sets[1:]]
    return _table(["algorithm"] + columns + [f"finished: {column}" for column in columns], rows)


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
    head = ["algorithm"] + [f"gain {gain}" if gain != "none" else "no noise" for gain in noise.gains]
    rows = []
    for algorithm in noise.algorithms:
        label = names.look(algorithm).label
        rows.append([f"{label}: deviation, codes"]
                    + [f"{noise.deviation(algorithm, gain):.1f}" for gain in noise.gains])
        rows.append([f"{label}: edge, pixels"] + [f"{noise.edge_width(algorithm, gain):.2f}" for gain in noise.gains])
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
        peers += "; without GStreamer's bayer2rgb, whose packages are not installed"
    return f"- Date: {', '.join(sorted(dates))}\n- Machine: {_machine()}\n- Other libraries: {peers}\n"


def text(speed, quality, noisy, noise, summary, plots, crops):
    def plot(name, alt):
        return f"![{alt}]({name}.svg)\n" if name in plots else ""

    parts = ["# Speed and quality compared with other libraries\n",
             "`scripts/report.sh` generates this page. Each section names the command that updates it.\n",
             _facts(speed),
             "\nThe machine has other work: compare ratios within a run, not absolute figures or small differences. "
             "Speeds are medians of five interleaved repetitions, ± half the interquartile range.\n",
             "\n## Summary\n", "\n".join(f"- {line}" for line in summary) + "\n",
             plot("quality-speed", "Quality and speed"),
             f"Speed at {SIZE} on one thread, 8 bits to RGB8; LibRaw's 12 bits to RGB12.\n",
             "\n## Speed\n", "Mpixel/s; × is the time as a multiple of the memory floor, a pass that reads the source "
             "and writes the destination once, in the same run.\n",
             "The figures of this library, OpenCV and GStreamer are complete conversions between existing buffers. "
             "GStreamer's element receives and returns buffers in the calling thread, without a pipeline, from its own "
             "pool; it writes four bytes per pixel and is single-threaded. LibRaw's figures are for interpolation "
             "only; it always computes in 16 bits.\n"]
    if speed.jobs("frame_bayer_12to8"):
        parts += ["\n### Finished pictures\n",
                  f"`{_RUN} finished`: 12 bits to RGB8 with white balance, colour matrix and sRGB curve, next to the "
                  "conversion alone, by the frame layer; × is the time as a multiple of the bilinear conversion alone. "
                  "OpenCV's picture takes `cvtColor()`, `transform()`, `convertTo()` and a tone table of 256 entries "
                  "after the reduction to bytes, which is coarser than ours in the shadows.\n",
                  "**Bayer**\n", _finished_table(speed, "frame_bayer_12to8"),
                  "**TrueSense**\n", _finished_table(speed, "frame_truesense_12to8")]
    if any("_frame_" in job for job in speed.jobs("")):
        parts += ["\n### Instruction sets\n",
                  f"`{_RUN} instructions`: the same on older instruction sets, {SIZE}, one thread; times as a multiple "
                  "of those on the newest one of this processor.\n", _instruction_sets_table(speed)]
    if bayer := speed.jobs("bayer_1") + speed.jobs("bayer_8"):
        parts += [plot("speed-bayer", "Speed of Bayer conversions"), "\n### Bayer, compared with other libraries\n",
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
        parts += ["\n### Frame size and threads\n", f"`{_RUN} scaling`. Dashed: other libraries. Small frames show "
                  "the cost of a call, large frames the memory bandwidth.\n",
                  plot("speed-size", "Throughput against frame size"), "\n",
                  plot("speed-threads", "Throughput against threads")]
    parts.append(_left_out(speed))
    if quality.means:
        folders = quality.folders()
        sets = ", ".join(f"{folder} ({quality.count(folder)})" for folder in folders)
        figures = [("colour", "CPSNR"), ("chroma", "chroma"), ("ssim", "SSIM")]
        parts += ["\n## Quality\n", f"`{_RUN} quality KODAK MCMASTER …`: 8-bit images are converted to mosaics and "
                  f"restored. Image sets, with the number of images: {sets}. The photographs are parts of the public "
                  "sets of that name and are not in this project; the scene is that of `kvx-demosaic demo`. PSNR in dB "
                  "of all three channels together, and of Cb and Cr; structural similarity of luma; a border of 10 "
                  "pixels is excluded. OpenCV's VNG shifts its image up by two rows, which is corrected first.\n",
                  "\n### Bayer\n",
                  _quality_table(quality, names.BAYER + names.PEERS, folders, figures),
                  "\n### TrueSense\n", "12-bit frames without noise; pan is the mean of red, green and blue; no "
                  "colour matrix; default noise filters. The comparison with Bayer rows is loose, since the sensor "
                  "differs.\n", _quality_table(quality, names.TRUESENSE, folders, figures)]
    if noisy.means:
        parts += ["\n### With noise\n", f"`{_RUN} noisy KODAK MCMASTER …`: frames with the noise of a sensor at analog "
                  "gain 36.77. `fine` removes it, and so do simple and pipeline.\n",
                  "**Bayer**\n", _quality_table(noisy, names.BAYER, folders, figures),
                  "**TrueSense**\n", _quality_table(noisy, names.TRUESENSE, folders, figures)]
    if crops:
        parts += ["\n### Difficult places\n", "Crops of the drawn scene, enlarged three times: three places where the "
                  "methods differ most, then three with the largest errors of in-house.\n", "![Crops](crops.png)\n"]
    if noise.gains:
        parts += ["\n## Noise and edges, TrueSense\n", plot("noise", "Noise and edge width against gain"),
                  f"\n`{_RUN} noise`: standard deviation in 12-bit codes, as root mean square over flat fields and "
                  "channels; width of a slanted grey edge from 10 to 90 %. An edge that gets narrower with noise is "
                  "not sharper: filtering narrows its flanks.\n", _noise_table(noise)]
    return "\n".join(part for part in parts if part)


def _depths(job):
    source, destination = job.rsplit("_", 1)[1].split("to")
    return destination != "8", int(source)
