"""The way out, and what other windows do to ours."""

import struct
import subprocess

import pytest
from pictures import same
from workbench import PRINT, READ, WRITE, Workbench
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


def cover(desk, *area):
    """Another window lies over ours for a while."""
    picture = desk.screenshot()
    other = desk.root.create_window(*area, 0, X.CopyFromParent, background_pixel=9)
    other.map()
    desk.settle()
    assert not same(desk.screenshot(), picture)
    other.destroy()
    desk.settle()
    assert same(desk.screenshot(), picture)


def test_shows_the_same_after_it_was_covered_and_moved(desk):
    desk.start()
    picture = desk.screenshot()
    cover(desk, 0, 0, 1024, 768)
    cover(desk, 101, 33, 309, 477)
    for x, y in ((-300, -200), (150, 90)):
        desk.window.configure(x=x, y=y)
        desk.settle()
    assert same(desk.screenshot(), picture)
    desk.click(*EXIT)
    assert desk.process.exit_status() == 1, "presses count from the window's corner"


@pytest.mark.parametrize("end", [Workbench.finish, lambda desk: desk.server.kill()])
def test_the_window_is_served_while_an_answer_is_awaited(desk, end):
    listed = struct.pack("<4s5I20s2h", b"dns.", 44, 4, 3, 44100, 1, b"", 500, 250)
    (desk.folder / "bchk1.res").write_bytes(listed)
    desk.start(stdin=subprocess.PIPE)
    desk.open(READ)
    desk.run(READ, 1)
    assert "want to skip the header block" in desk.said()
    cover(desk, 101, 33, 309, 477)
    desk.process.child.stdin.write(b"y")
    desk.process.child.stdin.flush()
    while " 500\n" not in desk.said():
        desk.settle()
    assert " 250\n" not in desk.said(), "the next answer"
    end(desk)
    assert desk.process.exit_status() == 1
