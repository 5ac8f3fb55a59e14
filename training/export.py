"""Writes the weights of a run as integers: python3 -m training.export RUN FILE"""
import argparse

import torch

from . import quantisation, weights
from .network import Network


def network_of(run):
    """The averaged network of a run's file."""
    saved = torch.load(run)
    options = saved["options"]
    network = Network(options["family"], options["channels"], options["middle"], options["noise"])
    network.load_state_dict(saved["mean"])
    return network


def main():
    parser = argparse.ArgumentParser(prog="training.export", description=__doc__)
    parser.add_argument("run")
    parser.add_argument("file")
    parser.add_argument("--reduction", type=int, default=5, help="activations are divided by 2 to this power")
    options = parser.parse_args()
    made = quantisation.quantised(network_of(options.run), options.reduction)
    layers = {f"layer {number}": layer for number, layer in enumerate(made.hidden)}
    for name, layer in {**layers, "last layer": made.last, "base": made.base}.items():
        share = quantisation.magnitude(layer, made.base if layer is made.last else None) / 2**31
        print(f"{name}: shift {layer.shift}, the largest sum is {share:.2f} of what 32 bits hold")
    weights.write(options.file, made)


if __name__ == "__main__":
    main()
