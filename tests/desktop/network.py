"""The diagram editor, used as a person does, and the network of the guide."""

from workbench import BOX, Menu

# Lines of the palette, of the menu behind "files", of a picked figure's menu.
POINTER, NODE, NODE_B, NODE_C, QUEUE, TELEPHONE, FRAME, LINE, ARROW, UNDO, FILES, LEAVE, ARC, TEXT = range(14)
SAVE, READ_BACK, PRINT_OUT, NEW = range(4)
CUT, COPY, COLOUR = range(3)

PALETTE, DIAGRAM_FILES = Menu(680, 0, 120), Menu(200, 0, 480)

# Where the network's parts are.
CPU, DISK, FRAME_CORNER = (300, 140), (500, 140), (30, 70)
NETWORK = (
    (FRAME, FRAME_CORNER, (640, 420)),
    (TELEPHONE, (80, 170), (100, 200)),
    (QUEUE, (205, 150), (205, 240)),
    (NODE, CPU, (300, 330)),
    (NODE, DISK, (500, 330)),
    (ARC, (101, 193), (199, 193)),
    (ARC, (206, 193), (299, 193)),
    (ARC, (301, 210), (499, 210)),
    (ARC, (499, 270), (301, 270)),
    (ARC, (301, 310), (400, 480)),
)
WAY_BACK = (400, 270)  # the middle of the arc from the disk
WAY_OUT = (301, 310)  # the first point of the last arc
TEXTS = (((80, 175), "users"), ((196, 139), "jobs"))


class Editor:
    def __init__(self, desk, x, y):
        """Opens the palette by a press on an empty place."""
        self.desk = desk
        desk.tap(x, y, 3)

    def choose(self, line):
        self.desk.run_by_double_press(PALETTE, line)

    def use_files(self, line):
        self.choose(FILES)
        self.desk.run_by_double_press(DIAGRAM_FILES, line)
        self.desk.close(DIAGRAM_FILES)

    def draw(self, tool, begin, end):
        """Arms a tool and drags."""
        self.choose(tool)
        (x1, y1), (x2, y2) = begin, end
        self.desk.drag(*((x1 + (x2 - x1) * i // 4, y1 + (y2 - y1) * i // 4) for i in range(5)))

    def open_menu(self, x, y, width):
        """Of the figure that is picked there."""
        self.choose(POINTER)
        self.desk.tap(x, y, 3)
        return Menu(x & ~7, y, width)

    def open_properties(self, head):
        """Of the figure whose first point this is."""
        return self.open_menu(head[0], head[1] + 1, 240)

    def draw_network(self):
        """Draws, names and colours it, in an empty area."""
        for stroke in NETWORK:
            self.draw(*stroke)
        self.choose(TEXT)
        for place, text in TEXTS:
            self.desk.tap(*place)
            for letter in map(ord, text):
                self.desk.key(letter)
        for head, fields in (
            (WAY_OUT, ((0, 12, "0.25"),)),
            (CPU, ((0, 8, "2"), (4, 5, "cpu"))),
            (DISK, ((0, 8, "1"), (4, 5, "disk"), (5, 13, "20"))),
            (FRAME_CORNER, ((4, 5, "web server"),)),
        ):
            menu = self.open_properties(head)
            for field in fields:
                self.desk.edit(menu, *field)
            if head == CPU:
                self.desk.run_by_double_press(menu, 1)  # from FIFO to the next word
            self.desk.tap(menu.x + BOX, menu.y + BOX)  # applies it
        menu = self.open_menu(*WAY_BACK, 80)
        self.desk.edit(menu, COLOUR, 6, "4")
        self.desk.run_by_double_press(menu, COLOUR)
        self.choose(LEAVE)
