#!/usr/bin/python3
"""figure_test.py TORVE_BATCH: figures, decoded by other programs and held against their inputs.

The numbers along the axes are read as text and paired with the tick marks that are seen; by these the
curve's ink, column by column, is turned into times and values again.
"""

import html
import os
import re
import subprocess
import sys
import tempfile
from xml.etree import ElementTree

import numpy as np

RATE = 44100
DPI = {"pdf": 300, "svg": 300, "png": 180}  # 2.5 pixels of a PNG are a point
SVG_TEXT = "{http://www.w3.org/2000/svg}text"


def run(*words):
    return subprocess.run(words, check=True, capture_output=True).stdout


def write(name, values, head=""):
    with open(name, "w", encoding="ascii") as file:
        file.write(head + "".join(f"{i} {v:.6f}\n" for i, v in enumerate(values)))
    return np.round(values, 6)


def pixels(name):
    if name.endswith(".pdf"):
        ppm = run("pdftoppm", "-r", "300", name)
    else:
        if name.endswith(".svg"):
            run("rsvg-convert", "-d", "300", "-p", "300", "-o", name + ".png", name)
            name += ".png"
        ppm = run("convert", name, "ppm:-")
    _, width, height, _, data = re.split(rb"\s", ppm, maxsplit=4)
    return np.frombuffer(data, np.uint8).reshape(int(height), int(width), 3).astype(int)


def words_of(name):
    """(middle, middle from above, text) of each word of a PDF, points."""
    listing = run("pdftotext", "-bbox", name, "-").decode()
    word = r'<word xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)</word>'
    return [((float(x1) + float(x2)) / 2, (float(y1) + float(y2)) / 2, html.unescape(text))
            for x1, y1, x2, y2, text in re.findall(word, listing)]


def middles(flags):
    """Of the runs of set flags."""
    edges = np.flatnonzero(np.diff(np.concatenate(([0], flags.astype(int), [0]))))
    return (edges[::2] + edges[1::2] - 1) / 2


def frames_of(image):
    """(left, top, right, bottom) of each frame, whole pixels."""
    dark = image.max(axis=2) < 110
    rows = middles(dark.sum(axis=1) > 0.7 * image.shape[1]).astype(int)
    columns = np.flatnonzero(dark[rows[0]:rows[1]].mean(axis=0) > 0.8)
    return [(columns[0], top, columns[-1], bottom) for top, bottom in zip(rows[::2], rows[1::2])]


def scale_of(marks, numbers, point, what):
    """Slope and offset from pixels to values. Numbers: (position in points, text)."""
    numbers = sorted(numbers)
    assert len(marks) == len(numbers) >= 2, f"{what}: marks at {marks}, numbers {numbers}"
    beside = np.array([position for position, _ in numbers]) * point
    assert np.ptp(beside - marks) < 0.8 * point, f"{what}: marks at {marks}, numbers at {beside}"
    values = np.array([float(text.replace("\u2212", "-")) for _, text in numbers])
    step = np.diff(values)[0]
    assert np.allclose(np.diff(values), step) and f"{abs(step):e}"[0] in "125", f"{what}: {values}"
    slope, offset = np.polyfit(marks, values, 1)
    error = np.abs(slope * marks + offset - values).max()
    assert error < abs(slope), f"{what}: marks are off by {error}"
    return slope, offset


def scales_of(what, image, frame, lowest_frame, words, point):
    """Those of both axes."""
    left, top, right, bottom = frame
    edge = int(2 * point)  # marks are longer
    black = image.max(axis=2) < 110
    numbers = [w for w in words if re.fullmatch(r"\u2212?[\d.]+", w[2])]
    below = [(x, text) for x, y, text in numbers
             if 0 < y * point - lowest_frame[3] < 12 * point and left + edge < x * point < right - edge]
    beside = [(y, text) for x, y, text in numbers
              if x * point < left and top + edge < (y + 0.6) * point < bottom - edge]
    columns = middles(black[bottom - edge, left + edge:right - edge]) + left + edge
    rows = middles(black[top + edge:bottom - edge, left + edge]) + top + edge
    return scale_of(columns, below, point, what + " x"), scale_of(rows, beside, point, what + " y")


def check_curve(what, image, frame, scales, places, samples, column):
    """Whether the ink of each column of the picture is what the samples there say."""
    left, top, right, bottom = frame
    (x_slope, x_offset), (y_slope, y_offset) = scales
    blue = (image[:, :, 2] - image[:, :, 0] > 40)[top + 2:bottom - 1]
    assert blue.any(), what
    seen = sorted((y_slope * top + y_offset, y_slope * bottom + y_offset))
    tolerance = abs(y_slope) * 3  # pixels

    def ends(at, reach):
        first, last = np.searchsorted(places, (at - reach * x_slope, at + reach * x_slope))
        values = samples[first:last]
        return np.clip((values.min(), values.max()), *seen) if last > first else None

    for x in range(left + 8, right - 8, 7):
        at = x_slope * x + x_offset
        ink = np.flatnonzero(blue[:, x - 3:x + 4].any(axis=1))
        near, wide = ends(at, 3), ends(at, 3 + 2 * column)
        if near is None or len(ink) == 0:  # between samples, or where there are none
            assert len(ink) == 0 or places[0] < at < places[-1], f"{what}: ink at {at}"
            continue
        low, high = y_slope * (ink[[-1, 0]] + top + 2) + y_offset
        assert low < near[0] + tolerance and high > near[1] - tolerance, f"{what}: too little at {at}"
        assert low > wide[0] - tolerance and high < wide[1] + tolerance, f"{what}: too much at {at}"


def check(inputs, panels, titles):
    """Draws a figure in each format. Panels: places along x, values, both as the numbers have them."""
    for ending, dpi in DPI.items():
        name = "figure." + ending
        run(BATCH, "figure", name, *inputs, "--title", "Größe & <Maß>")
        assert os.path.getsize(name) < 200_000, f"{name}: {os.path.getsize(name)} bytes"
        image = pixels(name)
        words = words_of("figure.pdf")
        texts = sorted(w[2] for w in words)
        assert {*titles, "Größe", "&", "<Maß>"} <= set(texts), texts
        if ending == "svg":
            drawn = ElementTree.parse(name).iter(SVG_TEXT)
            assert texts == sorted(" ".join(t for e in drawn for t in e.itertext()).split()), name
        inside = image[3:-3, 3:-3]
        assert image.sum() - inside.sum() == 765 * (image.size - inside.size) / 3, f"{name}: is cut"
        frames = frames_of(image)
        assert len(frames) == len(panels), f"{name}: {frames}"
        for i, (frame, panel) in enumerate(zip(frames, panels)):
            what = f"{name} {inputs[i]}"
            scales = scales_of(what, image, frame, frames[-1], words, dpi / 72)
            check_curve(what, image, frame, scales, *panel, column=0.45 * dpi / 72)


def check_diagram():
    """A box, its diagonal and the circle in it, found again by the ink's outermost columns and rows."""
    with open("net.vob", "w", encoding="latin-1") as file:
        file.write("torve-diagram 1\nvbox x1=100 y1=200 x2=300 y2=400 colour=#ff0000 label=4\n"
                   "vline x1=100 y1=200 x2=300 y2=400 colour=#00a000\n"
                   "circle x1=120 y1=200 x2=280 y2=400 colour=#0000ff\n"
                   'label x1=300 y1=380 x2=330 y2=390 text="K\\xf6ln\\x01"\n')
    for ending in DPI:
        run(BATCH, "figure", "figure." + ending, "net.vob", "--size", "400x700" if ending != "png" else "1000x1750")
        image = pixels("figure." + ending)
        red, green, blue = (image[:, :, c] - image.sum(axis=2) / 3 > 40 for c in range(3))
        rows, columns = np.nonzero(red)
        left, top, side = columns.min(), rows.min(), np.ptp(columns)
        assert abs(np.ptp(rows) - side) <= 2, f"{ending}: no square"
        assert abs(image.shape[1] * 0.75 - side) < side, ending
        for part in (0.1, 0.35, 0.8):
            at = np.flatnonzero(green[top + int(part * side)]) - left
            assert len(at) and np.abs(at - part * side).max() < 6, f"{ending}: diagonal at {at}"
        rows, columns = np.nonzero(blue)
        assert abs(np.ptp(rows) - 0.8 * side) < 6 and abs(np.ptp(columns) - 0.8 * side) < 6, ending
    run(BATCH, "figure", "figure.pdf", "net.vob")
    assert [w[2] for w in words_of("figure.pdf")] == ["Kölnł"], words_of("figure.pdf")


def check_titles():
    """A title has its size while there is room, is made smaller as far as that helps, then cut."""
    def title(text):
        run(BATCH, "figure", "figure.pdf", "slow.res", "--title", text)
        words = run("pdftotext", "-bbox", "figure.pdf", "-").decode()
        page, = re.findall(r'<page width="(.*?)"', words)
        found = re.search(r'xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(' + text[0] + ".*?)</word>", words)
        left, top, right, bottom = (float(found[i]) for i in range(1, 5))
        return left, float(page) - right, bottom - top, found[5]

    for letter, whole, small in (("W", 45, 90), ("n", 72, 136), ("i", 110, 132)):
        for length, size, kept in ((whole, 10, True), (small, None, True), (whole + small, 5, False)):
            left, right, height, text = title(letter * length)
            assert left >= 0 and right >= 0, f"{letter} x {length}: {left}, {right}"
            assert 5 <= height <= 10 and size in (height, None), f"{letter} x {length}: {height}"
            assert (text == letter * length) == kept, text
    # Half of a pair, a letter in a byte too many, no character: not UTF-8, and so Latin-1.
    for odd in (b"\xed\xa0\x80", b"\xe0\x9f\xbf", b"\xef\xbf\xbf"):
        run(BATCH, "figure", "figure.svg", "slow.res", "--title", odd)
        shown = "".join(t for e in ElementTree.parse("figure.svg").iter(SVG_TEXT) for t in e.itertext())
        assert shown.startswith(odd.decode("latin-1")), ascii(shown)


def check_refusals():
    """(words, status, what is said). What was there stays."""
    with open("old.pdf", "w", encoding="ascii") as file:
        file.write("old")
    write("empty.res", [])
    write("bad.vob", [0], "torve-diagram 1\n")
    for words, status, said in (
            ("old.pdf missing.res", 2, "missing.res: there is no such file"),
            ("old.pdf slow.res empty.res", 2, "empty.res: there is nothing to draw"),
            ("old.pdf slow.res,start=50000", 2, "has fewer lines than are to be skipped"),
            ("old.pdf bad.vob", 2, "bad.vob line 2: cannot be read"),
            ("old.pdf slow.res,xsc=0", 1, "usage"), ("old.pdf slow.res,db", 1, "usage"),
            ("old.pdf slow.res --size 80x80", 1, "usage"), ("old.doc slow.res", 1, "usage"),
            ("old.pdf a.res b.res c.res d.res e.res", 1, "usage"),
            ("no/old.pdf slow.res", 2, "no/old.pdf: cannot be written")):
        done = subprocess.run([BATCH, "figure", *words.split()], capture_output=True, text=True)
        assert done.returncode == status and said in done.stderr, f"{words}: {done}"
    with open("old.pdf", encoding="ascii") as file:
        assert file.read() == "old"


def main():
    random = np.random.default_rng(3)
    noise = write("noise.res", random.normal(size=300_000) * np.linspace(0, 1, 300_000))
    tone = write("tone.res", 1.5e5 * np.sin(np.arange(30_000) / 90))
    slow = write("slow.res", np.cumsum(random.normal(size=40_000)) - 30)
    bins = write("bins.spe", random.exponential(size=5001) ** 4, "size=10000\n")
    time = np.arange(300_000) / RATE
    # A file of any length; one that begins later; half the full scale; a part.
    check(["noise.res", "slow.res,start=-4000", "tone.res,ysc=2", "noise.res,start=50000"],
          [(time, noise), (time[:40_000] + 4000 / RATE, slow), (time[:30_000], tone / 1e4),
           (time[50_000:], noise[50_000:])], ["time", "(s)", "amplitude", "noise.res", "×10"])
    # So close that each point is a corner, and a sum of five samples.
    sums = np.convolve(slow, np.ones(5))[4:]
    check(["slow.res,start=2000,step=5,xsc=20"], [(time[2000:2040] * 1e3, sums[2000:2040])],
          ["time", "(ms)"])
    hertz = np.arange(5001) * RATE / 10000
    level = 10 * np.log10(np.maximum(bins / bins.max(), 1e-12))
    check(["bins.spe", "bins.spe,db"], [(hertz, bins), (hertz, level)],
          ["frequency", "(Hz)", "(dB)", "power"])
    check_diagram()
    check_titles()
    check_refusals()


if __name__ == "__main__":
    BATCH = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as directory:
        os.chdir(directory)
        main()
