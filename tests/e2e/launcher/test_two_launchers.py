"""Two launchers at once: each shows its own choices, both write one settings file key by key, and the game's lock lets
one game into an installation, whoever started it."""

import unittest

from player import CLOSED, FOREVER, FULLSCREEN, GAME, KVR_CARD, REACTION, RESOLUTION, Launcher, LauncherTest
from support import ALREADY_RUNNING, BIN, LAUNCHED, LOCKED, link_or_copy, wait_until
from test_launcher_scene import Flags


class TwoLaunchers(LauncherTest):
    def start(self, name, folder=None):
        link = (folder or self.launcher) / "launcher_probe"
        if not link.exists():
            link_or_copy(BIN / "launcher_probe", link)
        return Launcher(self, self.root / f"{name}.json", folder=folder)

    def assert_kept(self, **wanted):
        wait_until(lambda: self.settings() == {"folder": str(self.game), **wanted}, f"the settings are {wanted}", REACTION)

    def test_last_writer_wins_and_neither_screen_follows_the_other(self):
        self.remember("--driver", "KVR2", "--mode", "4", "--fullscreen")
        first, second = self.start("first"), self.start("second")
        shown = [Flags(valid=True, folder=str(self.game)) for _ in range(2)]
        for launcher, flags in zip((first, second), shown):
            launcher.shows(flags, "what was remembered")

        # All keys are written at every change, each with what its launcher shows.
        first.activate()
        first.click(KVR_CARD)
        shown[0].modern = False
        first.shows(shown[0], "the other driver")
        self.assert_kept(modern=False, fullscreen=True, mode=4)
        second.shows(shown[1], "the second launcher, which doesn't follow the first")

        second.activate()
        second.click(FULLSCREEN)
        shown[1].fullscreen = False
        second.shows(shown[1], "a window instead of the whole screen")
        self.assert_kept(modern=True, fullscreen=False, mode=4)
        first.shows(shown[0], "the first launcher, which doesn't follow the second")

        first.activate()
        first.click(RESOLUTION)
        shown[0].menu = True
        first.shows(shown[0], "the open list")
        first.click("    320 × 240")
        shown[0].menu, shown[0].mode = False, 0
        first.shows(shown[0], "another resolution")
        self.assert_kept(modern=False, fullscreen=True, mode=0)

        # The end of a launcher writes nothing; the next start reads what was written last.
        second.close()
        self.assert_kept(modern=False, fullscreen=True, mode=0)
        first.close()
        third = self.start("third")
        third.shows(shown[0], "what was written last")
        third.close()

    def test_second_launcher_is_refused_while_the_game_of_the_first_runs(self):
        self.remember()
        self.stand_in(FOREVER)
        # Beside another copy of the launcher only the lock stands between the two: its engine is another program.
        elsewhere = self.make_launcher("another launcher")
        first, second, third = self.start("first"), self.start("second"), self.start("third", elsewhere)
        flags = Flags(valid=True, folder=str(self.game))
        first.activate()
        first.click("Launch with KVR2 ↗")
        running = Flags(valid=True, folder=str(self.game), running=True, status=LAUNCHED)
        first.shows(running, "the running game", GAME)
        game = self.game_process()

        for launcher, sentence in ((second, ALREADY_RUNNING), (third, LOCKED)):
            launcher.activate()
            launcher.click("Launch with KVR2 ↗")
            flags.status = sentence
            launcher.shows(flags, "the refusal", GAME)
        first.shows(running, "the first launcher, which has heard nothing of it")
        self.assertEqual(self.game_process(), game)
        self.assertEqual(len(self.log()), 1)

        self.end_game()
        flags.status = CLOSED
        first.shows(flags, "the end of the game", GAME)
        third.activate()
        third.click("Launch with KVR2 ↗")
        third.shows(running, "the lock is free for the next", GAME)
        self.end_game()
        third.shows(flags, "the end of the second game", GAME)
        for launcher in (third, second, first):
            launcher.close()


if __name__ == "__main__":
    unittest.main()
