"""The frame that the toolkit draws itself, handled with a real pointer: buttons, caption, edges, corners, shapes."""

import subprocess
import unittest

from screen import PATIENCE, SIZE, Subject, is_like, is_whole, wait_until

TITLE = 0x1A1ACC
PLACE = (200, 150, 500, 400)
MAXIMIZED = ["_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT"]


class Caption(Subject):
    def setUp(self):
        super().setUp()
        self.number, self.window = self.open(*PLACE)
        self.assertEqual(self.rectangle(), PLACE)

    def rectangle(self):
        place = self.where(self.window)
        return place["x"], place["y"], place["width"], place["height"]

    def minimise(self):
        return PLACE[0] + PLACE[2] - 150, PLACE[1] + 25

    def maximise(self):
        return PLACE[0] + PLACE[2] - 90, PLACE[1] + 25

    def close(self):
        return PLACE[0] + PLACE[2] - 30, PLACE[1] + 25

    def caption(self):
        return PLACE[0] + 150, PLACE[1] + 25

    def is_open(self):
        answer = self.user.try_ask("where", self.window)
        return "error" not in answer

    def wait_for_place(self, expected, what):
        try:
            wait_until(lambda: self.rectangle() == expected, what, 20)
        except AssertionError as failure:
            raise AssertionError(f"{failure}: {self.rectangle()} in place of {expected}") from None

    def wait_until_closed(self):
        self.assertEqual(self.subject.ask("wait"), {})
        self.subject.ask("stop", self.number)
        self.assertFalse(self.is_open())

    def is_maximised(self):
        # A maximised window keeps its title bar, from edge to edge, and nothing else of its frame.
        width, height = SIZE
        return (self.rectangle() == (0, 0, width, height) and is_like(self.colour(3, 3), TITLE) and
                is_like(self.colour(200, 3), TITLE) and not is_like(self.colour(1, height - 2), TITLE))

    def is_restored(self):
        return self.rectangle() == PLACE and is_whole(self.look(self.window))


class Buttons(Caption):
    def test_close(self):
        self.click(*self.close())
        self.wait_until_closed()

    def test_minimise_and_back(self):
        self.click(*self.minimise())
        wait_until(lambda: "Iconic" in self.states(self.window), "the window is minimised")
        subprocess.run(["xdotool", "windowactivate", str(self.window)], env=self.environment, check=True,
                       timeout=PATIENCE)
        wait_until(lambda: "Iconic" not in self.states(self.window) and self.is_restored(), "the window is back")

    def test_maximise_and_restore(self):
        self.click(*self.maximise())
        wait_until(self.is_maximised, "the window is maximised")
        self.assertEqual(sorted(state for state in self.states(self.window) if "MAXIMIZED" in state), MAXIMIZED)
        # The same button in its new place.
        self.click(SIZE[0] - 90, 20)
        wait_until(self.is_restored, "the window is restored")

    def test_close_when_maximised_reaches_into_the_screens_corner(self):
        self.click(*self.maximise())
        wait_until(self.is_maximised, "the window is maximised")
        self.click(SIZE[0] - 30, 20)
        self.wait_until_closed()

    def test_press_dragged_off_and_released_does_nothing(self):
        for press in (self.close, self.minimise, self.maximise):
            for x, y in ((PLACE[0] + 250, PLACE[1] + 200), self.caption(), (PLACE[0] - 50, PLACE[1] - 50)):
                with self.subTest(press.__name__, to=(x, y)):
                    self.press(*press())
                    self.move(x, y)
                    self.release()
        self.assert_untouched()

    def test_press_released_on_another_button_does_nothing(self):
        self.press(*self.minimise())
        self.move(*self.close())
        self.release()
        self.press(*self.close())
        self.move(*self.maximise())
        self.release()
        self.assert_untouched()

    def test_press_dragged_off_and_back_acts(self):
        self.press(*self.close())
        self.move(PLACE[0] + 250, PLACE[1] + 200)
        self.move(*self.close())
        self.release()
        self.wait_until_closed()

    def assert_untouched(self):
        # What the window had still to do it has done before this click reaches it.
        self.click(PLACE[0] + 250, PLACE[1] + 200)
        before = self.counts(self.number)["clientPasses"]
        self.move(PLACE[0] + 260, PLACE[1] + 210)
        wait_until(lambda: self.counts(self.number)["clientPasses"] > before, "the scene hears of the pointer")
        self.assertEqual(self.rectangle(), PLACE)
        self.assertTrue(is_whole(self.look(self.window)), self.look(self.window))
        self.assertNotIn("Iconic", self.states(self.window))


class CaptionBand(Caption):
    def test_double_click_maximises_and_restores(self):
        self.click(*self.caption())
        self.click(*self.caption())
        wait_until(self.is_maximised, "the window is maximised")
        self.click(300, 20)
        self.click(300, 20)
        wait_until(self.is_restored, "the window is restored")

    def test_drag_moves_the_window(self):
        drag(self, self.caption(), (60, 40), (PLACE[0] + 60, PLACE[1] + 40, *PLACE[2:]))
        wait_until(lambda: is_whole(self.look(self.window)), "the window is painted at its new place")


GRIPS = {  # point of the grip as shares of width and height, and how a drag by (30, 20) changes x, y, width, height
    "left": ((0, 0.5), (30, 0, -30, 0), "sb_h_double_arrow"),
    "right": ((1, 0.5), (0, 0, 30, 0), "sb_h_double_arrow"),
    "top": ((0.3, 0), (0, 20, 0, -20), "sb_v_double_arrow"),
    "bottom": ((0.3, 1), (0, 0, 0, 20), "sb_v_double_arrow"),
    "top left": ((0, 0), (30, 20, -30, -20), "bottom_right_corner"),
    "top right": ((1, 0), (0, 20, 30, -20), "bottom_left_corner"),
    "bottom left": ((0, 1), (30, 0, -30, 20), "bottom_left_corner"),
    "bottom right": ((1, 1), (0, 0, 30, 20), "bottom_right_corner"),
}


def grip_point(place, share):
    x, y, width, height = place
    return x + 3 + int(share[0] * (width - 7)), y + 3 + int(share[1] * (height - 7))


def drag(test, start, by, expected):
    """Presses at the start and moves as a hand does, in many steps, until the window is where it should be."""
    test.press(*start)
    end = start[0] + by[0], start[1] + by[1]
    for step in range(1, 6):
        test.move(start[0] + by[0] * step // 5, start[1] + by[1] * step // 5)
    wobble = iter(range(10**6))

    def arrived():
        # Whoever drives the drag may have taken the pointer after the last step; then it follows the next one.
        if next(wobble) % 20 == 19:
            test.move(end[0] + 1, end[1])
            test.move(*end)
        return test.rectangle() == expected

    try:
        wait_until(arrived, "the window follows the drag", 20)
    except AssertionError as failure:
        raise AssertionError(f"{failure}: {test.rectangle()} in place of {expected}") from None
    finally:
        test.release()
    wait_until(lambda: test.rectangle() == expected and is_whole(test.look(test.window)), "the last frame", 20)


class Edges(Caption):
    def test_edges_and_corners_resize(self):
        for name, (share, change, _) in GRIPS.items():
            with self.subTest(name):
                before = self.rectangle()
                expected = tuple(old + new for old, new in zip(before, change))
                drag(self, grip_point(before, share), (30, 20), expected)

    def test_shape_of_the_pointer_in_each_zone(self):
        zones = {name: (grip_point(PLACE, share), shape) for name, (share, _, shape) in GRIPS.items()}
        zones |= {
            "caption": (self.caption(), "left_ptr"),
            "minimise": (self.minimise(), "left_ptr"),
            "maximise": (self.maximise(), "left_ptr"),
            "close": (self.close(), "left_ptr"),
            "scene": ((PLACE[0] + 250, PLACE[1] + 200), "left_ptr"),
        }
        shapes = {shape: self.user.ask("shape", shape)["shape"] for _, shape in zones.values()}
        self.assertEqual(len(set(shapes.values())), 5, "all shapes differ")
        for name, (point, shape) in zones.items():
            with self.subTest(name):
                self.move(*point)
                wait_until(lambda: self.user.ask("cursor")["shape"] == shapes[shape], f"{name}: {shape}", 10)

    def test_edges_of_a_maximised_window_do_not_resize(self):
        self.click(*self.maximise())
        wait_until(self.is_maximised, "the window is maximised")
        arrow = self.user.ask("shape", "left_ptr")["shape"]
        self.press(2, 400)
        wait_until(lambda: self.user.ask("cursor")["shape"] == arrow, "the pointer is an arrow", 10)
        self.move(80, 400)
        self.release()
        self.click(SIZE[0] - 90, 20)
        wait_until(self.is_restored, "the window is restored")


class WithoutManager(Caption):
    MANAGER = None

    def test_edges_and_corners_resize_without_a_manager(self):
        for name, (share, change, _) in GRIPS.items():
            with self.subTest(name):
                before = self.rectangle()
                drag(self, grip_point(before, share), (30, 20), tuple(old + new for old, new in zip(before, change)))

    def test_drag_and_double_click_on_the_caption_without_a_manager(self):
        drag(self, self.caption(), (60, 40), (PLACE[0] + 60, PLACE[1] + 40, *PLACE[2:]))
        self.click(PLACE[0] + 210, PLACE[1] + 65)
        self.click(PLACE[0] + 210, PLACE[1] + 65)
        wait_until(self.is_maximised, "the window is maximised")
        self.click(SIZE[0] - 90, 20)
        self.wait_for_place((PLACE[0] + 60, PLACE[1] + 40, *PLACE[2:]), "the window is restored")

    def test_buttons_without_a_manager(self):
        # Nothing would bring a minimised window back.
        self.click(*self.minimise())
        self.click(*self.maximise())
        wait_until(self.is_maximised, "the window is maximised")
        self.click(SIZE[0] - 30, 20)
        self.wait_until_closed()


class FixedSize(Subject):
    def test_window_of_a_fixed_size_keeps_it(self):
        _, window = self.open(*PLACE, "fixed")
        arrow = self.user.ask("shape", "left_ptr")["shape"]
        x, y = grip_point(PLACE, (1, 1))
        self.press(x, y)
        self.move(x + 40, y + 40)
        self.assertEqual(self.user.ask("cursor")["shape"], arrow)
        self.release()
        for _ in range(2):
            self.click(PLACE[0] + 150, PLACE[1] + 25)
        self.click(PLACE[0] + PLACE[2] - 90, PLACE[1] + 25)
        # The last click is handled after all before it.
        self.click(PLACE[0] + PLACE[2] - 150, PLACE[1] + 25)
        wait_until(lambda: "Iconic" in self.states(window), "the window is minimised")
        place = self.where(window)
        self.assertEqual((place["width"], place["height"]), PLACE[2:])
        self.assertNotIn(MAXIMIZED[0], self.states(window))


if __name__ == "__main__":
    unittest.main()
