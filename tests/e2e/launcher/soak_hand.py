"""The hand on a launcher whose window is anywhere, in any size, and busy with anything: brings it back, and reads what it
shows."""

from typing import NamedTuple

from player import CHOOSER_TITLE, GAME, KVR2_CARD, REACTION, LauncherTest
from support import wait_until
from test_launcher_scene import MODES

# Where the window is for everything but storms and resizes; what it takes in memory depends on its size.
PLACE = (100, 60, 900, 900)


class Shown(NamedTuple):
    """What the screen says of the choices, and whether nothing is under way."""

    folder: str
    modern: bool
    fullscreen: bool
    mode: int
    menu: bool
    idle: bool

    @property
    def choices(self):
        return {"Folder": self.folder, "Modern": str(int(self.modern)), "Fullscreen": str(int(self.fullscreen)),
                "Mode": str(self.mode)}


def read_screen(nodes):
    texts = {tuple(node["rect"][:2]): node["text"] for node in nodes if node["type"] == "DecorationText"}
    buttons = {node["label"]: node for node in nodes if node["type"] == "Button"}
    choosable = [node for node in nodes if node["type"] == "Button" and tuple(node["rect"][:2]) == KVR2_CARD]
    return Shown(folder="" if texts[110, 246] == "No installation selected" else texts[110, 273],
                 modern=not any(label.startswith("Launch with KVR ") for label in buttons),
                 fullscreen=texts[432, 655] == "Use the entire screen.",
                 mode=MODES.index(texts[49, 609]),
                 menu=any(label.startswith("    ") for label in buttons),
                 idle=buttons["Find automatically"]["enabled"] and choosable[0]["enabled"])


def fit(width, height):
    """The canvas's transform in a window that isn't maximised, at 96 dots per inch."""
    across, down = max(width - 18, 1), max(height - 46, 1)
    padding = min(min(across, down) * 0.05, 12)
    scale = min((across - 2 * padding) / 820, (down - 2 * padding) / 770)
    return [scale, 0, 0, scale, 8 + (across - 820 * scale) / 2, 36 + (down - 770 * scale) / 2]


class SoakHand(LauncherTest):
    def arrange(self, *place):
        """Where the window lies and what is in it have followed when this returns."""
        self.user.ask("arrange", self.screen.window, *place)
        self.wait(lambda: self.is_at(place), f"the window is at {place}, and the screen fits it", REACTION)

    def is_at(self, place):
        transform = self.screen.nodes()[0]["worldTransform"]
        return (tuple(self.screen.where().values()) == place and
                all(abs(is_so - so) < 0.01 for is_so, so in zip(transform, fit(*place[2:]))))

    def bring_back(self, *place):
        """From wherever it has been dragged, minimised or maximised to."""

        def is_back():
            self.screen.activate()
            if self.is_maximised():
                where = self.screen.where()
                self.press(where["x"] + where["width"] - 90, where["y"] + 18)
                self.wait(lambda: not self.is_maximised(), "the window is restored", REACTION)
            self.user.ask("arrange", self.screen.window, *place)
            return self.is_at(place)

        self.wait(is_back, f"the window is back at {place}", REACTION)

    def come_to_rest(self):
        """The window back in its place and on top, and nothing under way."""

        def is_idle():
            if self.seen().idle:
                return True
            for dialog in self.windows(CHOOSER_TITLE):
                self.desktop.run("xdotool", "windowactivate", dialog, "key", "Escape")
            return False

        # Once the screen has followed to another size, all earlier input has reached it; once it has followed to one more,
        # what came of that shows, and the manager has done its part of it.
        self.bring_back(*PLACE[:2], PLACE[2] - 23, PLACE[3] - 11)
        self.bring_back(*PLACE)
        self.wait(is_idle, "what the storm has begun is over", GAME)
        self.bring_back(*PLACE)  # A game may have been before it.
        # To where nothing reacts to it.
        self.user.ask("move", PLACE[0] + PLACE[2] // 2, PLACE[1] + 20)

    def is_maximised(self):
        return any("MAXIMIZED" in state for state in self.user.ask("states", self.screen.window)["states"])

    def seen(self):
        return read_screen(self.screen.nodes())

    def text_at(self, x, y):
        return next(node["text"] for node in self.screen.nodes()
                    if node["type"] == "DecorationText" and tuple(node["rect"][:2]) == (x, y))

    def message(self):
        return self.text_at(540, 269)

    def status(self):
        return self.text_at(36, 363)

    # What goes on.

    def wait(self, condition, what, seconds):
        def alive_and_so():
            self.assert_alive()
            return condition()

        wait_until(alive_and_so, what, seconds)

    def assert_alive(self):
        self.assertIsNone(self.screen.process.poll(), "the launcher has ended")
