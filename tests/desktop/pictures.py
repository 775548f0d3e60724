"""What is on the screen and what should be there: NumPy arrays [y, x] of 0xRRGGBB."""

import os
import pathlib
import re
import subprocess

import numpy as np
from numpy import array_equal as same

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = ROOT / os.environ.get("TORVE_PROGRAM", "build/release/bin/torve")
DATA = PROGRAM.parents[1] / "share" / "torve"

# What colours of the program's table look like on the screen.
WHITE, BLACK, RED, CYAN = 0xFCFCFC, 0x000000, 0xFF0000, 0x00FFFF


def cut(picture, x, y, width, height):
    return picture[y : y + height, x : x + width]


def icon_area(i):
    return 1 + 45 * i, 554, 43, 43


def drawn_icon(name):
    """As it was drawn, from its XPM text."""
    head, *lines = (ROOT / "data" / "icons" / f"{name}.xpm").read_text().split('"')[1::2]
    count = int(head.split()[2])
    colours = {line[0]: int(line[-6:], 16) for line in lines[:count]}
    return np.array([[colours[letter] for letter in row] for row in lines[count:]])


def read_with(*converter):
    """The picture that another program writes to its standard output, as a PPM file."""
    data = subprocess.run(converter, check=True, capture_output=True, timeout=60).stdout
    head = re.match(rb"P6\n(?:#.*\n)?(\d+) (\d+)\n255\n", data)
    pixels = np.frombuffer(data[head.end() :], np.uint8).reshape(-1, int(head[1]), 3).astype(int)
    return pixels @ [0x10000, 0x100, 1]


def printed(eps):
    """As a printer shows it; at this resolution a dot is a pixel of the screen."""
    words = "gs -q -dSAFER -dBATCH -dNOPAUSE -dEPSCrop -sDEVICE=ppmraw -r120 -sOutputFile=- -f"
    return read_with(*words.split(), eps)


def write_ppm(picture, path):
    channels = np.stack([picture >> 16, picture >> 8, picture], axis=-1).astype(np.uint8)
    path.write_bytes(b"P6 %d %d 255\n" % picture.shape[::-1] + channels.tobytes())
