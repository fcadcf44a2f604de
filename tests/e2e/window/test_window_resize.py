"""A live resize by the window manager: what is seen while it goes on, how small the window gets, how long it stalls."""

import random
import time
import unittest

from screen import ALT, RIGHT_BUTTON, RIM, RIM_WIDTH, SIZE, Subject, is_whole, wait_until

STEPS = 200
SEED = 20260
PLACE = (100, 100, 500, 400)

# Milliseconds. The machine that runs the tests may have two cores, both busy, and draws in software: what it does is
# printed, and only what no load explains fails.
STALL = 5000


class Watch:
    """What was seen of a window while its size changed."""

    def __init__(self):
        self.whole = 0
        self.behind = 0
        self.wrong = []

    def see(self, look):
        if is_whole(look):
            self.whole += 1
            return True
        self.behind += 1
        fault = self.fault(look)
        if fault:
            self.wrong.append((fault, look))
        return False

    @staticmethod
    def fault(look):
        """What is wrong with a picture of a window whose frame of the new size has not come yet: nothing, if it is the
        frame of another size, cut at most, with what lay there before around it."""
        for line, other, across in (("row", "column", "height"), ("column", "row", "width")):
            if colour_at(look[other], look[across] // 2) == RIM:
                continue  # the line runs along the outermost pixels of the former frame
            if any(colour == RIM and length > RIM_WIDTH for colour, length in look[line]):
                return f"black in the {line}"
        return None


def colour_at(runs, place):
    for colour, length in runs:
        if place < length:
            return colour
        place -= length
    return None


class Resize(Subject):
    HANDLE = ALT, RIGHT_BUTTON  # with which the manager resizes a window from anywhere in it
    INSIDE = 400, 300
    INSIDE_STEPS = STEPS // 2

    def setUp(self):
        super().setUp()
        self.number, self.window = self.open(*PLACE)
        self.random = random.Random(SEED)
        self.smallest = self.user.ask("minimum", self.window)
        self.watch = Watch()
        self.sizes = set()

    def see(self):
        """Looks once and remembers what was seen. What was seen, and whether that was a frame of the right size."""
        look = self.look(self.window)
        return look, self.watch.see(look)

    def step(self, x, y):
        """Moves the pointer and looks for as long as a frame lasts."""
        self.move(x, y)
        end = time.monotonic() + 0.016
        while True:
            look, _ = self.see()
            self.assertEqual(self.watch.wrong[:1], [])
            self.sizes.add((look["width"], look["height"]))
            self.assertGreaterEqual(look["width"], self.smallest["width"])
            self.assertGreaterEqual(look["height"], self.smallest["height"])
            if time.monotonic() > end:
                return

    def walk(self, start, steps):
        """A random walk of the pointer from a place on, over the whole screen, to where the window can't follow too."""
        x, y = start
        for _ in range(steps):
            x = min(max(x + self.random.randint(-90, 90), 5), SIZE[0] - 5)
            y = min(max(y + self.random.randint(-90, 90), 5), SIZE[1] - 5)
            self.step(x, y)
        return x, y

    def finish(self, name, frames):
        """All is whole at the end, and nothing was wrong on the way."""
        wait_until(lambda: self.see()[1], "the last frame", 20)
        times = [frame[0] for frame in frames]
        # On a machine that is busy beyond measure there may be a single frame.
        gaps = sorted(later - earlier for earlier, later in zip(times, times[1:])) or [0]
        looks = self.watch.whole + self.watch.behind
        block = self.subject.ask("block", self.number)["milliseconds"]
        print(f"{name}: {len(self.sizes)} sizes, {looks} looks, {100 * self.watch.whole / looks:.0f} percent whole, "
              f"{len(frames)} frames, gap between two: "
              f"median {gaps[len(gaps) // 2]:.0f} ms, longest {gaps[-1]:.0f} ms; "
              f"longest wait of the size loop {block:.0f} ms", flush=True)
        self.assertEqual(self.watch.wrong[:1], [])
        self.assertGreater(self.watch.whole, 0)
        self.assertGreater(len(self.sizes), len(frames) // 20)
        self.assertLess(gaps[-1], STALL)
        self.assertLess(block, STALL)

    def test_drag_at_the_corner_in_random_directions(self):
        self.subject.ask("frames", self.number)
        corner = PLACE[0] + PLACE[2] - 4, PLACE[1] + PLACE[3] - 4
        self.press(*corner)
        x, y = self.walk(corner, STEPS)
        # The frames of the size loop, which ends with the release.
        frames = self.subject.ask("frames", self.number)["frames"]
        self.release()
        self.finish("corner", frames)
        place = self.where(self.window)
        self.assertEqual((place["x"], place["y"]), PLACE[:2], "the other corner stays")

    def test_drag_far_inside_stops_at_the_smallest_size(self):
        corner = PLACE[0] + PLACE[2] - 4, PLACE[1] + PLACE[3] - 4
        self.press(*corner)
        for at in range(0, 101, 5):
            self.step(corner[0] - (corner[0] - 20) * at // 100, corner[1] - (corner[1] - 20) * at // 100)
        smallest = self.smallest["width"], self.smallest["height"]

        def is_smallest():
            place = self.where(self.window)
            return (place["width"], place["height"]) == smallest

        wait_until(is_smallest, "the window is as small as it gets", 20)
        self.release()
        self.assertEqual(smallest, (222, 42))
        self.assertTrue(is_smallest())
        self.assertEqual(self.watch.wrong[:1], [])

    def test_resize_from_anywhere_in_an_animated_window(self):
        """The manager's own doing, of which the window hears nothing but sizes."""
        self.subject.ask("stop", self.number)
        self.number, self.window = self.open(*PLACE, "animated")
        self.subject.ask("frames", self.number)
        key, button = self.HANDLE
        inside = PLACE[0] + self.INSIDE[0], PLACE[1] + self.INSIDE[1]
        self.move(*inside)
        self.user.ask("key", key, "down")
        self.user.ask("press", button)
        self.walk(inside, self.INSIDE_STEPS)
        frames = self.subject.ask("frames", self.number)["frames"]
        self.release(button)
        self.user.ask("key", key, "up")
        self.finish("anywhere, animated", frames)


if __name__ == "__main__":
    unittest.main()
