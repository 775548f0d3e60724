"""What a person sees when the program has started, beside what the guide's pictures show."""

import pytest
from pictures import CYAN, RED, WHITE, cut, drawn_icon, icon_area, same
from workbench import AS_NOBODY

ICONS = ("texit", "plicon", "print", "readic", "writeic", "compile", "start")


def test_shows_seven_icons_and_three_signals(desk):
    before = [(path, path.stat().st_mtime_ns) for path in sorted(desk.folder.iterdir())]
    desk.start()
    picture = desk.screenshot()
    assert picture.shape == (600, 800)
    for i, name in enumerate(ICONS):
        assert same(cut(picture, *icon_area(i)), drawn_icon(name)), name
    said = "plot_curve largest absolute value is "
    assert f"{said}0.859985\n{said}0.859985\n{said}1.000000\n" in desk.said()
    # The working directory is as it was.
    assert before == [(path, path.stat().st_mtime_ns) for path in sorted(desk.folder.iterdir())]


def test_without_a_signal_it_says_so_and_leaves_the_panes_empty(desk):
    (desk.folder / "bhld2.res").unlink()
    desk.start()
    picture = desk.screenshot()
    assert (cut(picture, 96, 3, 136, 10) == CYAN).sum() > 150, "Cannot find files"
    for top, end in ((14, 170), (176, 346), (352, 522)):
        assert (picture[top:end] == WHITE).all(), top
    assert same(cut(picture, *icon_area(0)), drawn_icon(ICONS[0]))


DIAGRAM = "torve-diagram 1\nvline x1=100 y1=300 x2=300 y2=300\n"


@pytest.mark.parametrize(
    "named, shown, message",
    [
        (["bhld2.res"], [0], False),
        (["bhld1.res", "none.res", "compar3.res"], [0, 2], True),
        (["a.vob"], [], False),
        (["a.vob", "none.spe"], [], True),
        (["none.vob"], [], True),
    ],
)
def test_files_that_are_named_are_shown_in_place_of_the_sample_signals(desk, named, shown, message):
    (desk.folder / "a.vob").write_text(DIAGRAM)
    desk.program = [*desk.program, *named]
    desk.start()
    picture = desk.screenshot()
    assert (picture[232:240, 190:210] == RED).all() == message
    desk.key(ord(" "))  # a message goes with a key, which does nothing else
    picture = desk.screenshot()
    assert (picture[300, 100:300] != WHITE).all() == ("a.vob" in named)
    picture[300] = WHITE
    for i in range(3):
        assert (picture[176 * i : 176 * i + 168] != WHITE).any() == (i in shown), i
    assert desk.said().count("largest absolute value") == len(shown)


@pytest.mark.parametrize("font", ["font7.dat", "font6.dat"])
def test_without_a_font_it_gives_up_with_a_message(desk, font):
    (desk.use_copied_installation() / "font" / font).unlink()
    desk.launch()
    assert desk.process.exit_status() == 1
    assert "problems in loading font\n" in desk.said()


def test_gives_up_on_a_screen_of_too_few_colours(desk):
    desk.launch(screen="800x600x16")
    assert desk.process.exit_status() == 255
    assert desk.said() == "X not started\n"


def test_read_only_data_is_enough_and_a_missing_icon_leaves_a_gap_that_is_never_hit(desk):
    share = desk.use_copied_installation()
    (share / "fn2" / "texit.fn2").unlink()
    for path in share.rglob("*.*"):
        path.chmod(0o444)
    desk.program = [*AS_NOBODY, *desk.program]
    desk.start()
    picture = desk.screenshot()
    assert (cut(picture, *icon_area(0)) == WHITE).all()
    for i in range(1, len(ICONS)):
        assert same(cut(picture, *icon_area(i)), drawn_icon(ICONS[i])), "keeps its place"
    desk.tap(22, 575)
    assert same(desk.screenshot(), picture)
