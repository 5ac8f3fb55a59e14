"""The noise of a sensor: variance = slope x signal + intercept, signal and noise as shares of white."""
import numpy as np

from .mosaics import PAN, inputs_of, letters_of, sites

_WHITE = 4095  # the published lines are in 12-bit codes
_GAINS = (11.04, 17.69, 23.96, 29.91, 36.77)
_LINES = {
    True: (  # behind clear filters
        (0.3179309, 0.6009852, 1.1658761, 2.2605956, 5.1104431),
        (-25.0768566, 17.0175209, 185.4302673, 831.0749512, 4154.7387695),
    ),
    False: (  # behind coloured ones
        (0.1628952, 0.3024211, 0.5818018, 1.1528199, 2.5340023),
        (-2.9740860, 15.9755983, 92.8464050, 399.4992371, 2080.2426758),
    ),
}


def line_at(gain, is_clear):
    """Slope and intercept at an analog gain, linear between the points of calibration."""
    slopes, intercepts = _LINES[is_clear]
    return np.interp(gain, _GAINS, slopes) / _WHITE, np.interp(gain, _GAINS, intercepts) / _WHITE**2


def deviation(line, signal):
    """Standard deviation at a signal; 0 where the line is below 0."""
    slope, intercept = line
    return np.sqrt(np.maximum(slope * signal + intercept, 0))


def noisy(frame, family, gain, rng, amount=1.0):
    """A frame with the noise of an analog gain, `amount` times its variance."""
    out = np.empty_like(frame)
    for where, letter in sites(family):
        signal = frame[where]
        sigma = deviation(line_at(gain, letter == PAN), signal) * np.sqrt(amount)
        out[where] = signal + sigma * rng.standard_normal(signal.shape, np.float32)
    return np.clip(out, 0, 1)


def measured_planes(family):
    """The planes of a network's input whose mean gives the signal for the deviation: the samples of the mosaic, of pan
    only where there is some."""
    letters, inputs = letters_of(family), inputs_of(family)
    each = len(inputs) // len(letters)
    if PAN in letters:
        return [plane for plane, letter in enumerate(inputs) if letter == PAN]
    return [plane for plane, letter in enumerate(inputs) if letter == letters[plane // each]]


def measured_line(family, gain):
    """The line of these samples."""
    return line_at(gain, PAN in letters_of(family))


def sigma_plane(cells, family, gain, amount=1.0):
    """The noise as an input of the network: a deviation for each cell."""
    signal = cells[measured_planes(family)].mean(axis=0, keepdims=True)
    return (deviation(measured_line(family, gain), signal) * np.sqrt(amount)).astype(np.float32)
