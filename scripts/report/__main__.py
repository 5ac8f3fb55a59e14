"""Writes the page with its plots and crops: report RESULTS PAGE_FOLDER. Plots without measurements are left out."""
import sys
from pathlib import Path

import crops
import page
import plots
import results
import summary


def main(measured, target):
    speed, noise = results.Speed(measured), results.Noise(measured)
    quality, noisy = results.Quality(measured, "quality"), results.Quality(measured, "noisy")
    if not speed.rates:
        sys.exit(f"{measured}: no speed measurements")
    target.mkdir(parents=True, exist_ok=True)
    drawn = {
        "speed-bayer": plots.speed_of_bayer(speed, target / "speed-bayer.svg"),
        "speed-truesense": plots.speed_of_truesense(speed, target / "speed-truesense.svg"),
        "speed-size": plots.speed_by_size(speed, target / "speed-size.svg"),
        "speed-threads": plots.speed_by_threads(speed, target / "speed-threads.svg"),
        "quality-speed": plots.quality_and_speed(speed, quality, target / "quality-speed.svg"),
        "noise": plots.noise_by_gain(noise, target / "noise.svg"),
    }
    scene = measured / "folders" / "drawn scene" / "scene.png"
    if quality.means:
        crops.sheet(scene, measured, target / "crops.png")
        for folder in (measured / "folders").iterdir():  # for inspection; images of others are not published
            for picture in sorted(folder.iterdir()):
                if (measured / "pictures" / "ipp" / f"{picture.stem}.png").exists() and picture.suffix == ".png":
                    (measured / "crops").mkdir(exist_ok=True)
                    crops.sheet(picture, measured, measured / "crops" / picture.name)
    text = page.text(speed, quality, noisy, noise, summary.sentences(speed, quality, noise),
                     {name for name, is_there in drawn.items() if is_there}, quality.means)
    (target / "README.md").write_text(text)


main(Path(sys.argv[1]), Path(sys.argv[2]))
