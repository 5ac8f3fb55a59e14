"""The plots of the page. Each function returns whether there was anything to draw."""
import matplotlib.pyplot as plt

import names
from drawing import INK, label_ends, label_points, plain_log, save
from results import pixels

SIZE, LARGE = "1920x1200", "4096x3072"


def _save_labelled(figure, path, labels, draw_labels=label_ends, size=8):
    """Labels each of the axes in `labels`, [(axes, items)], once the figure is complete, and writes the file."""
    for axes, items in labels:
        draw_labels(axes, items, size)
    save(figure, path)
    return True


def _line(axes, who, places, values, **style):
    """Draws a line and returns its right end for the label."""
    look = names.look(who)
    axes.plot(places, values, color=look.colour, **style)
    return places[-1], values[-1], look.label, look.colour


def _style(who):
    return {"linestyle": "-" if names.look(who).ours else "--", "marker": "."}


def _bars(axes, speed, job, title):
    """A row per algorithm, the fastest on top: one thread filled, all threads hollow, quartiles as lines."""
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
            rates = [speed.rate(job, size, 1, who) for size in sizes]
            ends.append(_line(one, who, places, [rate.median for rate in rates], **_style(who)))
            one.fill_between(places, [rate.low for rate in rates], [rate.high for rate in rates],
                             color=names.look(who).colour, alpha=0.15, linewidth=0)
        one.set_xscale("log")
        one.set_yscale("log")
        one.set_xticks(places, [size.replace("x", "×") for size in sizes], rotation=45, ha="right", fontsize=7)
        one.minorticks_off()
        plain_log(one.yaxis)
        one.set_title(title)
        one.set_xlim(right=places[-1] * 40)
        labels.append((one, ends))
    axes[0].set_ylabel("Mpixel/s, 1 thread")
    return _save_labelled(figure, path, labels)


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
                alone = speed.median(job, size, 1, who)
                gains = [speed.median(job, size, count, who) / alone for count in threads]
                *end, label, colour = _line(one, who, threads, gains, **_style(who))
                ends.append((*end, f"{label} {gains[-1]:.2f}", colour))
            one.plot(threads, threads, ":", color=INK, linewidth=0.8)
            one.set_xticks(threads)
            one.set_xlim(threads[0], threads[-1] + (threads[-1] - threads[0]) * 0.6)
            one.set_title(f"{title}, {size}")
            labels.append((one, ends))
    for one in axes[1]:
        one.set_xlabel("threads")
    for one in axes[:, 0]:
        one.set_ylabel("times as fast as 1 thread")
    return _save_labelled(figure, path, labels, size=7.5)


def rate_for_quality(speed, algorithm):
    """Mpixel/s of the job that represents an algorithm: LibRaw is measured with words only."""
    if algorithm.startswith("libraw"):
        return speed.median("bayer_12to12", SIZE, 1, algorithm)
    return (speed.median("bayer_8to8", SIZE, 1, algorithm)
            or speed.median("frame_bayer_12to8", SIZE, 1, algorithm))  # learned algorithms are the frame layer's


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
        one.set_title(f"{folder}, images: {quality.count(folder)}")
        labels.append((one, sorted(points, key=lambda point: -point[1])))
    for one in axes[:, 0]:
        one.set_ylabel("CPSNR, dB (up is better)")
    return _save_labelled(figure, path, labels, label_points, 7.5)


def noise_by_gain(noise, path):
    if not noise.gains:
        return False
    figure, axes = plt.subplots(1, 2, figsize=(9.2, 3.6))
    noisy = [gain for gain in noise.gains if gain != "none"]
    panels = ((axes[0], noisy, noise.deviation), (axes[1], noise.gains, noise.edge_width))
    labels = [(one, [_line(one, who, [noise.value(gain) for gain in gains], [figure_of(who, gain) for gain in gains],
                           marker="o") for who in noise.algorithms]) for one, gains, figure_of in panels]
    axes[0].set_ylabel("standard deviation, 12-bit codes")
    axes[0].set_title("Noise left on flat fields")
    axes[1].set_ylabel("10 to 90 %, pixels")
    axes[1].set_title("Width of a slanted grey edge")
    for one in axes:
        one.set_ylim(0, one.get_ylim()[1] * 1.05)
        one.set_xlabel("analog gain")
        one.set_xlim(right=one.get_xlim()[1] * 1.3)
    return _save_labelled(figure, path, labels)
