"""What `tune` exports gives the pixels that it shows: the command line, Python, gst-launch, sidecar and profile.

So all front ends give the same pixels for the same settings.
"""
import json
import os
import shutil
import subprocess
import sys

import pytest
from tuning import TOOL, Tune, run

SETTINGS = [
    {"algorithm": "ipp", "look": "natural", "black-level": "60.3"},
    {"black-level": "60,60.5,61,60.25", "white-level": "4000", "exposure": "-0.5", "tone": "srgb",
     "matrix": "1.4,-0.3,-0.1,-0.2,1.3,-0.1,0,-0.4,1.4", "white-balance": "1.1,1,2"},
    {"algorithm": "fine", "analog-gain": "24", "white-balance-from": "400,300,40,40", "camera": "off"},
    {"algorithm": "edge-aware", "defects": "auto", "exposure": "auto", "set": {"NoRealloc": "1"}},
    {"look": "natural", "white-balance": "auto", "exposure": "0.25", "algorithm": "swift"},
    {"camera": "off", "white-balance": "white-patch"},
    {},
]
TRUESENSE_SETTINGS = [
    {"set": {"RR": "1.2", "panGain": "1.5"}},
    {"algorithm": "kodak", "set": {"panSigma0": "2", "sharpnessEnable": "1"}, "tone": "srgb", "black-level": "40"},
    {"algorithm": "swift", "exposure": "auto", "white-balance": "grey-world"},
    {"linear": "on"},
    {},
]


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    folder = tmp_path_factory.mktemp("frames")
    run("demo", "--camera", folder)
    for step in ("dark", "flat"):
        run("calibrate", step, *sorted(folder.glob(f"{step}*.raw")), "-o", folder / "camera.json")
    profile = json.loads((folder / "camera.json").read_text())
    profile |= {"white_balance_gains": {"R": 1.5, "G": 1, "B": 2}, "colour_matrix": [1.5, -.5, 0, 0, 1, 0, 0, -.5, 1.5]}
    (folder / "balanced.json").write_text(json.dumps(profile))
    run("pack", folder / "scene_768x512_BayerRG12.raw", folder / "it's packed.raw", "--layout", "pfnc")
    run("demo", folder)
    run("mosaic", folder / "scene.png", folder / "clear_768x512_SCF1WBWG12.raw", "--format", "SCF1WBWG12", "--linear")
    return folder


def shown(tune, settings):
    """The whole picture that the page shows, without the fourth sample of its pixels."""
    query = f"{tune.root}part?" + "&".join(("x=0", "y=0", "w=768", "h=512", f"s={tune.quoted(settings)}"))
    status, body = tune.ask(query)
    assert status == 200, body
    return b"".join((body[0::4], body[1::4], body[2::4]))


def planes(path):
    pixels = path.read_bytes()[-3 * 768 * 512:]
    return b"".join((pixels[0::3], pixels[1::3], pixels[2::3]))


@pytest.mark.parametrize("name, has_camera, several", [
    ("scene_768x512_BayerRG12.raw", True, SETTINGS),
    ("it's packed.raw", True, SETTINGS),
    ("clear_768x512_SCF1WBWG12.raw", False, TRUESENSE_SETTINGS)])
def test_every_export_gives_these_pixels(folder, tmp_path, monkeypatch, name, has_camera, several):
    monkeypatch.setenv("PATH", os.path.dirname(TOOL) + os.pathsep + os.environ["PATH"])
    with Tune(folder / name, *(["--camera", folder / "balanced.json"] if has_camera else [])) as tune:
        for settings in several:
            expected = shown(tune, settings)
            exports = tune.get("export", s=json.dumps(settings))
            command = exports["commandLine"].replace(".png", ".ppm")
            subprocess.run(command, shell=True, check=True, cwd=tmp_path, capture_output=True)
            picture = next(tmp_path.glob("*.ppm"))
            assert planes(picture) == expected, command
            picture.unlink()
            if "KVX_PYTHON_PACKAGE" in os.environ:
                script = exports["python"] + "open('python.ppm', 'wb').write(picture.tobytes())"
                subprocess.run([sys.executable, "-c", script], check=True, cwd=tmp_path,
                               env={**os.environ, "PYTHONPATH": os.environ["KVX_PYTHON_PACKAGE"]})
                assert planes(tmp_path / "python.ppm") == expected, script
                (tmp_path / "python.ppm").unlink()
            if "GST_PLUGIN_PATH" in os.environ:
                subprocess.run(exports["gstreamer"], shell=True, check=True, cwd=tmp_path, capture_output=True)
                picture = next(tmp_path.glob("*.ppm"))
                assert planes(picture) == expected, exports["gstreamer"]
                picture.unlink()


def test_saved_files_are_kept_until_asked(folder, tmp_path):
    frame = tmp_path / "frame_768x512_BayerRG12.raw"
    shutil.copy(folder / "scene_768x512_BayerRG12.raw", frame)
    profile = tmp_path / "camera.json"
    for file in folder.glob("camera*"):
        shutil.copy(file, tmp_path)
    before = json.loads(profile.read_text())
    with Tune(frame, "--camera", profile) as tune:
        settings = tune.quoted({"white-balance": "1.5,1,1.25", "matrix": "1,0,0,0,1,0,0,0,1"})
        for what, path in (("profile", profile), ("sidecar", tmp_path / (frame.name + ".json"))):
            if what == "sidecar":
                assert tune.ask(f"{tune.root}save?what={what}&s={settings}", "POST")[0] == 200
            assert tune.ask(f"{tune.root}save?what={what}&s={settings}", "POST")[0] == 409
            assert tune.ask(f"{tune.root}save?what={what}&s={settings}&overwrite=yes", "POST")[0] == 200
            assert json.loads(path.read_text())["white_balance_gains"]["R"] == 1.5
        after = json.loads(profile.read_text())
        assert {key: after[key] for key in before} == before
        assert {fact["origin"] for fact in tune.get("plan")["facts"]} == {"sidecar", "camera"}


def test_psnr_of_the_whole_picture(tmp_path):
    run("demo", tmp_path)
    frame = tmp_path / "scene_768x512_BayerRG12.raw"
    table = json.loads(run("compare", frame, "--reference", tmp_path / "scene.png", "--json",
                           "-o", tmp_path / "sheet.png").stdout)
    with Tune(frame, "--reference", tmp_path / "scene.png") as tune:
        for row in table["algorithms"]:
            measured = tune.get("psnr", s=json.dumps({"algorithm": row["algorithm"]}))["psnr"]
            assert measured == pytest.approx(row["psnr"], abs=1e-9)
