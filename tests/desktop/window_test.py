"""The way out, and what other windows do to ours."""

from pictures import same
from workbench import PRINT, WRITE
from Xlib import X

EXIT = (22, 575)


def test_the_exit_icon_ends_the_program_with_menus_open(desk):
    desk.start()
    desk.open(WRITE)
    desk.open(PRINT)
    for beside in ((1, 575), (44, 575), (22, 554), (22, 597)):
        desk.tap(*beside)
    desk.click(2, 555)  # the first pixel inside
    assert desk.process.exit_status() == 1


def test_shows_the_same_after_it_was_covered_and_moved(desk):
    desk.start()
    picture = desk.screenshot()
    for area in ((0, 0, 1024, 768), (101, 33, 309, 477)):
        other = desk.root.create_window(*area, 0, X.CopyFromParent, background_pixel=9)
        other.map()
        desk.settle()
        assert not same(desk.screenshot(), picture)
        other.destroy()
        desk.settle()
        assert same(desk.screenshot(), picture)
    for x, y in ((-300, -200), (150, 90)):
        desk.window.configure(x=x, y=y)
        desk.settle()
    assert same(desk.screenshot(), picture)
    desk.click(*EXIT)
    assert desk.process.exit_status() == 1, "presses count from the window's corner"
