"""Inputs and expected results: cells of mosaics, with or without noise, and of their pictures."""
import numpy as np
import torch

from . import noise
from .inputs import MARGIN, input_of
from .mosaics import mosaic_of, side_of, to_cells
from .pictures import linear

LINEAR_SHARE = {False: 0.25, True: 0.4}  # of the patches, without and with noise
HARD_SHARE = 0.8  # of the patches, without noise; none at the highest gain, where fine detail drowns in noise
LOWEST_GAIN, HIGHEST_GAIN = 8, 38
UNBALANCED_SHARE = 0.1  # of the patches, with a white balance that is a little off


def pair_of(patch, family, rng):
    """(frame, picture): of the patch itself, or of one that is not quite balanced."""
    if rng.random() >= UNBALANCED_SHARE:
        return mosaic_of(patch, family), patch
    pan = patch.mean(axis=-1) * np.float32(rng.uniform(0.85, 1))
    picture = patch * np.array([rng.uniform(0.7, 1), 1, rng.uniform(0.7, 1)], np.float32)
    return mosaic_of(picture, family, pan), picture


def inner(cells, border):
    return np.ascontiguousarray(cells[:, border:cells.shape[1] - border, border:cells.shape[2] - border])


class Batches:
    def __init__(self, patches, family, with_noise, halo, size, rng):
        self._patches, self._family, self._with_noise = patches, family, with_noise
        self._halo, self._margin, self._size, self._rng = halo, MARGIN[family], size, rng

    def next(self):
        """Tensors: cells, deviations (None without noise), cells of the picture without the halo, and which patches
        are in linear light."""
        side, rng = side_of(self._family), self._rng
        given, sigmas, wanted, linear_ones = [], [], [], []
        for _ in range(self._size):
            gain = rng.uniform(LOWEST_GAIN, HIGHEST_GAIN) if self._with_noise else LOWEST_GAIN
            patch = self._patches.next(HARD_SHARE * (HIGHEST_GAIN - gain) / (HIGHEST_GAIN - LOWEST_GAIN))
            linear_ones.append(rng.random() < LINEAR_SHARE[self._with_noise])
            if linear_ones[-1]:
                patch = linear(patch).astype(np.float32)
            frame, picture = pair_of(patch, self._family, rng)
            if self._with_noise:
                amount = 1.0 if rng.random() < 0.7 else np.exp(rng.uniform(np.log(0.03), 0))
                frame = noise.noisy(frame, self._family, gain, rng, amount)
            seen = input_of(np.rint(frame * 65535), self._family) / np.float32(65535)
            cells = inner(to_cells(seen, side), self._margin)
            if self._with_noise:
                sigmas.append(noise.sigma_plane(cells, self._family, gain, amount))
            given.append(cells)
            wanted.append(inner(to_cells(picture, side), self._margin + self._halo))
        return (
            torch.from_numpy(np.stack(given)),
            torch.from_numpy(np.stack(sigmas)) if sigmas else None,
            torch.from_numpy(np.stack(wanted)),
            torch.tensor(linear_ones),
        )
