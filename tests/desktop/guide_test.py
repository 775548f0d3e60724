"""The pictures of the guide are what the program shows: every menu's frame, every font, plots of
each kind and a diagram, to the pixel."""

import os
import subprocess

from pictures import PROGRAM, ROOT, read_with, same


def test_the_pictures_of_the_guide_are_what_the_program_shows(tmp_path):
    environment = os.environ | {"TORVE_PROGRAM": str(PROGRAM)}
    subprocess.run([ROOT / "scripts" / "guide_pictures.py", tmp_path], check=True, env=environment)
    shown = {path.stem: read_with("convert", path, "ppm:-") for path in tmp_path.glob("*.ppm")}
    assert len(shown) > 10
    for name, picture in shown.items():
        kept = read_with("convert", ROOT / "docs" / "images" / f"{name}.png", "-depth", "8", "ppm:-")
        assert same(picture, kept), f"{name}: if that is wanted, run scripts/screenshots"
