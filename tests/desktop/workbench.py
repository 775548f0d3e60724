"""The real program on an X server of its own, in a folder of its own, driven as a person would.

No test sleeps: after an input, settle() asks the window for a sign of life, which the program gives
when it has handled everything before and shows the result.
"""

import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time
from typing import NamedTuple

import numpy as np
from pictures import DATA, PROGRAM, icon_area, write_ppm
from Xlib import X, Xatom
from Xlib.display import Display
from Xlib.ext import xtest
from Xlib.protocol.event import ClientMessage

PATIENCE = 20  # seconds, for anything; nobody waits for them unless something is broken
SIGNALS = ("bhld1.res", "bhld2.res", "compar3.res")
EVIDENCE = PROGRAM.parents[1] / "tests" / "desktop"
# Root may write whatever the permissions say, this user may not.
AS_NOBODY = ["--reuid", "65534", "--regid", "65534", "--clear-groups"] if os.geteuid() == 0 else []
BACKSPACE, RETURN, ESCAPE, DELETE = 0xFF08, 0xFF0D, 0xFF1B, 0xFFFF
SHIFT, CONTROL, KEYPAD_PLUS = 0xFFE1, 0xFFE3, 0xFFAB

TEXT_INSET, BOX = 16, 5  # from a menu's corner to its text, and to the middle of a box
COLUMN, ROW = 8, 11
DRAG, LONGEST_DEFAULT = 12, 12  # pixels that make a press a drag; characters


class Menu(NamedTuple):
    """A menu where it opens, and its icon, counted from the left."""

    x: int
    y: int
    width: int
    icon: int = 0

    def line_at(self, line, column):
        """The middle of a character."""
        x = self.x + TEXT_INSET + COLUMN * column + COLUMN // 2
        return x, self.y + TEXT_INSET + ROW * line + ROW // 2


PLOT, PRINT, READ = Menu(400, 520, 392, 1), Menu(400, 520, 320, 2), Menu(240, 520, 496, 3)
WRITE, CORRELATE, SPECTRUM = Menu(400, 529, 384, 4), Menu(256, 520, 536, 5), Menu(320, 520, 456, 6)


def readable(*sources, limit=PATIENCE):
    return select.select(sources, [], [], limit)[0]


class Process:
    """A program that the kernel ends when the test itself is killed."""

    def __init__(self, words, **options):
        words = ["setpriv", "--pdeathsig", "KILL", *words]
        self.child = subprocess.Popen(words, **{"stdin": subprocess.DEVNULL} | options)
        self.ended = os.pidfd_open(self.child.pid)  # can be read when it has

    def exit_status(self, limit=PATIENCE):
        """Negative when a signal ended it; None when it still runs after the limit."""
        return self.child.wait() if readable(self.ended, limit=limit) else None

    def kill(self):
        self.child.kill()
        self.child.wait()


class Workbench:
    def __init__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="torve-desktop-"))
        self.home.chmod(0o755)
        self.folder = self.home / "work"
        shutil.copytree(DATA / "signals", self.folder)
        self.program = [PROGRAM]
        self.server = self.process = self.window = None
        self.pings = 0
        self.scale = 1  # window pixels for one of the picture

    def use_copied_installation(self):
        """Gives the program a copy of its installation; returns the copy's share/torve."""
        shutil.copytree(DATA, self.home / "share" / "torve")
        (self.home / "bin").mkdir()
        self.program = [shutil.copy(PROGRAM, self.home / "bin")]
        return self.home / "share" / "torve"

    def launch(self, screen="1024x768x24", resources="", **streams):
        """Starts the program without waiting for its window; resources as desktops set them."""
        words = ["Xvfb", "-displayfd", "1", "-screen", "0", screen, "-noreset", "-nolisten", "tcp"]
        self.server = Process(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        assert readable(self.server.child.stdout), "Xvfb does not start"
        name = f":{self.server.child.stdout.readline().decode().strip()}"
        self.display = Display(name)
        self.root = self.display.screen().root
        # New windows, and the answers to pings, are reported to the root window.
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        if resources:
            self.root.change_property(Xatom.RESOURCE_MANAGER, Xatom.STRING, 8, resources.encode())
        self.display.sync()
        options = streams | {"cwd": self.folder, "env": os.environ | {"DISPLAY": name}}
        with open(self.home / "output", "w") as output, open(self.home / "errors", "w") as errors:
            self.process = Process(self.program, stdout=output, stderr=errors, **options)

    def start(self, **options):
        """Starts the program and waits until it has drawn its window."""
        self.launch(**options)
        self.window = self.await_event(lambda event: event.type == X.MapNotify).window
        self.settle()
        return self

    def await_event(self, wanted):
        deadline = time.monotonic() + PATIENCE
        while True:
            while self.display.pending_events():
                event = self.display.next_event()
                if wanted(event):
                    return event
            left = max(0, deadline - time.monotonic())
            sources = readable(self.display, self.process.ended, limit=left)
            assert sources, "the program does not answer"
            assert self.display in sources or self.display.pending_events(), "the program has ended"

    def send(self, protocol, detail):
        data = (32, [self.display.intern_atom(protocol), detail, self.window.id, 0, 0])
        kind = self.display.intern_atom("WM_PROTOCOLS")
        self.window.send_event(ClientMessage(window=self.window, client_type=kind, data=data))
        self.display.flush()

    def settle(self):
        # Input through XTest is in the window's queue once the server has answered us.
        self.display.sync()
        self.pings += 1
        self.send("_NET_WM_PING", self.pings)
        self.await_event(lambda e: e.type == X.ClientMessage and e.data[1][1] == self.pings)

    def fake(self, kind, detail=0, x=0, y=0):
        xtest.fake_input(self.display, kind, detail, x=x, y=y)
        self.display.flush()

    def move_pointer(self, x, y):
        corner = self.root.translate_coords(self.window, 0, 0)
        middle = self.scale // 2
        x, y = (self.scale * at + middle for at in (x, y))
        self.fake(X.MotionNotify, x=corner.x + x, y=corner.y + y)

    def click(self, x, y, button=1):
        self.move_pointer(x, y)
        self.fake(X.ButtonPress, button)
        self.fake(X.ButtonRelease, button)

    def tap(self, x, y, button=1):
        """A click, and all that follows from it."""
        self.click(x, y, button)
        self.settle()

    def drag(self, start, *way, button=1):
        self.move_pointer(*start)
        self.fake(X.ButtonPress, button)
        for point in way:
            self.settle()
            self.move_pointer(*point)
        self.settle()
        self.fake(X.ButtonRelease, button)
        self.settle()

    def strike(self, keysym, *held):
        codes = [self.display.keysym_to_keycode(symbol) for symbol in (*held, keysym)]
        for code in codes:
            self.fake(X.KeyPress, code)
        for code in reversed(codes):
            self.fake(X.KeyRelease, code)

    def key(self, keysym, *held):
        """Every key waits until the one before was handled: the program drops keys typed ahead."""
        self.strike(keysym, *held)
        self.settle()

    def open(self, menu):
        x, y, _, height = icon_area(menu.icon)
        self.tap(x + 3, y + height // 2)

    def run(self, menu, line):
        """Runs a line: a press on its text, dragged to the right."""
        x, y = menu.line_at(line, 1)
        self.drag((x, y), (x + DRAG, y))

    def run_by_double_press(self, menu, line):
        self.tap(*menu.line_at(line, 1))
        self.tap(*menu.line_at(line, 1))

    def edit(self, menu, line, column, text):
        """Types over the field that begins at a column of a line."""
        self.tap(*menu.line_at(line, column))
        for keysym in [BACKSPACE] * LONGEST_DEFAULT + [*map(ord, text), RETURN]:
            self.key(keysym)

    def close(self, menu):
        self.tap(menu.x + menu.width - BOX, menu.y + BOX)

    def move(self, menu, x, y):
        self.drag((menu.x + BOX, menu.y + BOX), (x + BOX, y + BOX), button=3)
        return menu._replace(x=x, y=y)

    def screenshot(self):
        """What the screen shows in the area of the window."""
        place, size = self.root.translate_coords(self.window, 0, 0), self.window.get_geometry()
        area = (place.x, place.y, size.width, size.height)
        data = self.root.get_image(*area, X.ZPixmap, 0xFFFFFFFF).data
        return np.frombuffer(data, "<u4").reshape(area[3], area[2]) & 0xFFFFFF

    def await_picture(self, wanted):
        deadline = time.monotonic() + PATIENCE
        while not wanted(self.screenshot()):
            assert time.monotonic() < deadline, "is never shown"

    def said(self, stream="output"):
        return (self.home / stream).read_text(errors="replace")

    def running(self):
        """Whether there is a window to look at."""
        return self.window and self.process.exit_status(limit=0) is None

    def remove_signals(self):
        for name in SIGNALS:
            (self.folder / name).unlink()
        return self

    def shorten_signals(self):
        for name in SIGNALS:
            lines = (self.folder / name).read_text().splitlines(keepends=True)
            (self.folder / name).write_text("".join(lines[:12000]))
        return self

    def finish(self):
        """Whatever a session did, the program ends when asked and has reported no errors."""
        if self.running():
            self.send("WM_DELETE_WINDOW", X.CurrentTime)
        assert not self.window or self.process.exit_status() == 1
        assert self.said("errors") == ""

    def keep_evidence(self, name):
        if self.process:
            print(self.said() + self.said("errors"))
            EVIDENCE.mkdir(parents=True, exist_ok=True)
            (EVIDENCE / f"{name}.log").write_text(self.said() + self.said("errors"))
            if self.running():
                write_ppm(self.screenshot(), EVIDENCE / f"{name}.ppm")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in filter(None, (self.process, self.server)):
            process.kill()
        shutil.rmtree(self.home, ignore_errors=True)
