"""The launcher through more than anybody does to it in an evening: storms of random input, resizes, rebuilds of its screen
and games, all in one process, with the settings on disk held against the screen again and again.

    VELORINTH_SOAK    "full" for all of it; otherwise a share that fits among the other tests
    VELORINTH_SEED    the seed of what happens, as an earlier run printed it; otherwise a new one
"""

import os
import random
import statistics
import time
import unittest
from pathlib import Path

from desktop import Desktop
from player import CLOSED, FULLSCREEN, GAME, KVR2_CARD, KVR_CARD, REACTION, RESOLUTION, START
from screen import RC
from soak_hand import PLACE, SoakHand
from support import CLOSED_DURING_STARTUP, VERIFIED
from test_launcher_scene import MODES

FULL = os.environ.get("VELORINTH_SOAK") == "full"
SEED = int(os.environ.get("VELORINTH_SEED", random.SystemRandom().randrange(1 << 32)))

# One round, of which the whole soak has a hundred: 100,000 events, 1,000 resizes, 500 rebuilds, 200 games.
ROUNDS = 100 if FULL else 3
EVENTS, RESIZES, REBUILDS, GAMES = 1000, 10, 5, 2
STORMS = 4  # of equal length in a round; between them the screen has to come to rest

# Megabytes of resident memory that may be added after the first tenth of the rounds: about two pictures of the window.
# The share has only just warmed its caches by then.
GROWTH = 6 if FULL else 12

NO_CHOOSER = "The Windows folder picker could not be opened."

# What somebody else wrote into the settings file.
THEIRS = "[Launcher]\r\nTheirs=kept\r\n[Größe]\r\nKey=a value; with = signs\r\n"


def resident(process):
    for line in Path(f"/proc/{process}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    raise AssertionError("the launcher has no memory")


class Soak(SoakHand):
    def make_desktop(self):
        # No portal: "Browse for game…" fails at once, where a chooser would take the rest of a storm. No key or button of
        # the manager's that closes windows.
        return Desktop(portal=False, manager_rules=RC)

    def setUp(self):
        super().setUp()
        (self.home / "Games").mkdir()
        self.game = self.game.rename(self.home / "Games/Quake II")
        self.settings_file = self.state / "VelorinthLauncher/launcher.ini"
        self.settings_file.parent.mkdir(parents=True)
        self.settings_file.write_bytes(THEIRS.encode("utf-8"))
        self.chance = random.Random(SEED)
        self.counts = dict.fromkeys(("moves", "buttons", "keys", "resizes", "rebuilds", "games"), 0)

    def test_nothing_breaks_leaks_or_is_forgotten(self):
        print(f"VELORINTH_SEED={SEED}", flush=True)
        began = time.monotonic()
        errors = (self.root / "errors").open("wb+")
        self.addCleanup(errors.close)
        self.start_launcher(stderr=errors)
        self.stand_in(0)
        # The first look for a portal starts threads that stay.
        self.screen.click("Browse for game…")
        self.wait(lambda: self.message() == NO_CHOOSER, "there is no folder chooser", START)
        before = self.in_use()
        memory = []
        for number in range(ROUNDS):
            self.round()
            memory.append(resident(self.screen.process.pid))
            if FULL:
                print(f"round {number + 1}: {memory[-1]:.1f} MB, {time.monotonic() - began:.0f} s, {self.counts}",
                      flush=True)
        # Threads of the libraries' pools end when they have been idle for long enough.
        self.wait(lambda: all(now <= then for now, then in zip(self.in_use(), before)),
                  f"no more than {before} threads and descriptors; {self.in_use()}", START)
        after = self.in_use()

        tenth = max(ROUNDS // 10, 1)
        print(f"resident memory: {memory[tenth - 1]:.1f} MB after {tenth} of {ROUNDS} rounds,"
              f" {memory[ROUNDS // 2 - 1]:.1f} MB after half, {memory[-1]:.1f} MB at the end, {max(memory):.1f} MB at most")
        print(f"threads and descriptors: {before} at the start, {after} at the end; games: {self.games()};"
              f" {self.counts}; {time.monotonic() - began:.0f} s", flush=True)
        # Medians: how many pictures are under way at the moment differs.
        growth = statistics.median(memory[-tenth:]) - statistics.median(memory[tenth - 1 : 2 * tenth])
        self.assertLess(growth, GROWTH, memory)

        self.assert_kept()
        kept = self.settings_file.read_bytes()
        shown = self.seen()
        self.close_launcher()
        self.assertEqual(self.settings_file.read_bytes(), kept, "the end of the launcher writes nothing")
        errors.seek(0)
        self.assertNotIn(b"FAILED", errors.read())
        self.assert_nothing_left_in_the_game_folder()

        self.start_launcher()
        self.assertEqual(self.seen(), shown._replace(menu=False))
        self.close_launcher()

    def round(self):
        for _ in range(STORMS):
            self.storm(EVENTS // STORMS)
        for _ in range(RESIZES):
            self.resize()
        self.arrange(*PLACE)
        for _ in range(REBUILDS):
            self.rebuild()
        for _ in range(GAMES):
            self.play()
        self.assert_kept()
        # What Wine leaves behind is ours by now.
        self.desktop.reap(but=(self.screen.process.pid, self.user.process.pid))

    # What happens.

    def storm(self, events):
        counts = self.user.ask("storm", self.screen.window, self.chance.randrange(1 << 32), events)
        for name, count in counts.items():
            self.counts[name] += count
        self.assert_alive()
        self.come_to_rest()
        self.assert_kept()

    def resize(self):
        smallest = self.user.ask("minimum", self.screen.window)
        width = self.chance.randint(smallest["width"], 1100)
        height = self.chance.randint(smallest["height"], 960)
        self.arrange(self.chance.randint(0, 100), self.chance.randint(0, 60), width, height)
        self.counts["resizes"] += 1

    def rebuild(self):
        """A click that changes the screen."""
        now = self.seen()
        if now.menu:
            mode = self.chance.choice([each for each in range(len(MODES)) if each != now.mode])
            # The item's corner: labels say which one is chosen.
            control, then = (40, 256 + 33 * mode), now._replace(menu=False, mode=mode)
        else:
            control, then = self.chance.choice((
                (KVR_CARD if now.modern else KVR2_CARD, now._replace(modern=not now.modern)),
                (FULLSCREEN, now._replace(fullscreen=not now.fullscreen)),
                (RESOLUTION, now._replace(menu=True))))
        self.screen.click(control)
        self.wait(lambda: self.seen() == then, f"a click on {control} of {now} gives {then}", REACTION)
        self.counts["rebuilds"] += 1

    def play(self):
        if self.seen().menu:
            self.screen.click((0, 0))
            self.wait(lambda: not self.seen().menu, "a click beside the list closes it", REACTION)
        if not self.seen().folder or self.message() != VERIFIED:
            self.screen.click("Find automatically")
            self.wait(lambda: self.seen().idle and self.message() == VERIFIED, "the game is found", START)
        # One in ten lives long enough to be seen running.
        code = self.chance.choice((0, 0, 7))
        lasting = self.chance.randrange(10) == 0
        self.stand_in(2500 if lasting else 0, code)
        games = self.games()
        now = self.seen()
        self.screen.click("Launch with KVR2 ↗" if now.modern else "Launch with KVR ↗")
        self.wait(lambda: self.games() == games + 1 and self.seen().idle, "a game begins and ends", GAME)
        ends = [CLOSED if code == 0 else
                "Quake II exited with error 7. See baseq2/qconsole.log in the game folder."]
        # On a busy machine Wine takes so long to start that a short life is over later than it counts as the start.
        if not lasting:
            ends.append(CLOSED_DURING_STARTUP)
        self.assertIn(self.status(), ends)
        self.assertEqual(self.seen(), now)
        self.counts["games"] += 1
        # Those that a storm starts end at once.
        self.stand_in(0, code)

    def games(self):
        log = self.game / "baseq2/qconsole.log"
        return log.read_bytes().count(b"Quake II (stand-in)\n") if log.exists() else 0

    # What has to be so.

    def in_use(self):
        """Threads and descriptors of the launcher at rest."""
        folder = Path(f"/proc/{self.screen.process.pid}")
        self.bring_back(*PLACE)
        return len(os.listdir(folder / "task")), len(os.listdir(folder / "fd"))

    def kept(self):
        """The settings file, as {(section, key): value}."""
        section, found = "", {}
        for line in self.settings_file.read_text(encoding="utf-8-sig").splitlines():
            if line.startswith("["):
                section = line.strip("[]")
            elif "=" in line:
                key, _, value = line.partition("=")
                self.assertNotIn((section, key), found, "a key stands twice")
                found[section, key] = value
        return found

    def assert_kept(self):
        theirs = {("Launcher", "Theirs"): "kept", ("Größe", "Key"): "a value; with = signs"}

        def agreed():
            ours = {("Launcher", key): value for key, value in self.seen().choices.items()}
            return self.kept() == {**theirs, **ours}

        try:
            self.wait(agreed, "the settings file is what the screen shows", REACTION)
        except AssertionError as failure:
            raise AssertionError(f"{failure}: {self.kept()}, {self.seen()}") from None

    def assert_nothing_left_in_the_game_folder(self):
        names = {path.name for path in self.game.iterdir()}
        self.assertLessEqual(names, {"quake2.exe", "ref_gl.dll", "baseq2", "stand-in.ini", "KVR.dll", "KVR2.dll"})
        locks = list(self.settings_file.parent.glob("*"))
        self.assertEqual(len(locks), 2, "the settings and one lock file")


if __name__ == "__main__":
    unittest.main()
