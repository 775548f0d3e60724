"""A queueing network is drawn, changed, kept, lost and read again."""

import signal

import pytest
from network import NODE, POINTER, PRINT_OUT, READ_BACK, SAVE, Editor
from pictures import BLACK, cut, printed, same
from workbench import DELETE, ESCAPE


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
