"""Menus and plots: what a person sees after each line of the tools."""

import numpy as np
from pictures import BLACK, DATA, cut, icon_area, same
from workbench import CORRELATE, DRAG, PLOT, PRINT, READ, RETURN, SIGNALS, SPECTRUM, WRITE
from workbench import pane_area


def changed_panes(before, after):
    return [i for i in range(3) if not same(cut(before, *pane_area(i)), cut(after, *pane_area(i)))]


def test_an_icon_opens_one_menu_however_it_is_pressed(desk):
    desk.start()
    canvas = desk.screenshot()
    desk.open(PLOT)
    opened = desk.screenshot()
    assert not same(opened, canvas)
    desk.edit(PLOT, 1, 23, "7")
    edited = desk.screenshot()
    desk.open(PLOT)
    assert same(desk.screenshot(), edited), "pressed again"
    desk.close(PLOT)
    assert same(desk.screenshot(), canvas), "closed"

    x, y, size, _ = icon_area(PLOT.icon)
    desk.drag(*((x + size // 2 + tremble, y + size // 2 - tremble) for tremble in (0, 1, 3, 0, 2)))
    assert same(desk.screenshot(), opened), "with a tremble"
    desk.close(PLOT)
    assert same(desk.screenshot(), canvas), "one menu, not two"


def test_menus_leave_the_canvas_as_the_same_plots_without_menus(desk):
    for name in SIGNALS:
        desk.write_signal(name, desk.read_signal(name)[:12000])
    desk.start()
    canvas = desk.screenshot()
    # Each menu leaves the icons of those after it in sight.
    desk.open(SPECTRUM)
    desk.edit(SPECTRUM, 1, 47, "10000")
    desk.run(SPECTRUM, 1)
    desk.open(CORRELATE)
    desk.run(CORRELATE, 1)
    desk.open(WRITE)
    desk.edit(WRITE, 2, 4, "bhld1.res")
    desk.run(WRITE, 0)
    desk.open(PRINT)
    desk.run(PRINT, 0)
    desk.open(PLOT)
    desk.run(PLOT, 0)
    assert changed_panes(canvas, desk.screenshot()) == [0, 2]

    desk.open(READ)
    # Both menus lie over the first pane when it is drawn.
    reader, plots = desk.move(READ, 160, 40), desk.move(PLOT, 200, 150)
    for pane, name in ((1, SIGNALS[0]), (3, SIGNALS[2])):
        # From right to left: a field that is filled widens and moves what is right of it.
        desk.edit(reader, 0, 54, str(pane))
        desk.edit(reader, 0, 18, name)
        desk.run(reader, 0)
    for menu in (plots, reader, PRINT, WRITE, CORRELATE, SPECTRUM):
        desk.close(menu)
    assert same(desk.screenshot(), canvas)


def test_panes_are_drawn_with_the_settings_of_their_line(desk):
    for name in SIGNALS:
        desk.write_signal(name, np.ones(10000))
    desk.start()
    desk.open(PLOT)
    for line in range(3):
        before = desk.screenshot()
        desk.run(PLOT, line)
        assert changed_panes(before, desk.screenshot()) == [line]
    # A running sum over 44 ones.
    assert "value is 1.000000\nplot_curve largest absolute value is 44.000000\n" in desk.said()
    desk.edit(PLOT, 1, 23, "3")
    desk.edit(PLOT, 1, 42, "0.5")
    desk.run_by_double_press(PLOT, 1)
    assert "plot_curve largest absolute value is 3.000000\n" in desk.said()
    # Ones at half the half height of 79 above the zero row, which is row 75 of the pane.
    assert (desk.screenshot()[176 + 75 - 39, 40:796] == BLACK).all()


def test_a_match_fills_in_the_settings_and_draws_all_panes(desk):
    desk.start()
    desk.open(PLOT)
    desk.run(PLOT, 3)
    assert "sample too small\n" in desk.said(), "no samples were asked for"
    before = desk.screenshot()
    desk.edit(PLOT, 2, 12, "all")
    desk.edit(PLOT, 3, 27, "1000")
    desk.run(PLOT, 3)
    assert changed_panes(before, desk.screenshot()) == [0, 1, 2]
    assert desk.pane_shows(2, "compres.res")
    for line, start in enumerate(("0 ", "1544", "1544")):
        assert desk.shows(PLOT, line, 12, start)
    assert not desk.shows(PLOT, 0, 42, "1.0")
    assert len(desk.read_signal("compres.res")) > 80000


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
