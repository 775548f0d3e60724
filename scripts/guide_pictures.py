#!/usr/bin/python3 -B
"""guide_pictures.py FOLDER: the pictures of the guide, a session with each tool, photographed.

scripts/screenshots runs it. The program is driven in the ways of the tests of the desktop.
"""

import pathlib
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "desktop"))

from network import CPU, DIAGRAM_FILES, FILES, LEAVE, PRINT_OUT, Editor
from pictures import PROGRAM, cut, write_ppm
from workbench import CORRELATE, PLOT, PRINT, READ, SPECTRUM, WRITE, Workbench

PICTURES = pathlib.Path(sys.argv[1])


def photograph(name, area=(0, 0, 800, 600)):
    write_ppm(cut(desk.screenshot(), *area), PICTURES / f"{name}.ppm")


def photograph_menu(name, menu):
    photograph(name, (menu.x, menu.y, menu.width, 68))


with Workbench().start() as desk:
    photograph("start")
    photograph("icons", (0, 550, 318, 50))
    desk.open(PLOT)
    photograph_menu("plot-menu", PLOT)
    for column, text in ((33, "0.5"), (23, "1"), (12, "8800")):
        desk.edit(PLOT, 0, column, text)
    photograph_menu("edited", PLOT)
    desk.run(PLOT, 0)
    desk.edit(PLOT, 1, 12, "8800")
    desk.run(PLOT, 1)
    photograph("plot")

with Workbench().start() as desk:
    desk.open(PLOT)
    for field in ((0, 33, "0.02"), (0, 23, "1"), (2, 12, "all"), (3, 27, "1000")):
        desk.edit(PLOT, *field)
    desk.run(PLOT, 3)
    photograph("match")

with Workbench().start() as desk:
    desk.open(WRITE)
    photograph_menu("write-menu", WRITE)
    desk.close(WRITE)
    desk.open(PRINT)
    photograph_menu("print-menu", PRINT)
    desk.run(PRINT, 0)
    desk.close(PRINT)
    desk.open(READ)
    photograph_menu("read-menu", READ)
    desk.run(READ, 2)
    shutil.copy(desk.folder / "plot1.eps", PICTURES / "print.eps")
    shutil.copy(desk.folder / "figure.gif", PICTURES)

with Workbench().start() as desk:
    desk.open(CORRELATE)
    photograph_menu("correlate-menu", CORRELATE)
    desk.run(CORRELATE, 1)
    desk.run(CORRELATE, 0)
    photograph("correlate")

with Workbench().start() as desk:
    desk.open(SPECTRUM)
    photograph_menu("spectrum-menu", SPECTRUM)
    desk.edit(SPECTRUM, 1, 47, "20000")
    desk.run(SPECTRUM, 1)
    desk.run(SPECTRUM, 2)
    desk.open(READ)
    desk.edit(READ, 0, 54, "2")
    desk.run(READ, 0)
    photograph("spectrum")

with Workbench().start() as desk:
    desk.move_pointer(224, 60)  # one stroke ...
    for _ in range(6):
        desk.tap(224, 60, button=4)
    desk.move_pointer(204, 40)
    desk.settle()
    desk.key(ord("m"))
    desk.move_pointer(432, 40)  # ... and a later one
    desk.settle()
    photograph("closer")
    desk.open(SPECTRUM)
    desk.edit(SPECTRUM, 1, 47, "20000")
    desk.run(SPECTRUM, 1)
    desk.close(SPECTRUM)
    desk.move_pointer(200, 420)
    desk.settle()
    desk.key(ord("d"))
    photograph("decibels", (0, 352, 800, 248))

with Workbench() as desk:
    subprocess.run(
        [PROGRAM.with_name("torve-batch"), "import", "bell.wav", "right.res", "2"],
        cwd=desk.folder,
        check=True,
        stdout=subprocess.DEVNULL,
    )
    desk.start()
    desk.open(READ)
    for pane, name in (("2", "right.res"), ("1", "bell.wav")):
        desk.edit(READ, 0, 54, pane)
        desk.edit(READ, 0, 18, name)
        desk.run(READ, 0)
    desk.close(READ)
    desk.open(CORRELATE)
    desk.edit(CORRELATE, 1, 29, "bell.res")
    desk.edit(CORRELATE, 1, 15, "right.res")
    desk.run(CORRELATE, 1)
    photograph("own")

with Workbench().remove_signals().start() as desk:  # a white sheet
    editor = Editor(desk, 400, 500)
    editor.draw_network()
    photograph("network")
    menu = editor.open_properties(CPU)
    photograph("node-menu", (menu.x - 40, menu.y - 40, menu.width + 80, 180))
    desk.close(menu)
    editor.choose(FILES)
    photograph("diagram-files", (DIAGRAM_FILES.x, 0, 600, 160))
    editor.choose(LEAVE)
    editor.use_files(PRINT_OUT)
    shutil.copy(desk.folder / "figure.eps", PICTURES / "network-eps.eps")
