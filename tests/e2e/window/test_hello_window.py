"""The toolkit's first example as it is seen: with and without a window manager, at two scales."""

import subprocess
import unittest

from screen import PATIENCE, SIZE, Screen, is_like, wait_until
from support import BIN

CARD, DISC, CARD_RIM = 0x293042, 0xFABD4C, 0x73B8F2


class HelloWindow(Screen):
    def open_hello(self):
        process = subprocess.Popen([BIN / "hello_window"], env=self.environment, stdin=subprocess.DEVNULL)
        self.addCleanup(process.wait, PATIENCE)
        self.addCleanup(process.kill)
        found = wait_until(self.windows_named_hello, "hello_window shows its window")
        self.assertEqual(len(found), 1)
        self.process = process
        return found[0]

    def windows_named_hello(self):
        return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Hello, window$"],
                              env=self.environment, text=True, capture_output=True, timeout=PATIENCE,
                              check=False).stdout.split()

    def check(self, scale):
        window = self.open_hello()
        place = self.where(window)
        self.assertEqual((place["width"], place["height"]), (480 * scale, 360 * scale))

        def at(x, y):
            """Colour at a place in units, from the window's corner."""
            return self.colour(place["x"] + int(x * scale), place["y"] + int(y * scale))

        # The scene's origin is where title bar, frame and inner border leave off.
        left, top = 8.5, 42.5
        disc = (left + 40 + 180, top + 40 + 110)
        try:
            wait_until(lambda: is_like(at(*disc), DISC), "the scene is painted", 20)
        finally:
            self.picture(self.scratch / f"{type(self).__name__}.ppm", place)
        self.assertTrue(is_like(at(left + 40 + 60, top + 40 + 60), CARD), "inside of the card")
        self.assertTrue(is_like(at(left + 40 + 180, top + 40), CARD_RIM), "the card's upper rim")
        self.assertTrue(is_like(at(left + 40 + 40, top + 40 + 220), CARD_RIM), "the card's lower rim")
        self.assertTrue(is_like(at(disc[0] + 43, disc[1]), DISC), "inside of the disc")
        self.assertTrue(is_like(at(disc[0] + 48, disc[1]), CARD), "between the disc and its ring")
        self.assertTrue(is_like(at(disc[0] + 54, disc[1]), DISC), "the ring around the disc")
        background = at(left + 20, top + 20)
        self.assertTrue(is_like(at(470, 350), background), "the flat interior goes on behind the card")
        self.assertFalse(is_like(background, CARD))
        # Inside the card's rectangle, outside its round corner.
        self.assertTrue(is_like(at(left + 41, top + 41), background), "the card's corners are round")
        # Around the window there is nothing of it.
        self.assertEqual(self.colour(place["x"] - 1, place["y"] + 50), 0x34495E)
        self.assertEqual(self.colour(place["x"] + place["width"], place["y"] + 50), 0x34495E)
        return window, place

    def close_with_button(self, place, scale):
        self.click(place["x"] + place["width"] - int(30 * scale), place["y"] + int(21 * scale))
        self.assertEqual(self.process.wait(PATIENCE), 0)


class Managed96(HelloWindow):
    def test_hello_window_with_a_manager_at_96_dpi(self):
        _, place = self.check(1)
        self.close_with_button(place, 1)


class Managed144(HelloWindow):
    DPI = 144

    def test_hello_window_with_a_manager_at_144_dpi(self):
        _, place = self.check(1.5)
        self.close_with_button(place, 1.5)


class Alone96(HelloWindow):
    MANAGER = None

    def test_hello_window_without_a_manager_at_96_dpi(self):
        _, place = self.check(1)
        self.assertEqual((place["x"], place["y"]), ((SIZE[0] - 480) // 2, (SIZE[1] - 360) // 2), "in the middle")
        self.close_with_button(place, 1)


class Alone144(HelloWindow):
    MANAGER = None
    DPI = 144

    def test_hello_window_without_a_manager_at_144_dpi(self):
        _, place = self.check(1.5)
        # A press on the card brings the disc there, in the scene's own units.
        target = place["x"] + int((8.5 + 40 + 80) * 1.5), place["y"] + int((42.5 + 40 + 120) * 1.5)
        self.click(*target)
        wait_until(lambda: is_like(self.colour(*target), DISC), "the disc follows the press", 20)
        self.close_with_button(place, 1.5)


if __name__ == "__main__":
    unittest.main()
