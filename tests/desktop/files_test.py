"""Pictures of a pane, as other programs show them, and figures of it, as torve-batch draws them."""

import subprocess

import numpy as np
from network import DIAGRAM_FILES, FILES, FRAME, LEAVE, PALETTE, PRINT_OUT, SAVE, TELEPHONE, Editor
from pictures import BLACK, PROGRAM, WHITE, cut, printed, read_with, same
from workbench import PRINT, READ


def test_what_is_drawn_over_a_pane_is_in_its_gif_picture_and_a_menu_is_not(desk):
    desk.start()
    editor = Editor(desk, 100, 535)
    editor.draw(FRAME, (100, 200), (300, 300))
    editor.choose(LEAVE)
    desk.close(PALETTE)  # it lies over that pane
    screen = desk.screenshot()
    desk.open(READ)
    reader = desk.move(READ, 160, 200)
    desk.edit(reader, 2, 41, "2")
    desk.run(reader, 2)
    picture = read_with("convert", desk.folder / "figure.gif", "ppm:-")
    seen = screen[176 : 176 + 171, (np.arange(957) * 0.8359375).astype(int)]
    # Rose brown is what the colour table has for white.
    assert same(picture, np.where(seen == WHITE, 0xBC8F8F, seen))


def near(ink):
    """Where there is ink within two pixels."""
    wide, (rows, columns) = np.pad(ink, 2), ink.shape
    return np.any([wide[y:, x:][:rows, :columns] for y in range(5) for x in range(5)], axis=0)


def test_each_pane_prints_as_it_looks(desk):
    desk.shorten_signals().start()
    desk.open(READ)  # a second pane without a shift
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


def test_names_of_figures_make_figures_of_what_is_shown(desk):
    desk.start()
    batch = PROGRAM.with_name("torve-batch")
    subprocess.run([batch, "spectrum", "bhld1.res", "bell.spe", "20000"], cwd=desk.folder, check=True,
                   stdout=subprocess.DEVNULL)

    def is_figure(name, words):
        subprocess.run([batch, "figure", "again", "--format", name[-3:].lower(), *words.split()],
                       cwd=desk.folder, check=True)
        assert (desk.folder / "again").read_bytes() == (desk.folder / name).read_bytes(), name

    desk.open(READ)
    desk.edit(READ, 2, 16, "two.pdf")
    desk.edit(READ, 2, 41, "2")
    desk.run(READ, 2)
    is_figure("two.pdf", "bhld2.res,start=-1544,xsc=0.02,ysc=1,samples=100000")
    desk.edit(READ, 0, 18, "bell.spe")
    desk.run(READ, 0)
    desk.close(READ)
    desk.move_pointer(300, 100)
    desk.settle()
    desk.key(ord("d"))
    desk.drag((132, 60), (300, 60), (437, 60))  # a closer look at what lies between these columns
    desk.open(PRINT)
    desk.edit(PRINT, 0, 24, "one.svg")
    desk.run(PRINT, 0)
    is_figure("one.svg", f"bell.spe,from=250,xsc={763 / 762.5},db")
    desk.close(PRINT)
    editor = Editor(desk, 400, 500)
    editor.draw(FRAME, (100, 200), (300, 300))
    editor.draw(TELEPHONE, (120, 220), (140, 250))
    editor.use_files(SAVE)
    editor.choose(FILES)
    desk.edit(DIAGRAM_FILES, PRINT_OUT, 26, "net.png")
    desk.run_by_double_press(DIAGRAM_FILES, PRINT_OUT)
    is_figure("net.png", "figure.vob")
    desk.finish()
