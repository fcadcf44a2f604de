"""What a window costs that has nothing to show: nothing."""

import os
import time
import unittest
from pathlib import Path

from screen import Subject, is_whole, wait_until

SPAN = 10  # seconds


def processor_time(process):
    """Seconds that all threads of a process have computed."""
    fields = Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


class Idle(Subject):
    """All at once, each in a process of its own, so that ten seconds are enough."""

    def test_windows_that_show_nothing_new_cost_nothing(self):
        still, _ = self.open(20, 20, 400, 300)
        minimised, minimised_number, minimised_window = self.another(450, 20, 400, 300)
        covered, covered_number, _ = self.another(20, 400, 400, 300)
        self.click(450 + 400 - 150, 20 + 20)
        wait_until(lambda: "Iconic" in self.states(minimised_window), "the window is minimised", 20)
        self.user.ask("cover", 10, 390, 420, 320)
        self.move(990, 790)
        self.wait_until_slow(minimised, minimised_number)
        self.wait_until_slow(covered, covered_number)
        self.wait_until_still(still)

        subjects = {"still": self.subject, "minimised": minimised, "covered": covered}
        before = self.counts(still)
        computed = {name: processor_time(subject.process.pid) for name, subject in subjects.items()}
        started = time.monotonic()
        time.sleep(SPAN)
        span = time.monotonic() - started
        share = {name: 100 * (processor_time(subject.process.pid) - computed[name]) / span
                 for name, subject in subjects.items()}
        after = self.counts(still)

        print("percent of a core: " + ", ".join(f"{name} {value:.2f}" for name, value in share.items()), flush=True)
        self.assertGreater(after["turns"], before["turns"] + 100, "the loop of the window that stands still runs")
        for work in ("framePasses", "clientPasses", "presents", "commits", "resizes"):
            self.assertEqual(after[work], before[work], work)
        self.assertLess(share["still"], 1)
        self.assertLess(share["minimised"], 2)
        self.assertLess(share["covered"], 2)

        # Both wake at once when they can be seen again.
        for subject, number in ((minimised, minimised_number), (covered, covered_number)):
            self.assertLessEqual(subject.ask("counts", number)["clientPasses"], self.passes[subject] + SPAN)

    def another(self, *place):
        """A window with an animated background in a process of its own."""
        subject = self.start_teller("window_subject")
        answer = subject.ask("open", *place, "animated")
        number, window = answer["id"], answer["window"]
        wait_until(lambda: is_whole(self.look(window)), "the window is painted")
        wait_until(lambda: subject.ask("counts", number)["clientPasses"] > 30, "the animation runs")
        return subject, number, window

    def wait_until_slow(self, subject, number):
        """Until half a second brings fewer frames than the display would show in a tenth of it."""
        def slow():
            before = subject.ask("counts", number)["clientPasses"]
            time.sleep(0.5)
            self.passes = {**getattr(self, "passes", {}), subject: subject.ask("counts", number)["clientPasses"]}
            return self.passes[subject] - before <= 2
        wait_until(slow, "the animation of an unseen window slows down", 20)

    def wait_until_still(self, number):
        def still():
            before = self.counts(number)
            time.sleep(0.2)
            return self.counts(number)["presents"] == before["presents"]
        wait_until(still, "the window stands still", 20)


class Awake(Subject):
    def test_animation_goes_on_when_the_window_is_seen_again(self):
        number, _ = self.open(20, 20, 400, 300, "animated")
        cover = self.user.ask("cover", 10, 10, 420, 320)["window"]

        def rate(seconds):
            before = self.counts(number)["clientPasses"]
            time.sleep(seconds)
            return (self.counts(number)["clientPasses"] - before) / seconds

        wait_until(lambda: rate(0.3) < 10, "the covered window slows down", 20)
        self.user.ask("destroy", cover)
        before = self.counts(number)["clientPasses"]
        wait_until(lambda: self.counts(number)["clientPasses"] > before, "a frame follows the uncovering", 1)
        wait_until(lambda: rate(0.3) > 10, "the uncovered window is quick again", 20)


if __name__ == "__main__":
    unittest.main()
