"""The way out, and what other windows do to ours."""

import functools
import struct
import subprocess

import numpy as np
import pytest
from pictures import cut, same
from workbench import CONTROL, KEYPAD_PLUS, PRINT, READ, SHIFT, WRITE, Workbench
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


def enlarged(picture, scale):
    return np.kron(picture, np.ones((scale, scale), int))


def look_around(desk, **options):
    """What a session shows: the start, a tool's menu, the same moved and edited."""
    desk.start(**options)
    yield desk.screenshot()
    desk.open(READ)
    yield desk.screenshot()
    desk.edit(desk.move(READ, 251, 101), 1, 16, "m")
    yield desk.screenshot()


@functools.cache
def plain_pictures():
    with Workbench() as desk:
        return list(look_around(desk))


@pytest.mark.parametrize(
    "scale, words, resources",
    [
        (2, "--scale 2", ""),
        (3, "--scale 3", "Xft.dpi:\t100\n"),
        (1, "", "Xft.dpi:\t143.9\n"),
        (1, "--scale 1", "Xft.dpi:\t144\n"),
        (2, "", "Xft.dpi:\t144\n"),
        (3, "", "Xft.antialias:\t1\nXft.dpi:\t1000\n"),  # what fits on the screen
    ],
)
def test_every_pixel_is_shown_as_a_square_and_pressed_as_one(desk, scale, words, resources):
    desk.program = [*desk.program, *words.split()]
    desk.scale = scale
    screen = {"screen": "2450x2000x24", "resources": resources}
    for shown, plain in zip(look_around(desk, **screen), plain_pictures()):
        assert same(shown, enlarged(plain, scale))
    width, height = 800 * scale, 600 * scale
    cover(desk, 31, 33, 309, 477)
    desk.window.configure(width=width + 40, height=height + 40)
    desk.settle()
    assert same(cut(desk.screenshot(), 0, 0, width, height), shown)
    desk.scale = 1
    for beside in ((2 * scale - 1, 555 * scale), (2 * scale, 555 * scale - 1)):
        desk.tap(*beside)
    desk.click(2 * scale, 555 * scale)  # the first window pixel that belongs to the icon
    assert desk.process.exit_status() == 1


def test_on_a_screen_that_is_too_small_pixels_are_not_enlarged(desk):
    desk.start(screen="640x480x24", resources="Xft.dpi:\t200\n")
    assert desk.window.get_geometry().width == 800


def pasted(desk, selection, target):
    """What another program gets of a selection; None when it cannot be had so."""
    atom = desk.display.intern_atom
    asker = desk.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
    asker.convert_selection(atom(selection), atom(target), atom("PASTED"), 4711)
    event = desk.await_event(lambda event: event.type == X.SelectionNotify)
    assert event.time == 4711, "by this the asker knows which request is answered"
    got = asker.get_full_property(event.property, X.AnyPropertyType) if event.property else None
    asker.destroy()
    return got and got.value


def test_a_line_is_read_copied_and_leaves_no_trace(desk):
    desk.start()
    before = desk.screenshot()
    desk.move_pointer(305, 92)
    desk.settle()
    reading = desk.screenshot()
    assert not same(reading, before)
    desk.key(SHIFT)  # is no key yet
    desk.settle()
    assert same(desk.screenshot(), reading)
    desk.key(ord("c"))
    line = b"1 bhld1.res sample 13650  309.524 ms  -0.002594"
    for selection in "PRIMARY", "CLIPBOARD":
        assert pasted(desk, selection, "UTF8_STRING") == line
        assert pasted(desk, selection, "STRING") is None
        assert len(pasted(desk, selection, "TARGETS")) == 2
    desk.fake(X.MotionNotify, x=1000, y=740)  # beside the window
    desk.settle()
    assert same(desk.screenshot(), before)


def test_control_with_plus_and_minus_changes_the_scale(desk):
    desk.start(screen="2450x1850x24")
    desk.open(READ)
    plain = desk.screenshot()
    plus, minus = (ord("="), CONTROL, SHIFT), (ord("-"), CONTROL)
    keys = (plus, 2), (plus, 3), (minus, 2), (minus, 1), (minus, 1), ((KEYPAD_PLUS, CONTROL), 2)
    for keys_held, scale in keys:
        desk.key(*keys_held)
        desk.scale = scale
        assert same(desk.screenshot(), enlarged(plain, scale)), scale
        desk.close(READ)
        desk.open(READ)
        assert same(desk.screenshot(), enlarged(plain, scale)), scale
