"""Trains one network: python3 -m training.train RUN --family truesense --pictures FOLDER --steps 60000

A run is a file. It is written every few minutes and taken up again where it stopped, with the same random numbers.
"""
import argparse
import os
import time

import numpy as np
import torch

from . import charts, figures, pictures
from .batches import Batches
from .inputs import MARGIN
from .mosaics import side_of
from .network import Network
from .soap import Soap

WARM_UP = 300
AVERAGING = 0.999  # of the weights that are kept: a mean over about a thousand steps
PATCH_CELLS = {"truesense": 20, "bayer": 32}
SAVE_SECONDS = 180


def parsed():
    parser = argparse.ArgumentParser(prog="training.train", description=__doc__)
    parser.add_argument("run", help="file of the run")
    parser.add_argument("--pictures", required=True, help="folder of the training pictures")
    parser.add_argument("--cache", required=True, help="folder for the decoded pictures")
    parser.add_argument("--family", choices=sorted(PATCH_CELLS), default="truesense")
    parser.add_argument("--noise", action="store_true", help="a network for frames with noise")
    parser.add_argument("--channels", type=int, default=32)
    parser.add_argument("--middle", type=int, default=3, help="layers between the first and the last")
    parser.add_argument("--steps", type=int, required=True)
    parser.add_argument("--batch", type=int, default=6)
    parser.add_argument("--rate", type=float, default=3e-3)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--start", help="run whose weights a new run begins with; it may have fewer middle layers")
    return parser.parse_args()


def rate_at(step, options):
    """A short rise, then half a cosine down to a hundredth."""
    return options.rate * min(1, (step + 1) / WARM_UP) * (0.505 + 0.495 * np.cos(np.pi * step / options.steps))


def displayed(light):
    """The sRGB curve of IEC 61966-2-1."""
    return torch.where(light <= 0.0031308, 12.92 * light, 1.055 * light.clamp(min=0.0031308) ** (1 / 2.4) - 0.055)


def loss_of(result, wanted, is_shown):
    """The fourth root of the mean square, patch by patch: nearly the mean of PSNR. What is cut off above white and
    below black counts little. Patches of linear light with `is_shown` count as a display shows them: noise is in the
    dark parts."""
    result = result.clamp(0, 1) * 0.9 + result * 0.1
    is_shown = is_shown[:, None, None, None]
    error = torch.where(is_shown, displayed(result) - displayed(wanted), result - wanted)
    return (error**2).mean((1, 2, 3)).add(1e-6).pow(0.25).mean()


def validate(network, shown):
    def interpolate(cells, sigma):
        pad = torch.nn.functional.pad
        halo = [network.halo] * 4
        with torch.no_grad():
            planes = [None if p is None else pad(torch.from_numpy(p)[None], halo, "replicate") for p in (cells, sigma)]
            return network(*planes)[0].numpy()

    gains = ((11, False), (24, False), (36.77, False), (24, True)) if network.noise else ((None, False),)
    return [round(figures.mean_cpsnr(interpolate, shown, network.family, *gain), 3) for gain in gains]


class Run:
    def __init__(self, options):
        torch.manual_seed(options.seed)
        self.options, self.step, self.seconds = options, 0, 0.0
        self.rng = np.random.default_rng(options.seed)
        shape = (options.family, options.channels, options.middle, options.noise)
        self.network, self.mean = Network(*shape), Network(*shape)
        if options.start:
            self.network.begin_with(torch.load(options.start)["mean"])
        self.mean.load_state_dict(self.network.state_dict())
        self.optimizer = Soap(self.network.parameters(), options.rate)
        if os.path.exists(options.run):
            self._load(torch.load(options.run))

    def _load(self, saved):
        self.step, self.seconds = saved["step"], saved["seconds"]
        self.network.load_state_dict(saved["network"])
        self.mean.load_state_dict(saved["mean"])
        self.optimizer.load_state_dict(saved["optimizer"])
        self.rng.bit_generator.state = saved["rng"]

    def save(self):
        torch.save(
            {
                "options": vars(self.options),
                "step": self.step,
                "seconds": self.seconds,
                "network": self.network.state_dict(),
                "mean": self.mean.state_dict(),
                "optimizer": self.optimizer.state_dict(),
                "rng": self.rng.bit_generator.state,
            },
            self.options.run + ".part",
        )
        os.replace(self.options.run + ".part", self.options.run)

    def advance(self, batch):
        for group in self.optimizer.param_groups:
            group["lr"] = rate_at(self.step, self.options)
        cells, sigma, wanted, is_linear = batch
        loss = loss_of(self.network(cells, sigma), wanted, is_linear & self.network.noise)
        self.optimizer.zero_grad(set_to_none=True)
        loss.backward()
        self.optimizer.step()
        self.step += 1
        share = 1 - min(AVERAGING, (self.step + 1) / (self.step + 10))
        with torch.no_grad():
            for mean, now in zip(self.mean.parameters(), self.network.parameters()):
                mean.lerp_(now, share)
        return loss.item()


def main():
    options = parsed()
    torch.set_num_threads(1)
    run = Run(options)
    training, validation = pictures.files_in(options.pictures)
    shown = [figures.middle_of(p) for p in pictures.read_all(validation, options.cache)]
    border = run.network.halo + MARGIN[options.family]
    side = (PATCH_CELLS[options.family] + 2 * border) * side_of(options.family)
    taught = [p for p in pictures.read_all(training, options.cache) if min(p.shape[:2]) >= side]
    patches = pictures.Patches(taught, charts.drawn(48, options.seed), side, run.rng)
    batches = Batches(patches, options.family, options.noise, run.network.halo, options.batch, run.rng)
    cost = run.network.multiply_adds()
    print(f"{len(taught)} pictures, {cost:.0f} multiply-adds a pixel, step {run.step}", flush=True)
    start = saved = time.time()
    before, losses = run.seconds, []
    while run.step < options.steps:
        losses.append(run.advance(batches.next()))
        run.seconds = before + time.time() - start
        if time.time() - saved > SAVE_SECONDS or run.step == options.steps:
            run.save()
            saved = time.time()
            print(f"step {run.step}, {run.seconds / 60:.1f} min, loss {np.mean(losses):.5f},"
                  f" validation {validate(run.mean, shown)} dB", flush=True)
            losses.clear()


if __name__ == "__main__":
    main()
