"""Presses on and around the icons, the ways out, and what other windows do to ours."""

from pictures import same
from workbench import PRINT, WRITE
from Xlib import X

EXIT = (22, 575)


def test_the_exit_icon_ends_the_program_with_menus_open(desk):
    desk.start()
    desk.open(WRITE)
    desk.open(PRINT)
    desk.click(*EXIT)
    assert desk.process.exit_status() == 1


def test_what_is_no_press_on_an_icon_does_nothing(desk):
    desk.start()
    picture = desk.screenshot()
    for x, y in ((1, 575), (44, 575), (22, 554), (22, 597)):
        desk.tap(x, y)
        assert same(desk.screenshot(), picture), "the border is not part of it"
    for wheel in (4, 5, 6, 7):
        desk.tap(*EXIT, wheel)
        assert same(desk.screenshot(), picture), wheel
    desk.drag((400, 580), EXIT)
    assert same(desk.screenshot(), picture)
    desk.click(2, 555)
    assert desk.process.exit_status() == 1, "the first pixel inside"


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
