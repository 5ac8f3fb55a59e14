"""The plots of the page. Each returns whether there was anything to draw."""
import statistics

import matplotlib.pyplot as plt

import names
from drawing import INK, label_ends, label_points, plain_log, save
from results import pixels

SIZE, LARGE = "1920x1200", "4096x3072"


def _bars(axes, speed, job, title):
    """A row for each algorithm, the fastest on top: one thread filled, all threads hollow, quartiles as lines."""
    people = [who for who in speed.people(job) if speed.rate(job, SIZE, 1, who)]
    people.sort(key=lambda who: speed.median(job, SIZE, 1, who))
    most = max(speed.threads(job))
    for row, who in enumerate(people):
        look = names.look(who)
        for threads, fill in ((1, look.colour), (most, "none")):
            rate = speed.rate(job, SIZE, threads, who)
            if not rate:
                continue
            axes.plot([rate.low, rate.high], [row, row], color=look.colour, linewidth=1)
            axes.plot(rate.median, row, "o", color=look.colour, markerfacecolor=fill, markersize=6)
    axes.set_yticks(range(len(people)), [names.look(who).label for who in people])
    for label, who in zip(axes.get_yticklabels(), people):
        look = names.look(who)
        label.set_color(look.colour)
        label.set_fontweight("bold" if look.ours else "normal")
    axes.set_xscale("log")
    plain_log(axes.xaxis)
    axes.set_xlabel(f"Mpixel/s at {SIZE}: ● 1 thread, ○ {most} threads")
    axes.set_title(title)


def _panels_of_bars(speed, path, jobs, height):
    jobs = [job for job in jobs if speed.people(job[0])]
    if not jobs:
        return False
    figure, axes = plt.subplots(1, len(jobs), figsize=(4.6 * len(jobs), height), squeeze=False)
    for one, (job, title) in zip(axes[0], jobs):
        _bars(one, speed, job, title)
    save(figure, path)
    return True


def speed_of_bayer(speed, path):
    return _panels_of_bars(speed, path, [("bayer_8to8", "Bayer, 8 bits to RGB8"),
                                         ("bayer_12to12", "Bayer, 12 bits to RGB12")], height=3.6)


def speed_of_truesense(speed, path):
    return _panels_of_bars(speed, path, [("truesense_algorithms_12to8", "TrueSense, 12 bits to RGB8"),
                                         ("truesense_algorithms_14to14", "TrueSense, 14 bits to RGB14")], height=2.2)


_SCALING = [("bayer_scaling", "Bayer, 8 bits to RGB8"), ("truesense_scaling", "TrueSense, 12 bits to RGB8")]


def speed_by_size(speed, path):
    if not speed.people("bayer_scaling"):
        return False
    figure, axes = plt.subplots(1, 2, figsize=(9.2, 4.4), sharey=True)
    labels = []
    for one, (job, title) in zip(axes, _SCALING):
        sizes, ends = speed.sizes(job), []
        places = [pixels(size) * 1e-6 for size in sizes]
        for who in speed.people(job):
            look = names.look(who)
            rates = [speed.rate(job, size, 1, who) for size in sizes]
            one.plot(places, [rate.median for rate in rates], "-" if look.ours else "--", marker=".",
                     color=look.colour)
            one.fill_between(places, [rate.low for rate in rates], [rate.high for rate in rates], color=look.colour,
                             alpha=0.15, linewidth=0)
            ends.append((places[-1], rates[-1].median, look.label, look.colour))
        one.set_xscale("log")
        one.set_yscale("log")
        one.set_xticks(places, [size.replace("x", "×") for size in sizes], rotation=45, ha="right", fontsize=7)
        one.minorticks_off()
        plain_log(one.yaxis)
        one.set_title(title)
        one.set_xlim(right=places[-1] * 40)
        labels.append((one, ends))
    axes[0].set_ylabel("Mpixel/s, 1 thread")
    for one, ends in labels:
        label_ends(one, ends)
    save(figure, path)
    return True


def speed_by_threads(speed, path):
    if not speed.people("bayer_scaling"):
        return False
    figure, axes = plt.subplots(2, 2, figsize=(9.2, 6.4), sharey=True, sharex=True)
    labels = []
    for column, (job, title) in enumerate(_SCALING):
        threads = speed.threads(job)
        for row, size in enumerate((SIZE, LARGE)):
            one, ends = axes[row][column], []
            for who in speed.people(job):
                look = names.look(who)
                alone = speed.median(job, size, 1, who)
                gains = [speed.median(job, size, count, who) / alone for count in threads]
                one.plot(threads, gains, "-" if look.ours else "--", marker=".", color=look.colour)
                ends.append((threads[-1], gains[-1], f"{look.label} {gains[-1]:.2f}", look.colour))
            one.plot(threads, threads, ":", color=INK, linewidth=0.8)
            one.set_xticks(threads)
            one.set_xlim(threads[0], threads[-1] + (threads[-1] - threads[0]) * 0.6)
            one.set_title(f"{title}, {size}")
            labels.append((one, ends))
    for one in axes[1]:
        one.set_xlabel("threads")
    for one in axes[:, 0]:
        one.set_ylabel("times as fast as 1 thread")
    for one, ends in labels:
        label_ends(one, ends, 7.5)
    save(figure, path)
    return True


def rate_for_quality(speed, algorithm):
    """Mpixel/s of the job that shows an algorithm: LibRaw was measured with words only."""
    if algorithm.startswith("libraw"):
        return speed.median("bayer_12to12", SIZE, 1, algorithm)
    return speed.median("bayer_8to8", SIZE, 1, algorithm)


def quality_and_speed(speed, quality, path):
    folders = quality.folders()
    if not folders or not speed.people("bayer_8to8"):
        return False
    rows = (len(folders) + 1) // 2
    figure, axes = plt.subplots(rows, 2, figsize=(9.6, 4.2 * rows), squeeze=False)
    for spare in axes.flat[len(folders):]:
        spare.remove()
    labels = []
    for one, folder in zip(axes.flat, folders):
        points = []
        for algorithm in names.BAYER + names.PEERS:
            rate, decibels = rate_for_quality(speed, algorithm), quality.mean(algorithm, folder)
            if rate and decibels:
                look = names.look(algorithm)
                one.plot(rate, decibels, "D" if look.ours else "o", color=look.colour, markersize=7 if look.ours else 5)
                points.append((rate, decibels, look.label, look.colour))
        one.set_xscale("log")
        one.margins(x=0.25, y=0.12)
        plain_log(one.xaxis)
        one.set_xlabel("Mpixel/s, 1 thread (right is faster)")
        one.set_title(f"{folder}, pictures: {quality.count(folder)}")
        labels.append((one, sorted(points, key=lambda point: -point[1])))
    for one in axes[:, 0]:
        one.set_ylabel("CPSNR, dB (up is better)")
    for one, points in labels:
        label_points(one, points, 7.5)
    save(figure, path)
    return True


def gain_value(name):
    return 0.0 if name == "none" else float(name)


def noise_by_gain(noise, path):
    if not noise:
        return False
    figure, axes = plt.subplots(1, 2, figsize=(9.2, 3.6))
    gains = list(dict.fromkeys(row["gain"] for row in noise["flats"]))
    algorithms = list(dict.fromkeys(row["algorithm"] for row in noise["flats"]))
    left, right = [], []
    for algorithm in algorithms:
        look = names.look(algorithm)
        noisy = [gain for gain in gains if gain != "none"]
        deviations = [mean_deviation(noise, algorithm, gain) for gain in noisy]
        axes[0].plot([gain_value(gain) for gain in noisy], deviations, marker="o", color=look.colour)
        left.append((gain_value(noisy[-1]), deviations[-1], look.label, look.colour))
        widths = [edge_width(noise, algorithm, gain) for gain in gains]
        axes[1].plot([gain_value(gain) for gain in gains], widths, marker="o", color=look.colour)
        right.append((gain_value(gains[-1]), widths[-1], look.label, look.colour))
    axes[0].set_ylabel("standard deviation, 12-bit codes")
    axes[0].set_title("Noise left on flat fields")
    axes[1].set_ylabel("10 to 90 %, pixels")
    axes[1].set_title("Width of a slanted grey edge")
    for one in axes:
        one.set_ylim(0, one.get_ylim()[1] * 1.05)
        one.set_xlabel("analog gain")
        one.set_xlim(right=one.get_xlim()[1] * 1.3)
    for one, ends in zip(axes, (left, right)):
        label_ends(one, ends)
    save(figure, path)
    return True


def mean_deviation(noise, algorithm, gain):
    """Root mean square over all flat fields and channels."""
    values = [row[f"sd {channel}"] for row in noise["flats"]
              if row["algorithm"] == algorithm and row["gain"] == gain for channel in "RGB"]
    return statistics.fmean(value * value for value in values) ** 0.5


def edge_width(noise, algorithm, gain, edge="grey"):
    row = next(row for row in noise["edges"]
               if row["edge"] == edge and row["algorithm"] == algorithm and row["gain"] == gain)
    return statistics.fmean(row[f"width {channel}"] for channel in "RGB")
