"""A player before the launcher: a desktop with a window manager, a pointer, the real launcher on it, the stand-in engine
under Wine. What the player sees is read from the launcher's tree of nodes."""

import json
import subprocess

from desktop import Desktop
from screen import Teller
from support import BIN, WineWorld, link_or_copy, wait_until
from test_launcher_scene import difference

TITLE = "Velorinth Launcher for Quake II"
GAME_TITLE = "Quake II (stand-in)"
CHOOSER_TITLE = "Select the classic Quake II folder containing quake2.exe"

NOTHING_FOUND = "No classic Quake II installation found. Use Browse for game."
NOT_THERE = "Quake II was not found in this folder (quake2.exe is missing)."
CHOOSING = "Choose your Quake II folder…"
CANCELLED = "Folder selection cancelled."
INSTALLING = "Installing the selected driver and starting Quake II…"
CLOSED = "Quake II closed."

# Upper left corners on the canvas, of the buttons without a word on them.
KVR2_CARD, KVR_CARD, RESOLUTION, FULLSCREEN = (37, 425), (421, 425), (37, 605), (432, 611)

# Seconds: for a reaction of the screen, for a program to come up, for the game under Wine.
REACTION, START, GAME = 15, 30, 60

FOREVER = 4294967295


class Launcher:
    """A launcher that runs, and the hand on it. Ends with its test."""

    def __init__(self, test, nodes_file, stderr=None, folder=None):
        """`folder`: where its program lies, unless that is the usual one of the test."""
        self.test = test
        self.nodes_file = nodes_file
        nodes_file.unlink(missing_ok=True)
        self.process = subprocess.Popen(
            [(folder or test.launcher) / "launcher_probe"], cwd=test.root, stdin=subprocess.DEVNULL, stderr=stderr,
            env={**test.environment, "VELORINTH_NODES": str(nodes_file)})
        test.addCleanup(self.process.wait)
        test.addCleanup(self.process.kill)
        self.window = test.window_named(TITLE, START, self.process.pid)
        wait_until(nodes_file.exists, "the launcher's first screen", START)

    def close(self):
        """By the button in the title bar."""
        self.activate()
        place = self.where()
        self.test.press(place["x"] + place["width"] - 30, place["y"] + 18)
        try:
            self.test.assertEqual(self.process.wait(START), 0)
        except subprocess.TimeoutExpired:
            self.test.fail(f"the launcher is still there {START} s after its close button was clicked")

    def activate(self):
        self.test.desktop.run("xdotool", "windowactivate", "--sync", self.window)

    def where(self):
        return self.test.user.ask("where", self.window)

    def nodes(self):
        return json.loads(self.nodes_file.read_text(encoding="utf-8"))["nodes"]

    def shows(self, flags, what, seconds=REACTION):
        """Waits until the whole screen is as it is to be in that state."""
        wrong = None

        def right():
            nonlocal wrong
            self.test.assertIsNone(self.process.poll(), "the launcher has ended")
            wrong = difference(self.nodes(), flags)
            return wrong is None

        try:
            wait_until(right, what, seconds)
        except AssertionError as failure:
            words = [node.get("text") or node.get("label") for node in self.nodes()]
            raise AssertionError(f"{what}: {failure}: {wrong}; on the screen: {list(filter(None, words))}") from None

    def click(self, what):
        """On the middle of a button, given by its label or its corner."""
        buttons = [node for node in self.nodes() if node["type"] == "Button"
                   and what in (node["label"], tuple(node["rect"][:2]))]
        self.test.assertEqual(len(buttons), 1, f"buttons {what}")
        left, top, right, bottom = buttons[0]["rect"]
        m11, _, _, m22, dx, dy = buttons[0]["worldTransform"]
        place = self.where()
        self.test.press(place["x"] + round((left + right) / 2 * m11 + dx),
                        place["y"] + round((top + bottom) / 2 * m22 + dy))


class LauncherTest(WineWorld):
    CHOOSER_OPENS_AT = None

    def setUp(self):
        super().setUp()
        self.desktop = self.make_desktop()
        self.addCleanup(self.desktop.close)
        for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "PATH"):
            self.environment[name] = self.desktop.environment[name]
        self.user = Teller("display_user", self.desktop.environment)
        self.addCleanup(self.user.end)
        link_or_copy(BIN / "launcher_probe", self.launcher / "launcher_probe")
        self.screen = None

    def make_desktop(self):
        # The launcher fills the screen, and its background is drawn by the processor: the smaller, the less it takes.
        return Desktop(dialogs_open_at=self.CHOOSER_OPENS_AT, size=(900, 800))

    # The one launcher that most tests have.

    def start_launcher(self, stderr=None):
        self.screen = Launcher(self, self.root / "nodes.json", stderr)

    def close_launcher(self):
        self.screen.close()

    def activate(self):
        self.screen.activate()

    def shows(self, flags, what, seconds=REACTION):
        self.screen.shows(flags, what, seconds)

    def click(self, what):
        self.screen.click(what)

    # What lies on the desktop.

    def windows(self, title, process=None):
        pattern = "^" + title.replace("(", "\\(").replace(")", "\\)") + "$"
        owner = ["--all", "--pid", process] if process else []
        return [int(line) for line in self.desktop.run("xdotool", "search", "--onlyvisible", *owner, "--name",
                                                       pattern).split() if line.isdigit()]

    def window_named(self, title, seconds, process=None):
        return wait_until(lambda: self.windows(title, process), f'a window "{title}"', seconds)[0]

    def press(self, x, y):
        self.user.ask("move", x, y)
        self.user.ask("press", 1)
        self.user.ask("release", 1)

    # What is kept.

    def settings(self):
        return self.console("settings", timeout=START).line

    def remember(self, *settings):
        self.assertEqual(self.console("settings", "--folder", self.game, *settings, timeout=START).status, 0)

    # The game.

    def end_game(self):
        """By the key that its window names."""
        window = self.window_named(GAME_TITLE, GAME)

        def ended():
            self.desktop.run("xdotool", "windowactivate", window, "key", "Escape")
            return not self.windows(GAME_TITLE)

        wait_until(ended, "the game's window goes", GAME)
