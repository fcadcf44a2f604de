"""Windows come and go, together and one after another; and what they need may be missing or go away."""

import os
import subprocess
import time
import unittest
from pathlib import Path

from screen import PATIENCE, Screen, Subject, is_whole, wait_until
from support import BIN

LOST = "The connection to the X server is lost; the program ends.\n"


def in_use(process):
    """Threads and descriptors of a process."""
    folder = Path(f"/proc/{process}")
    return len(os.listdir(folder / "task")), len(os.listdir(folder / "fd"))


def settled(measure):
    """What is measured once it has stopped changing: the server hears of a closed connection a little later than we do,
    the window manager of a closed window too."""
    last, since = measure(), time.monotonic()
    end = since + 10
    while time.monotonic() < min(since + 0.5, end):
        time.sleep(0.01)
        now = measure()
        if now != last:
            last, since = now, time.monotonic()
    return last


def memory(process):
    """Resident memory of a process in MB."""
    for line in Path(f"/proc/{process}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    return 0


class TwoWindows(Subject):
    def test_two_windows_at_once_live_and_end_apart(self):
        first, first_window = self.open(20, 20, 400, 300)
        second, second_window = self.open(450, 350, 420, 310, "animated")
        self.assertTrue(is_whole(self.look(first_window)))

        # Each has a loop of its own: one stands still while the other moves.
        still = self.counts(first)
        moving = self.counts(second)["clientPasses"]
        wait_until(lambda: self.counts(second)["clientPasses"] > moving + 20, "the animated window goes on")
        self.assertEqual(self.counts(first)["presents"], still["presents"])

        # Input reaches the window that the pointer is in, and no other.
        self.move(200, 200)
        wait_until(lambda: self.counts(first)["clientPasses"] > still["clientPasses"], "the first window hears")

        # One is closed by the user; the other stays.
        self.click(20 + 400 - 30, 20 + 20)
        wait_until(lambda: "error" in self.user.try_ask("where", first_window), "the first window is closed")
        before = self.counts(second)["clientPasses"]
        wait_until(lambda: self.counts(second)["clientPasses"] > before + 5, "the second window goes on")
        self.assertTrue(is_whole(self.look(second_window)))
        self.click(450 + 420 - 30, 350 + 20)
        self.assertEqual(self.subject.ask("wait"), {}, "the program hears that all windows are closed")


class ManyWindows(Subject):
    def let_the_manager_follow(self):
        """The server gives the names of an ended client's windows to the next client. A manager that has not heard yet of
        the one window's end takes the next for it, and lets go of that."""
        self.assertTrue(self.user.ask("manager")["ready"])

    def test_opening_and_closing_a_hundred_times_leaves_nothing_behind(self):
        process = self.subject.process.pid

        def once(step):
            answer = self.subject.ask("open", 50, 40, 320, 240, *(["animated"] if step % 2 else []))
            if step % 10 == 0:  # by the user
                wait_until(lambda: is_whole(self.look(answer["window"])), "the window is painted")
                self.click(50 + 320 - 30, 40 + 20)
                self.subject.ask("wait")
            self.subject.ask("stop", answer["id"])
            self.let_the_manager_follow()

        def left():
            return (*in_use(process), *self.user.ask("count").values())

        for step in range(4):
            once(step)
        before = settled(left)
        memory_before = memory(process)
        for step in range(100):
            once(step)
        self.assertEqual(settled(left), before, "threads, descriptors, clients and windows of the display")
        growth = memory(process) - memory_before
        print(f"resident memory: {memory_before:.1f} MB, {growth:+.1f} MB after 100 windows", flush=True)
        # The driver's caches and the heap come and go by up to 30 MB. One picture of each window kept would be 30 MB more,
        # the images of its two surfaces 120.
        self.assertLess(growth, 45)

    def test_two_windows_opened_and_closed_in_turn(self):
        process = self.subject.process.pid
        number, _ = self.open(20, 20, 300, 200)
        before = settled(lambda: in_use(process))
        for _ in range(10):
            second, _ = self.open(400, 300, 300, 200, "animated")
            self.subject.ask("stop", second)
            self.let_the_manager_follow()
        self.assertEqual(settled(lambda: in_use(process)), before)
        self.subject.ask("stop", number)


class ServerGone(Subject):
    def test_program_ends_with_a_clear_line_when_the_server_goes_away(self):
        subject = self.start_teller("window_subject", stderr=subprocess.PIPE)
        subject.ask("open", 20, 20, 400, 300)
        subject.ask("open", 450, 20, 400, 300, "animated")
        self.server.kill()
        self.server.wait(PATIENCE)
        self.assertEqual(subject.process.wait(PATIENCE), 1)
        said = subject.process.stderr.read()
        self.assertEqual(said.count(LOST), 1, said)
        self.assertTrue(said.endswith(LOST), said)


class Missing(Screen):
    def hello(self, **environment):
        return subprocess.run([BIN / "hello_window"], env={**self.environment, **environment},
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=PATIENCE, check=False)

    def test_without_a_vulkan_driver_the_program_says_what_to_install(self):
        nowhere = str(self.scratch / "nowhere.json")
        done = self.hello(VK_DRIVER_FILES=nowhere, VK_ICD_FILENAMES=nowhere)
        self.assertEqual(done.returncode, 2)
        self.assertIn("No usable Vulkan driver was found. Install the package mesa-vulkan-drivers.\n", done.stderr)

    def test_without_a_display_the_program_says_so(self):
        done = self.hello(DISPLAY=":4095")
        self.assertEqual(done.returncode, 2)
        self.assertIn("The X display could not be opened: DISPLAY names none that runs.\n", done.stderr)


if __name__ == "__main__":
    unittest.main()
