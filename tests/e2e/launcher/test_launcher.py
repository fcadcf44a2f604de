"""The launcher as a player uses it: from the first start to the end of the game, on a desktop with a window manager and
the folder chooser of the portal, with the stand-in engine under Wine."""

import unittest

from player import (CANCELLED, CHOOSER_TITLE, CHOOSING, CLOSED, FOREVER, FULLSCREEN, GAME, GAME_TITLE, INSTALLING,
                    KVR2_CARD, KVR_CARD, NOT_THERE, NOTHING_FOUND, REACTION, RESOLUTION, START, LauncherTest)
from support import ALREADY_RUNNING, LAUNCHED, VERIFIED, wait_until
from test_launcher_scene import Flags


class FirstDay(LauncherTest):
    def test_from_the_first_start_to_two_games_and_the_next_start(self):
        self.start_launcher()
        self.shows(Flags(), "a first start without settings")
        self.click("Launch with KVR2 ↗")
        self.click("Find automatically")
        self.shows(Flags(message=NOTHING_FOUND), "a search that finds nothing")

        (self.home / "Games").mkdir()
        self.game = self.game.rename(self.home / "Games/Quake II")
        flags = Flags(valid=True, folder=str(self.game), message=VERIFIED)
        self.click("Find automatically")
        self.shows(flags, "a search that finds the game")

        self.click(KVR_CARD)
        flags.modern = False
        self.shows(flags, "the other driver")
        self.click(RESOLUTION)
        flags.menu = True
        self.shows(flags, "the open list of resolutions")
        self.click("    400 × 300")
        flags.menu, flags.mode = False, 1
        self.shows(flags, "another resolution")
        self.click(FULLSCREEN)
        flags.fullscreen = False
        self.shows(flags, "a window instead of the whole screen")

        self.play(flags, 0, CLOSED)
        self.play(flags, 3221225477,
                  "Quake II exited with error 3221225477. See baseq2/qconsole.log in the game folder.")
        for run in self.log():
            self.assertEqual(run["command line"], "quake2.exe +set vid_ref gl +set gl_driver KVR.dll +set gl_mode 1"
                                                  " +set vid_fullscreen 0 +set logfile 1")
            self.assertEqual(run["gl_driver"], 'KVR.dll, loaded, says "KVR (stand-in)"')
            self.assertEqual(run["display"], "yes")
        self.assertEqual(len(self.log()), 2)

        kept = {"folder": str(self.game), "modern": False, "fullscreen": False, "mode": 1}
        self.close_launcher()
        self.assertEqual(self.settings(), kept)
        self.start_launcher()
        self.shows(Flags(valid=True, folder=str(self.game), modern=False, fullscreen=False, mode=1),
                   "the settings of the last time")
        self.close_launcher()
        self.assertEqual(self.settings(), kept)

    def play(self, flags, exit_code, last_words):
        self.stand_in(FOREVER, exit_code)
        flags.running = False
        self.click("Launch with KVR ↗")
        flags.launching, flags.status = True, INSTALLING
        self.shows(flags, "the game being started")
        flags.launching, flags.running, flags.status = False, True, LAUNCHED
        self.shows(flags, "the running game", GAME)
        self.window_named(GAME_TITLE, GAME)

        # Nothing answers meanwhile; and what is done afterwards shows that all of it has been delivered.
        self.activate()
        for control in ("Find automatically", "Browse for game…", KVR2_CARD, RESOLUTION, FULLSCREEN, "Game running"):
            self.click(control)
            self.shows(flags, f"the running game after a click on {control}")
        self.end_game()
        flags.running, flags.status = False, last_words
        self.shows(flags, f"the end of the game with {exit_code}", GAME)


class CloseAndReturn(LauncherTest):
    def test_launcher_closed_while_the_game_runs_refuses_another_game_when_it_is_back(self):
        # Whose path no plain character set holds.
        self.game = self.make_installation(self.root / "Spiele für Größe" / "Quake II")
        self.remember("--mode", "0")
        self.stand_in(FOREVER)
        flags = Flags(valid=True, folder=str(self.game), mode=0)
        self.start_launcher()
        self.shows(flags, "the remembered installation")
        self.click("Launch with KVR2 ↗")
        flags.running, flags.status = True, LAUNCHED
        self.shows(flags, "the running game", GAME)
        game = self.game_process()
        self.close_launcher()
        self.assertEqual(self.game_process(), game, "the game runs on")

        self.start_launcher()
        flags.running, flags.status = False, ""
        self.shows(flags, "the launcher anew")
        self.activate()
        self.click("Launch with KVR2 ↗")
        flags.status = ALREADY_RUNNING
        self.shows(flags, "the refusal", GAME)
        self.assertEqual(self.game_process(), game)
        self.assertEqual(len(self.log()), 1)

        self.end_game()
        self.click("Launch with KVR2 ↗")
        flags.running, flags.status = True, LAUNCHED
        self.shows(flags, "the next game", GAME)
        self.end_game()
        flags.running, flags.status = False, CLOSED
        self.shows(flags, "its end", GAME)
        self.close_launcher()


class Browse(LauncherTest):
    CHOOSER_OPENS_AT = "Spiele für Jürgen/Quake II"

    def test_browse_to_a_bad_folder_cancel_browse_to_the_game_cancel(self):
        self.game = self.make_installation(self.desktop.home / self.CHOOSER_OPENS_AT)
        bad = self.root / "no game"
        bad.mkdir()
        self.start_launcher()
        flags = Flags()
        self.shows(flags, "a first start without settings")

        self.browse(flags)
        # The choices are open meanwhile.
        self.activate()
        self.click(KVR_CARD)
        flags.modern = False
        self.shows(flags, "the other driver while the chooser is open")
        wait_until(lambda: self.settings()["modern"] is False, "the choice is saved", REACTION)
        self.cancel()
        self.after(flags, message=CANCELLED)

        self.browse(flags)
        self.type_folder(bad)
        self.after(flags, message=NOT_THERE, folder=str(bad))
        self.assertEqual(self.settings()["folder"], str(bad))

        self.browse(flags)
        self.cancel()
        self.after(flags, message=CANCELLED)

        self.browse(flags)
        self.choose_shown()
        self.after(flags, message=VERIFIED, folder=str(self.game), valid=True)

        self.browse(flags)
        self.cancel()
        self.after(flags, message=VERIFIED)
        self.assertEqual(self.settings(), {"folder": str(self.game), "modern": False, "fullscreen": True, "mode": 4})
        self.close_launcher()

        self.start_launcher()
        flags.message = ""
        self.shows(flags, "the chosen installation at the next start")
        self.click("Find automatically")
        flags.message = VERIFIED
        self.shows(flags, "a search that begins at the chosen installation")
        self.close_launcher()

    def browse(self, flags):
        self.activate()
        self.click("Browse for game…")
        flags.checking, flags.message = True, CHOOSING
        self.shows(flags, "the folder being chosen")

    def after(self, flags, **changes):
        flags.checking = False
        flags.__dict__.update(changes)
        self.shows(flags, f"the chooser's answer, {changes['message']}", START)

    # The folder chooser.

    def choose_shown(self):
        """The folder that the chooser opened at, by its button, which is greyed out until that has been read."""
        window = self.window_named(CHOOSER_TITLE, START)

        def chosen():
            geometry = dict(line.split("=") for line in
                            self.desktop.run("xdotool", "getwindowgeometry", "--shell", window).split() if "=" in line)
            if "WIDTH" in geometry:
                self.desktop.run("xdotool", "windowactivate", "--sync", window, "mousemove", "--window", window,
                                 int(geometry["WIDTH"]) - 60, int(geometry["HEIGHT"]) - 24, "click", "1")
            return not self.windows(CHOOSER_TITLE)

        wait_until(chosen, "the folder chooser takes the folder it shows", START)

    def type_folder(self, folder):
        window = self.window_named(CHOOSER_TITLE, START)

        def chosen():
            self.desktop.run("xdotool", "windowactivate", "--sync", window, "key", "alt+Home", "ctrl+l")
            self.desktop.run("xdotool", "type", "--delay", "5", folder)
            self.desktop.run("xdotool", "key", "Return")
            try:
                wait_until(lambda: not self.windows(CHOOSER_TITLE), "the folder chooser goes", 3)
            except AssertionError:
                return False
            return True

        wait_until(chosen, f"the folder chooser takes {folder}", START)

    def cancel(self):
        window = self.window_named(CHOOSER_TITLE, START)

        def gone():
            self.desktop.run("xdotool", "windowactivate", "--sync", window, "key", "Escape")
            return not self.windows(CHOOSER_TITLE)

        wait_until(gone, "the folder chooser goes", START)


if __name__ == "__main__":
    unittest.main()
