"""The tools that make the weights of the learned interpolators, and the weights that they made."""
import pathlib

import numpy as np
import pytest

from training import noise, reference, swift, weights
from training.inputs import input_of
from training.mosaics import from_cells, letters_of, mosaic_of, side_of, to_cells

WEIGHTS = pathlib.Path(__file__).parents[2] / "frame" / "learned" / "weights"
FAMILIES = ("bayer", "truesense")
FORMATS = {"bayer": "BayerRG12", "truesense": "TrueSense_BGGR_WBBW_0_12"}
rng = np.random.default_rng(7)


def each_committed(*kinds):
    paths = sorted(path for kind in kinds for path in WEIGHTS.glob("*." + kind))
    return pytest.mark.parametrize("path", paths, ids=[path.stem for path in paths])


def interpolated(path, frame, bits, phase):
    family = library_for(family_of(path))
    if path.suffix == ".kvxs":
        return swift.interpolate(swift.read(path), frame, bits, family, phase)
    return reference.interpolate(weights.read(path), frame, bits, family, phase, noise.measured_line(family, 24))


def family_of(path):
    return path.stem.split("-")[0]


def library_for(family):
    """The family; Bayer frames are interpolated by the library first."""
    if family == "bayer":
        pytest.importorskip("kvxdemosaicing")
    return family


@pytest.mark.parametrize("family", FAMILIES)
def test_mosaics_equal_those_of_the_library(family):
    kvx = pytest.importorskip("kvxdemosaicing")
    picture = rng.integers(0, 4096, (24, 36, 3)).astype(np.uint16)
    expected = kvx.mosaic(picture, FORMATS[family], white=4095)
    own = mosaic_of(picture / 4095.0, family) * 4095
    assert np.array_equal(expected, np.floor(own + 0.5 + 1e-7))


@pytest.mark.parametrize("family", FAMILIES)
def test_cells_are_put_together_again(family):
    picture = rng.random((24, 16, 3))
    assert np.array_equal(from_cells(to_cells(picture, side_of(family)), side_of(family)), picture)


def test_samples_outside_are_a_tile_away_or_less_where_the_frame_is_small():
    inside = [reference.folded(range(-5, 8), size, 4).tolist() for size in (6, 3, 1)]
    assert inside[0] == [3, 0, 1, 2, 3, 0, 1, 2, 3, 4, 5, 2, 3]
    assert inside[1] == [1, 0, 1, 2, 1, 0, 1, 2, 1, 0, 1, 2, 1]
    assert inside[2] == [0] * 13


def flat_frame(family, shape, phase, colour):
    """Samples of a field of one colour: R, G, B and pan."""
    side, letters = side_of(family), letters_of(family)
    rows, columns = np.mgrid[: shape[0], : shape[1]]
    sites = (rows + phase[0]) % side * side + (columns + phase[1]) % side
    return np.array([dict(zip("RGBW", colour))[letter] for letter in letters])[sites]


@each_committed("kvxn", "kvxs")
def test_flat_fields_are_exact(path):
    for bits, phase, colour in [(8, (0, 0), (255, 255, 255, 255)), (12, (1, 1), (4095, 3, 977, 2051)),
                                (14, (0, 1), (0, 16383, 1, 5001)), (16, (1, 0), (65535, 0, 1, 40001))]:
        frame = flat_frame(family_of(path), (9, 14), phase, colour)
        picture = interpolated(path, frame, bits, phase)
        assert np.array_equal(picture, np.broadcast_to(colour[:3], picture.shape))


@each_committed("kvxn", "kvxs")
def test_a_frame_of_another_phase_is_a_part_of_the_same_scene(path):
    frame, border = rng.integers(0, 4096, (88, 92)), 36
    whole = interpolated(path, frame, 12, (0, 0))[1:, 3:]
    part = interpolated(path, frame[1:, 3:], 12, (1, 3 % side_of(family_of(path))))
    assert np.array_equal(whole[border:-border, border:-border], part[border:-border, border:-border])


@each_committed("kvxn", "kvxs")
def test_tiny_frames_become_pictures(path):
    for shape in ((1, 1), (1, 7), (3, 2)):
        picture = interpolated(path, np.full(shape, 77), 8, (1, 1))
        assert picture.shape == (*shape, 3) and (picture == 77).all()


@each_committed("kvxn")
def test_no_sum_of_the_weights_can_overflow(path):
    loaded = weights.read(path)
    layers = [(layer.filters, layer.offsets[:, None]) for layer in (*loaded.hidden, loaded.base)]
    reduced_base = loaded.base.filters / 2.0 ** (loaded.base.shift - loaded.last.shift)
    for filters in [*layers, (loaded.last.filters, reduced_base)]:
        magnitudes = sum(np.abs(f.astype(np.float64)).reshape(len(f), -1).sum(axis=1) for f in filters)
        assert magnitudes.max() * 32768 + 2**15 < 2**31


@each_committed("kvxs")
def test_no_sum_of_swift_can_overflow(path):
    filters = swift.read(path)
    assert np.abs(filters.taps.astype(np.int64)).sum(axis=-1).max() * 4 * 32768 + 2 ** (filters.shift + 1) < 2**31


@pytest.mark.parametrize("with_noise", (False, True))
@pytest.mark.parametrize("family", FAMILIES)
def test_integers_follow_the_network_in_floating_point(family, with_noise, tmp_path):
    torch = pytest.importorskip("torch")
    library_for(family)
    from training import quantisation
    from training.network import Network

    torch.manual_seed(3)
    network = Network(family, 16, 2, with_noise)
    with torch.no_grad():
        network.last.normal_(0, 0.05)
        network.base.normal_(0, 0.1)
        for offset in network.offsets:
            offset.normal_(0, 0.3)
    weights.write(tmp_path / "file", quantisation.quantised(network, reduction=2))
    loaded = weights.read(tmp_path / "file")
    frame, line, side = rng.integers(1800, 2300, (48, 40)), noise.measured_line(family, 24), side_of(family)
    seen = input_of(frame << 4, family).astype(np.int64)
    words = to_cells(reference.extended(seen, side, (0, 0), network.halo), side)
    sigma = reference.sigma_cells(words, family, line)
    with torch.no_grad():
        planes = network(*(torch.from_numpy(p.astype(np.float32))[None] for p in (words, sigma)))[0].numpy()
    exact = np.clip(from_cells(planes, side) / 16, 0, 4095)
    picture = reference.interpolate(loaded, frame, 12, family, (0, 0), line)
    assert np.abs(picture - exact).max() < 2  # after four layers of weights with about 12 bits
    assert np.abs(exact - exact.mean((0, 1))).max() > 100
    flat = flat_frame(family, (16, 16), (0, 0), (600, 1200, 2400, 1500))
    assert (reference.interpolate(loaded, flat, 12, family, line=line) == (600, 1200, 2400)).all()


def test_a_deeper_network_begins_much_like_the_one_whose_weights_it_takes():
    torch = pytest.importorskip("torch")
    from training.network import Network

    torch.manual_seed(3)
    start, deeper = Network("truesense", 16, 1, True), Network("truesense", 16, 3, True)
    start.last.data.normal_(0, 0.05)
    deeper.begin_with(start.state_dict())
    cells, sigma = torch.rand(1, 16, 20, 20), torch.full((1, 1, 20, 20), 0.05)
    with torch.no_grad():
        wanted, result = start(cells, sigma)[..., 2:-2, 2:-2], deeper(cells, sigma)
    assert 0 < (result - wanted).std() < 0.2 * wanted.std()


def test_the_optimiser_solves_a_badly_scaled_problem_and_can_be_resumed():
    torch = pytest.importorskip("torch")
    from training.soap import Soap

    torch.manual_seed(3)
    turn, wanted = torch.linalg.qr(torch.randn(8, 8))[0], torch.randn(6, 8, 1, 1)
    scales = 10 ** torch.linspace(-2, 1, 8)  # of the axes of `turn`
    filters = torch.nn.Parameter(torch.zeros_like(wanted))
    optimiser = Soap([filters], lr=0.1)
    for step in range(400):
        if step == 200:
            saved, optimiser = optimiser.state_dict(), Soap([filters], lr=0.1)
            optimiser.load_state_dict(saved)
        optimiser.param_groups[0]["lr"] = 0.1 * (1 - step / 400)
        optimiser.zero_grad()
        ((((filters - wanted)[..., 0, 0] @ turn) * scales) ** 2).mean().backward()
        optimiser.step()
    assert (filters - wanted).abs().max() < 0.02
