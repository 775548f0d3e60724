"""A queueing network is drawn, changed, kept, lost and read again."""

import json
import pathlib
import signal
import subprocess

import pytest
from network import (
    ARC, DIAGRAM_FILES, FILES, NODE, PALETTE, POINTER, PRINT_OUT, READ_BACK, SAVE, TELEPHONE, Editor,
)
from pictures import BLACK, cut, printed, same
from workbench import BOX, DELETE, ESCAPE, PROGRAM, Menu
from Xlib import X

BATCH = pathlib.Path(PROGRAM).with_name("torve-batch")
CONTROL = 0xFFE3


def drawing(desk):
    """What menus do not cover where they open."""
    return cut(desk.screenshot(), 0, 24, 680, 490)


def test_keeps_a_network(desk):
    desk.remove_signals()
    desk.start()
    editor = Editor(desk, 400, 500)
    editor.draw_network()
    network = drawing(desk)
    editor.use_files(SAVE)
    saved = (desk.folder / "figure.vob").read_text()
    status, diagram = model(desk)
    assert status == 0 and len(diagram["network"]["stations"]) == 3, "the frame is none"
    assert {f["name"] for f in diagram["figures"]} == {"", "users", "jobs", "cpu", "disk", "web server"}
    assert 'name="cpu"' in saved and "servers=2 exit_filter=0 ps_mode=3" in saved
    editor.use_files(PRINT_OUT)
    paper = printed(desk.folder / "figure.eps")
    assert paper.shape[1] == 700
    assert (paper == BLACK).sum() > 2000
    editor.draw(POINTER, (300, 235), (420, 330))  # moves the cpu
    moved = drawing(desk)
    assert not same(moved, network)
    desk.key(DELETE)
    desk.key(ESCAPE)
    left = drawing(desk)
    assert (left == BLACK).sum() < (moved == BLACK).sum(), "without what was in hand"
    desk.drag((500, 235), (510, 300), (520, 330))
    assert same(drawing(desk), left), "no tool is armed"
    editor.use_files(READ_BACK)
    desk.key(ESCAPE)  # and without handles
    assert same(drawing(desk), network)
    desk.finish()
    assert not (desk.folder / "figure.vob.bak").exists(), "all was saved"


def control(desk, letter):
    code = desk.display.keysym_to_keycode(CONTROL)
    desk.fake(X.KeyPress, code)
    desk.key(ord(letter))
    desk.fake(X.KeyRelease, code)
    desk.settle()


def model(desk):
    """What other programs get of the saved network."""
    words = [BATCH, "model", "--json", desk.folder / "figure.vob"]
    done = subprocess.run(words, capture_output=True, text=True)
    return done.returncode, json.loads(done.stdout)


def ends(diagram):
    """Where each end of an arc is, and where the figure that it holds on to says that it is."""
    figures = {figure["id"]: figure for figure in diagram["figures"]}
    for arc in (figure for figure in figures.values() if figure["kind"] == "arc"):
        for end, x, y in (("from", "x1", "y1"), ("to", "x2", "y2")):
            if hold := arc[end]:
                held = figures[hold["figure"]]
                place = (held[f"x{hold['x_of']}"] + hold["dx"], held[f"y{hold['y_of']}"] + hold["dy"])
                yield hold["figure"], (arc[x], arc[y]), place


def test_three_stations_with_feedback_take_25_presses(desk):
    desk.remove_signals()
    desk.start()
    presses = 0
    fake = desk.fake

    def counted(kind, *words, **places):
        nonlocal presses
        presses += kind == X.ButtonPress
        fake(kind, *words, **places)

    desk.fake = counted
    editor = Editor(desk, 400, 540)

    def choose(line):
        desk.run(PALETTE, line)

    choose(TELEPHONE)
    desk.tap(80, 200)
    choose(NODE)
    desk.drag((200, 140), (200, 200), (200, 260))
    choose(POINTER)
    desk.tap(200, 141, 3)
    desk.edit(Menu(200, 141, 240), 0, 8, "2")
    desk.tap(200 + BOX, 141 + BOX)  # applies it
    choose(POINTER)
    desk.tap(200, 200)
    for place in (400, 100), (400, 360):
        control(desk, "d")
        desk.tap(*place)
    choose(ARC)
    for begin, end in (
        ((82, 193), (199, 180)),  # from the telephone
        ((201, 180), (399, 80)),
        ((201, 220), (399, 380)),
        ((399, 130), (201, 200)),  # back
        ((399, 340), (201, 250)),
        ((401, 380), (600, 380)),  # and out
    ):
        desk.drag(begin, ((begin[0] + end[0]) // 2, begin[1]), end)
    editor.desk.run(PALETTE, FILES)
    desk.run(DIAGRAM_FILES, SAVE)
    assert presses <= 25
    status, before = model(desk)
    assert (status, before["findings"]) == (0, [])
    assert [len(before["network"][part]) for part in ("stations", "sources", "arcs", "sinks")] == [3, 1, 6, 1]
    assert all(figure["servers"] == 2 for figure in before["figures"] if figure["kind"] == "node")

    desk.close(DIAGRAM_FILES)
    title = desk.window.get_full_property(desk.display.intern_atom("_NET_WM_NAME"), X.AnyPropertyType)
    assert title.value == b"TORVE application"
    choose(POINTER)
    desk.drag((200, 200), (220, 300), (260, 440))
    title = desk.window.get_full_property(desk.display.intern_atom("_NET_WM_NAME"), X.AnyPropertyType)
    assert title.value == b"TORVE application *" and desk.window.get_wm_name() == "TORVE application"
    editor.use_files(SAVE)
    status, after = model(desk)
    assert status == 0 and after["network"]["arcs"] == before["network"]["arcs"]
    was, now = list(ends(before)), list(ends(after))
    assert all(place == held for _, place, held in was + now)
    shifts = {(b[1][0] - a[1][0], b[1][1] - a[1][1]) for a, b in zip(was, now)}
    assert shifts == {(0, 0), (60, 240)}, "what holds on to the station goes along"
    control(desk, "z")
    editor.use_files(SAVE)
    assert model(desk)[1] == before
    control(desk, "y")
    editor.use_files(SAVE)
    assert model(desk)[1] == after
    desk.finish()


def leave(desk):
    desk.click(22, 575)


def end_server(desk):
    desk.server.kill()


def interrupt(desk):
    desk.process.child.send_signal(signal.SIGINT)


def destroy_window(desk):
    desk.window.destroy()
    desk.display.sync()


@pytest.mark.parametrize("end", [leave, end_server, interrupt, destroy_window])
def test_an_end_takes_no_diagram_with_it(desk, end):
    desk.start()
    editor = Editor(desk, 600, 540)
    editor.draw(NODE, (200, 40), (200, 140))
    end(desk)
    assert desk.process.exit_status() == 1
    assert "diagram saved in figure.vob.bak" in desk.said()
    assert "node x1=200 y1=40 x2=200 y2=140" in (desk.folder / "figure.vob.bak").read_text()
