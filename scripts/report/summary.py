"""The summary at the top of the page, including where another library is ahead."""
import itertools

import names
from plots import LARGE, SIZE, rate_for_quality

#: Algorithms of other libraries that compare with bilinear and edge-aware, and with in-house.
_SIMPLE_PEERS = ["opencv-bilinear", "opencv-edge-aware", "gstreamer-bayer2rgb"]
_GOOD_PEERS = ["opencv-vng", "libraw-ppg", "libraw-ahd"]


def _times(ratio):
    """A ratio of speeds in words."""
    if 0.97 <= ratio <= 1.03:
        return "as fast as"
    return f"{ratio:.2g} times as fast as" if ratio > 1 else f"slower ({ratio:.2f} times the speed) than"


def _simple_speed(speed):
    lines = []
    for job, title in (("bayer_8to8", "8 bits to RGB8"), ("bayer_12to12", "12 bits to RGB12")):
        parts = []
        for ours, peer in (("bilinear", "opencv-bilinear"), ("edge-aware", "opencv-edge-aware"),
                           ("bilinear", "gstreamer-bayer2rgb")):
            own, other = speed.median(job, SIZE, 1, ours), speed.median(job, SIZE, 1, peer)
            if own and other:
                parts.append(f"{ours} {_times(own / other)} {names.look(peer).label}")
        floor, own = speed.median(job, SIZE, 1, "floor"), speed.median(job, SIZE, 1, "bilinear")
        if parts:
            lines.append(f"**{title}**, {SIZE}, 1 thread: {', '.join(parts)}; "
                         f"bilinear runs at {100 * own / floor:.0f} % of the memory floor.")
    return lines


def _finished_speed(speed):
    """What a camera application shows."""
    lines = []
    for family, job in (("Bayer", "frame_bayer_12to8_finished"), ("TrueSense", "frame_truesense_12to8_finished")):
        rates = [(names.look(who).label, speed.median(job, LARGE, 1, who), speed.median(job, LARGE, 2, who))
                 for who in speed.people(job) if names.look(who).ours]
        if rates:
            texts = [f"{label} {one:.0f} ({two:.0f})" for label, one, two in rates]
            lines.append(f"**Finished pictures, {family}** (white balance, colour matrix, sRGB curve), 12 bits to "
                         f"RGB8, {LARGE}, Mpixel/s on 1 (2) threads: {', '.join(texts)}.")
    own, other = (speed.median("frame_bayer_12to8_finished", LARGE, 1, who) for who in ("bilinear", "opencv-bilinear"))
    if own and other:
        lines[0] += f" Bilinear is {_times(own / other)} OpenCV with a coarser tone curve."
    return lines


def _good_speed(speed):
    own = speed.median("bayer_12to12", SIZE, 1, "ipp")
    others = {who: speed.median("bayer_12to12", SIZE, 1, who) for who in names.PEERS if who.startswith("libraw")}
    others = {who: rate for who, rate in others.items() if rate}
    if not own or not others:
        return []
    texts = [f"{names.look(who).label.removeprefix('LibRaw ')} {own / rate:.2g}" for who, rate in others.items()]
    return [f"**In-house**, 12 bits to RGB12, {SIZE}, 1 thread: {own:.0f} Mpixel/s. Speed relative to LibRaw's "
            f"algorithms: {', '.join(texts)}."]


def _quality(quality):
    lines = []
    for folder in quality.folders():
        ours = {who: quality.mean(who, folder) for who in ("fine", "ipp")}
        peers = {who: quality.mean(who, folder) for who in names.PEERS}
        peers = {who: value for who, value in peers.items() if value}
        if not all(ours.values()) or not peers:
            continue
        best = max(peers, key=peers.get)
        texts = [f"{names.look(who).label} {value:.2f} dB ({value - peers[best]:+.2f})" for who, value in ours.items()]
        lines.append(f"**Quality, {folder}**: {', '.join(texts)}; the best other algorithm is {names.look(best).label} "
                     f"({peers[best]:.2f} dB).")
    return lines


def _where_peers_lead(speed, quality):
    found = []
    for job in ("bayer_8to8", "bayer_10to10", "bayer_12to12", "bayer_14to14", "bayer_16to16"):
        for size in (SIZE, LARGE):
            for threads in speed.threads(job):
                own = speed.median(job, size, threads, "bilinear")
                for peer in _SIMPLE_PEERS:
                    other = speed.median(job, size, threads, peer)
                    if own and other and other > own:
                        found.append(f"{names.look(peer).label} is {other / own:.2f} times as fast as bilinear "
                                     f"({job.removeprefix('bayer_').replace('to', ' to ')} bits, {size}, "
                                     f"threads: {threads})")
    for size in speed.sizes("bayer_scaling"):
        for ours, theirs in (("bilinear", _SIMPLE_PEERS), ("ipp", _GOOD_PEERS)):
            own = speed.median("bayer_scaling", size, 1, ours)
            rates = {peer: speed.median("bayer_scaling", size, 1, peer) for peer in theirs}
            faster = [f"{names.look(peer).label} {rate / own:.2g}" for peer, rate in rates.items()
                      if own and rate and rate > 1.03 * own]
            if faster and size not in (SIZE, LARGE):
                found.append(f"frames of {size}, speed relative to {names.look(ours).label}: "
                             + ", ".join(faster))
    own = speed.median("bayer_8to8", SIZE, 1, "ipp")
    for peer in names.PEERS:
        other = rate_for_quality(speed, peer)
        if own and other and other > own and peer not in _SIMPLE_PEERS:
            found.append(f"{names.look(peer).label} is {other / own:.2f} times as fast as in-house")
    for folder in quality.folders():
        for figure, unit in (("colour", "dB"), ("chroma", "dB of chroma"), ("ssim", "of SSIM")):
            for ours, peer in itertools.product(("fine", "ipp"), names.PEERS):
                own, other = quality.mean(ours, folder, figure), quality.mean(peer, folder, figure)
                if own and other and other > own + (0.0005 if figure == "ssim" else 0.005):
                    found.append(f"{names.look(peer).label} is {other - own:.3g} {unit} above "
                                 f"{names.look(ours).label} on {folder}")
    if not found:
        return ["**Where another library is ahead**: nowhere in these figures."]
    return ["**Where another library is ahead**:\n" + "\n".join(f"  - {sentence}" for sentence in found)]


def _truesense(speed, noise):
    lines = []
    job = "truesense_algorithms_12to8"
    rates = [(names.look(who).label, speed.median(job, SIZE, 1, who), speed.median(job, SIZE, 2, who))
             for who in speed.people(job) if who != "floor"]
    if rates:
        texts = [f"{label} {one:.0f}" + (f" ({two:.0f})" if two else "") for label, one, two in rates]
        lines.append(f"**TrueSense**, 12 bits to RGB8, {SIZE}, Mpixel/s on 1 (2) threads: {', '.join(texts)}.")
    if noise.gains:
        gain = max(noise.gains, key=noise.value)
        fast = noise.deviation("fast", gain)
        texts = [f"{names.look(who).label} {fast / noise.deviation(who, gain):.1f}" for who in ("simple", "kodak-like")]
        edges = [f"{names.look(who).label} {noise.edge_width(who, gain):.2f}"
                 for who in ("fast", "simple", "kodak-like")]
        lines.append(f"**Noise** at analog gain {gain}, reduction compared with fast: {', '.join(texts)}. "
                     f"Width of a grey edge, pixels: {', '.join(edges)}.")
    return lines


def sentences(speed, quality, noise):
    return [*_finished_speed(speed), *_simple_speed(speed), *_good_speed(speed), *_quality(quality),
            *_truesense(speed, noise), *_where_peers_lead(speed, quality)]
