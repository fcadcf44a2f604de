"""The preview program opens the launcher's screen with the developer panel and simulated game actions; the launcher
knows no way there."""

import subprocess
import unittest

from screen import SIZE, Screen, is_like, started, wait_until
from support import BIN

TITLE = "Velorinth Launcher for Quake II"

# The window fills the display. Around the client area: what the title bar and the frame take, in pixels at 96 dpi.
LEFT, TOP, RIM, PADDING, CANVAS_WIDTH = 9, 37, 9, 12, 820
PLAIN_HEIGHT, PANEL_HEIGHT = 770, 1048

# Colours, and places on the canvas beside the words of a button.
ENABLED, ACCENT, BAND = 0x272E33, 0x72D6C8, 0x20272B
NO_GAME, GAME_EXIT, RESET = (474, 799), (583, 799), (693, 799)
THUMB, TRACK_END = (590, 841), (648, 841)
LAUNCH, FIND_BUTTON, KVR_CARD, KVR_DOT = (592, 733), (44, 343), (600, 510), (443, 450)
BAND_PLACE = (400, 750)

# Seconds until a first picture on a busy machine.
START = 40


class Preview(Screen):
    def setUp(self):
        super().setUp()
        self.state = self.scratch / "state"
        self.environment["LOCALAPPDATA"] = str(self.state)

    def open(self, program, *words, height):
        """Starts a program that shows the screen, and waits for its band of colour above the launch button."""
        self.height = height
        self.process = started([BIN / program, *words], env=self.environment)
        self.addCleanup(self.process.wait)
        self.addCleanup(self.process.kill)
        wait_until(lambda: is_like(self.at(BAND_PLACE), BAND), f"{program} shows the screen", START)

    def place(self, point):
        width, height = SIZE[0] - 2 * RIM, SIZE[1] - TOP - RIM
        scale = min((width - 2 * PADDING) / CANVAS_WIDTH, (height - 2 * PADDING) / self.height)
        return (round(LEFT + (width - CANVAS_WIDTH * scale) / 2 + point[0] * scale),
                round(TOP + (height - self.height * scale) / 2 + point[1] * scale))

    def at(self, point):
        return self.colour(*self.place(point))

    def use(self, point):
        self.click(*self.place(point))
        self.move(2, SIZE[1] - 2)

    def shows(self, point, colour, what):
        wait_until(lambda: is_like(self.at(point), colour), what)

    def shows_not(self, point, colour, what):
        wait_until(lambda: not is_like(self.at(point), colour), what)


class DeveloperPanel(Preview):
    def test_the_panel_walks_through_the_states_without_a_game(self):
        self.open("launcher_preview", height=PANEL_HEIGHT)
        self.picture(self.scratch / "preview.ppm", {"x": 0, "y": 0, "width": SIZE[0], "height": SIZE[1]})
        for button in (NO_GAME, RESET):
            self.shows(button, ENABLED, "a button of the panel")
        self.shows(THUMB, ACCENT, "the thumb of the opacity at 85 percent")
        self.shows(LAUNCH, ACCENT, "an installation that is there at once")
        self.shows_not(GAME_EXIT, ENABLED, "no game to end")

        self.use(LAUNCH)
        self.shows(GAME_EXIT, ENABLED, "a game that runs")
        self.shows_not(LAUNCH, ACCENT, "no second game")
        self.use(GAME_EXIT)
        self.shows(LAUNCH, ACCENT, "the game's end")
        self.use(NO_GAME)
        self.shows_not(LAUNCH, ACCENT, "nothing to launch")
        self.use(FIND_BUTTON)
        self.shows(LAUNCH, ACCENT, "an installation that is found")
        self.use(KVR_CARD)
        self.shows(KVR_DOT, ACCENT, "the other renderer")
        self.use(RESET)
        self.shows_not(KVR_DOT, ACCENT, "the first state again")

        self.use(TRACK_END)
        self.shows(TRACK_END, ACCENT, "the thumb at its end")
        self.assertFalse(self.state.exists(), "nothing is saved")
        self.assertIsNone(self.process.poll())

    def test_the_panel_alone_comes_with_the_launchers_own_actions(self):
        self.open("launcher_preview", "--developer", height=PANEL_HEIGHT)
        self.shows(RESET, ENABLED, "a button of the panel")
        self.shows_not(LAUNCH, ACCENT, "no installation on a first start")
        wait_until(lambda: (self.state / "VelorinthLauncher/launcher.ini").exists(), "the settings are saved")

    def test_simulated_actions_come_without_the_panel_too(self):
        self.open("launcher_preview", "--simulated", height=PLAIN_HEIGHT)
        self.shows(LAUNCH, ACCENT, "an installation that is there at once")
        self.assertFalse(self.state.exists(), "nothing is saved")


class TheLauncher(Preview):
    def test_no_word_on_its_command_line_reaches_either(self):
        for word in ("--developer", "--simulated", "--smoke", "--smoke-test", "/developer"):
            self.environment[word.strip("-/").upper()] = "1"
        self.open("velorinth-launcher", "--developer", "--simulated", "--smoke", "--smoke-test", "/developer",
                  height=PLAIN_HEIGHT)
        # Neither the panel, which would make the canvas higher, nor the simulated installation; and it saves.
        self.shows(FIND_BUTTON, ENABLED, "the screen without the panel")
        self.shows_not(LAUNCH, ACCENT, "no installation on a first start")
        wait_until(lambda: (self.state / "VelorinthLauncher/launcher.ini").exists(), "the settings are saved")


class CommandLine(unittest.TestCase):
    def run_preview(self, *words):
        return subprocess.run([BIN / "launcher_preview", *words], text=True, capture_output=True, timeout=20,
                              env={"PATH": "/usr/bin:/bin"}, check=False)

    def test_help_names_the_options_and_opens_nothing(self):
        done = self.run_preview("--help")
        self.assertEqual(done.returncode, 0)
        for option in ("--developer", "--simulated"):
            self.assertIn(option, done.stdout)

    def test_unknown_words_are_refused(self):
        done = self.run_preview("--real")
        self.assertEqual(done.returncode, 2)
        self.assertIn('unknown option: "--real"', done.stderr)


if __name__ == "__main__":
    unittest.main()
