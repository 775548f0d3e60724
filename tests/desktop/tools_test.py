"""Icons and the menus behind them."""

import numpy as np
from pictures import DATA, WHITE, cut, icon_area, same
from workbench import CORRELATE, DRAG, ESCAPE, PLOT, PRINT, READ, RETURN, SPECTRUM, WRITE
from Xlib import X

STRIP = 320, 589, 480, 11


def test_an_icon_opens_one_menu_however_it_is_pressed(desk):
    desk.start()
    canvas = desk.screenshot()
    for menu in (PLOT, PRINT, READ, WRITE, CORRELATE, SPECTRUM):
        x, y, size, _ = icon_area(menu.icon)
        trembling = ((x + size // 2 + d, y + size // 2 - d) for d in (0, 1, 3, 0, 2))
        desk.drag(*trembling)
        columns = np.flatnonzero((desk.screenshot() != canvas).any(axis=0))
        assert (columns[0], columns[-1]) == (menu.x, menu.x + menu.width - 1)
        if menu == PLOT:
            desk.edit(menu, 1, 23, "7")
            edited = desk.screenshot()
            desk.open(menu)
            assert same(desk.screenshot(), edited), "pressed again"
        desk.close(menu)
        assert same(desk.screenshot(), canvas), "one menu, not two"


def test_a_taller_font_of_ones_own_keeps_fields_on_their_lines(desk):
    font = (DATA / "font" / "font7.dat").read_bytes()
    rows, count = font[:2]
    glyphs = (font[2 + rows * i : 2 + rows * (i + 1)] for i in range(count))
    taller = bytes((15, count)) + b"".join(glyph.ljust(15, b"\0") for glyph in glyphs)
    (desk.folder / "font7.dat").write_bytes(taller)
    desk.start()
    desk.open(READ)
    # The menu has room for four lines of 16 rows and ends where the canvas does.
    x, y = READ.x + 16 + 8 * 16 + 4, 600 - 8 - 16 - 8
    desk.tap(x, y)
    for key in (*map(ord, "my"), RETURN):
        desk.key(key)
    desk.drag((READ.x + 20, y), (READ.x + 20 + DRAG, y))
    assert (desk.folder / "myfigure.gif").exists()


def test_a_long_computation_says_how_far_it_is_and_escape_cancels_it(desk):
    # A value this large makes a filter take long, and a spectrum not.
    lines = [f"{i} 0.5\n" for i in range(14000)]
    lines[7000] = f"7000 1{'0' * 38}\n"
    (desk.folder / "compar3.res").write_text("".join(lines))
    (desk.folder / "rest.res").write_text("old")
    desk.start()
    desk.open(SPECTRUM)
    desk.run(SPECTRUM, 1)
    x, y = SPECTRUM.line_at(0, 1)
    desk.move_pointer(x, y)
    desk.fake(X.ButtonPress, 1)
    desk.settle()
    before = desk.screenshot()
    desk.move_pointer(x + DRAG, y)
    desk.await_picture(lambda picture: (cut(picture, *STRIP) != WHITE).any())
    other = desk.root.create_window(0, 0, 700, 500, 0, X.CopyFromParent, background_pixel=9)
    other.map()
    other.destroy()
    desk.await_picture(lambda picture: same(picture[:500], before[:500]))
    files = {path.name for path in desk.folder.iterdir()}
    assert "cancelled" not in desk.said()
    desk.strike(ESCAPE)
    desk.fake(X.ButtonRelease, 1)
    desk.settle()
    assert desk.said().endswith("\ncancelled\n")
    assert (cut(desk.screenshot(), *STRIP) != WHITE).any()
    assert (desk.folder / "rest.res").read_text() == "old"
    assert {path.name for path in desk.folder.iterdir()} <= files
    desk.run_by_double_press(SPECTRUM, 2)
    assert "cancelled\ngoing to filter_spectrum" in desk.said()
    assert (desk.folder / "mid.res").exists()
