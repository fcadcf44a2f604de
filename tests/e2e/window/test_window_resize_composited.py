"""A live resize where the manager composes the screen: no frame of a wrong size is ever seen."""

import itertools
import os
import signal
import unittest
from pathlib import Path

import test_window_resize
from screen import MIDDLE_BUTTON, SIZE, SUPER, wait_until
from test_window_resize import PLACE, STEPS

# Pixels by which a shadow's edge may seem to lie elsewhere: how dark it is differs with what it falls on.
SHADE = 1


class Watch:
    """What was seen on the screen, of which nothing is known but its pixels."""

    def __init__(self, shadow):
        self.shadow = shadow
        self.whole = 0
        self.behind = 0
        self.wrong = []

    def see(self, sight):
        fault = sight["fault"] or self.fault(sight)
        if fault:
            self.behind += 1
            self.wrong.append((fault, sight))
        else:
            self.whole += 1
        return not fault

    def fault(self, sight):
        """The shadow is that of the window, which is to be as large as its frame. An edge of the screen cuts it off."""
        for seen, usual, room in zip(shadow_of(sight), self.shadow, room_around(sight)):
            if abs(seen - min(usual, room)) > SHADE:
                return "a shadow of another size"
        return None


def shadow_of(sight):
    """How far the shadow reaches at the left, top, right and bottom."""
    return tuple(inner - outer for inner, outer in zip(room_around(sight), room_around(sight["shaded"])))


def room_around(place):
    """What lies between a place and the edges of the screen."""
    return (place["x"], place["y"], SIZE[0] - place["x"] - place["width"], SIZE[1] - place["y"] - place["height"])


class CompositedResize(test_window_resize.Resize):
    """The same drags. A look takes in all of the screen, and none may see anything but one whole frame."""

    MANAGER = "mutter"
    HANDLE = SUPER, MIDDLE_BUTTON
    # So near to the corner that the window stays within the screen.
    INSIDE = PLACE[2] - 4, PLACE[3] - 4
    INSIDE_STEPS = STEPS

    client = "plain"

    def setUp(self):
        super().setUp()
        self.watch = Watch(shadow_of(self.sight()))
        self.assertGreater(min(self.watch.shadow), 3, "a shadow tells how large the window is")

    def start_mutter(self):
        super().start_mutter()
        self.user.ask("empty")

    def open(self, *words):
        self.client = "drawn" if "animated" in words else "plain"
        # Windows come into sight slowly, and go out of it so.
        wait_until(lambda: self.sight()["fault"] == "no frame", "the former window is gone")
        number, window = super().open(*words)
        wait_until(lambda: "_NET_WM_STATE_FOCUSED" in self.states(window), "the window has the focus")
        wait_until(lambda: not self.sight()["fault"], "the window is seen whole")
        return number, window

    def sight(self):
        folder = os.environ.get("VELORINTH_KEEP_PICTURES", self.scratch)
        return self.user.ask("frame", Path(folder) / "wrong_frame.ppm", self.client)

    def see(self):
        sight = self.sight()
        return sight, self.watch.see(sight)

    def finish(self, name, frames):
        super().finish(name, frames)
        self.assertGreaterEqual(self.watch.whole, STEPS)
        self.assertGreaterEqual(len(self.sizes), STEPS // 10)

    def test_a_window_that_hangs_is_seen_in_the_wrong_size(self):
        """Once the manager has waited for it for long enough. So the looks are not blind, and the manager does wait."""
        corner = PLACE[0] + PLACE[2] - 4, PLACE[1] + PLACE[3] - 4
        self.press(*corner)
        far = itertools.cycle((20, 21))

        def is_resized():
            # The manager may have taken over the pointer only after it had moved.
            self.move(corner[0] + next(far), corner[1] + 20)
            return self.see()[0]["width"] > PLACE[2]

        wait_until(is_resized, "the manager resizes the window", 20)
        self.stop_subject()
        self.move(corner[0] + 120, corner[1] + 120)
        wait_until(lambda: self.where(self.window)["width"] > PLACE[2] + 100, "the manager resizes it once more", 20)
        self.assertEqual(self.watch.wrong[:1], [])
        wait_until(lambda: not self.see()[1], "the manager waits no longer", 20)
        self.subject.process.send_signal(signal.SIGCONT)
        wait_until(lambda: self.see()[1], "the window is whole again", 20)
        self.release()


if __name__ == "__main__":
    unittest.main()
