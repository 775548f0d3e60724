"""The files that the tools read and write. What the analyses compute is tested without a window."""

import numpy as np
import pytest
from network import FRAME, LEAVE, Editor
from pictures import BLACK, WHITE, cut, printed, read_with, same
from workbench import CORRELATE, PRINT, READ, SIGNALS, SPECTRUM, WRITE, pane_area

ENOUGH = 12000  # samples, for every analysis
RATE = 44100


@pytest.fixture
def short_signals(desk):
    """Analyses take no time: strokes of the bell, and tones of 3 kHz and, weaker, of 10 kHz."""
    for name in SIGNALS[:2]:
        desk.write_signal(name, desk.read_signal(name)[:ENOUGH])
    turns = 2 * np.pi * np.arange(ENOUGH) / RATE
    desk.write_signal(SIGNALS[2], np.sin(3000 * turns) + 0.5 * np.sin(10000 * turns))


def test_the_chosen_pane_is_read_into_and_becomes_a_gif_picture(desk):
    desk.write_signal("saw.res", [0, 1, 2, 1, 0, 2.5])
    (desk.folder / "peaks.spe").write_text("size=8\n0 0\n1 0\n2 7\n3 3\n")
    desk.start()
    before = desk.screenshot()
    desk.open(READ)
    for name, pane, title, said in (
        ("saw.res", 2, "saw.res", "largest absolute value is 2.500000\n"),
        ("peaks.spe", 3, "Power spectrum", "maxi=2 maxf1=7.000000 offset=0\n"),
    ):
        desk.edit(READ, 0, 54, str(pane))
        desk.edit(READ, 0, 18, name)
        assert desk.shows(READ, 0, 18, name)
        desk.run(READ, 0)
        assert said in desk.said()
        assert desk.pane_shows(pane - 1, title)
        assert desk.shows(READ, 0, 33, name), "what the second field holds now"
    assert same(cut(desk.screenshot(), *pane_area(0)), cut(before, *pane_area(0)))
    editor = Editor(desk, 100, 535)
    editor.draw(FRAME, (100, 200), (300, 300))
    editor.choose(LEAVE)
    desk.edit(READ, 0, 54, "4")
    screen = desk.screenshot()
    desk.run(READ, 0)
    assert same(desk.screenshot(), screen), "there is no fourth pane"
    # What is drawn over the pane is in the picture, a menu is not.
    reader = desk.move(READ, 160, 200)
    desk.edit(reader, 2, 41, "2")
    desk.run(reader, 2)
    picture = read_with("convert", desk.folder / "figure.gif", "ppm:-")
    seen = screen[176 : 176 + 171, (np.arange(957) * 0.8359375).astype(int)]
    # Rose brown is what the colour table has for white.
    assert same(picture, np.where(seen == WHITE, 0xBC8F8F, seen))


def test_a_signal_becomes_an_au_file_and_a_piece_of_it_a_signal_again(desk):
    desk.start()
    desk.open(WRITE)
    desk.edit(WRITE, 2, 24, "bell.au")
    desk.edit(WRITE, 2, 4, "bhld1.res")
    desk.run(WRITE, 0)
    desk.edit(WRITE, 2, 4, "cut.res")
    desk.edit(WRITE, 1, 40, "0.75")
    desk.edit(WRITE, 1, 25, "0.25")
    desk.run(WRITE, 1)
    names = ("cut.res", "bell.au", "0.25", "0.75")
    assert "".join(f"u1[{i}].name={name}\n" for i, name in enumerate(names)) in desk.said()
    whole, piece = desk.read_signal("bhld1.res"), desk.read_signal("cut.res")
    assert abs(len(piece) - RATE / 2) <= 1
    assert np.abs(piece - whole[RATE // 4 :][: len(piece)]).max() < 1e-6
    desk.open(READ)
    desk.edit(READ, 1, 16, "bell.au")
    desk.run_by_double_press(READ, 1)
    assert desk.said().count("AU-file header: dns.") == 1


def near(ink):
    """Where there is ink within two pixels."""
    wide, (rows, columns) = np.pad(ink, 2), ink.shape
    return np.any([wide[y:, x:][:rows, :columns] for y in range(5) for x in range(5)], axis=0)


def test_each_pane_prints_as_it_looks(desk, short_signals):
    desk.start()
    desk.open(READ)
    desk.edit(READ, 0, 54, "2")
    desk.edit(READ, 0, 18, "bhld2.res")
    desk.run(READ, 0)
    desk.open(PRINT)
    screen = desk.screenshot()
    for pane, name in enumerate(("one.eps", "two.eps", "three.eps")):
        # All three lines print into the file of the first.
        desk.edit(PRINT, 0, 24, name)
        desk.run(PRINT, pane)
        assert "%%BoundingBox: 0 0 488 104\n" in (desk.folder / name).read_text()
        paper = printed(desk.folder / name) & 0xFF
        # The curve, without labels, whose letters the printer has of its own.
        shown = cut(screen, 38, 176 * pane + 24, 759, 128) == BLACK
        inked = cut(paper, 47, 21, 759, 128) < 0xA0
        for one, other in ((shown, inked), (inked, shown)):
            assert not (one & ~near(other))[2:-2, 2:-2].any(), name
    assert not (desk.folder / "plot2.eps").exists()


def test_analyses_are_written_and_shown(desk, short_signals):
    desk.start()
    desk.open(SPECTRUM)
    desk.run(SPECTRUM, 0)
    assert "run power spectrum\n" in desk.said()
    assert not (desk.folder / "rest.res").exists()
    desk.run(SPECTRUM, 1)
    assert desk.pane_shows(2, "Power spectrum")
    assert (desk.folder / "spectr3.spe").read_text().startswith("size=12001\n")
    desk.run(SPECTRUM, 2)
    assert "going to filter_spectrum low=2200 high=5000\n" in desk.said()
    desk.run(SPECTRUM, 0)
    for name, tone in (("mid.res", 3000), ("rest.res", 10000)):
        power = np.abs(np.fft.rfft(desk.read_signal(name))) ** 2
        around = slice((tone - 200) * ENOUGH // RATE, (tone + 200) * ENOUGH // RATE)
        assert power[around].sum() > 0.99 * power.sum(), name
    desk.open(CORRELATE)
    for line, pane, name, said in (
        (2, 2, "compar3.res", "offset_best"),
        (1, 2, "corre3.res", "in correlation\n"),
        (0, 0, "autocor1.res", "in autocorrelation\n"),
    ):
        before = desk.screenshot()
        desk.run(CORRELATE, line)
        assert said in desk.said()
        assert desk.pane_shows(pane, name)
        assert not same(cut(desk.screenshot(), *pane_area(pane)), cut(before, *pane_area(pane)))
        assert len(desk.read_signal(name)) > ENOUGH / 4, name
