"""The whole path: a folder and three choices go in, and the engine runs there under Wine."""

import os
import shutil
import unittest

from support import CLOSED_DURING_STARTUP, LAUNCHED, WineWorld, lock_is_held, wait_until

DEFAULT_LINE = "quake2.exe +set vid_ref gl +set gl_driver KVR2.dll +set gl_mode 4 +set vid_fullscreen 1 +set logfile 1"


class Launch(WineWorld):
    def test_default_start_runs_the_engine_in_the_game_folder_with_the_exact_command_line(self):
        self.stand_in(2500)
        answer = self.console("start", self.game)

        self.assertEqual(answer.status, 0, answer.errors)
        self.assertEqual(answer.lines, [
            {"process": True, "message": LAUNCHED, "folder": str(self.game)},
            {"exitCode": 0, "message": "Quake II closed."},
        ])
        run, = self.log()
        self.assertEqual(run["command line"], DEFAULT_LINE)
        self.assertEqual(run["working directory"], self.windows_path(self.game))
        self.assertEqual(run["gl_driver"], 'KVR2.dll, loaded, says "KVR2 (stand-in)"')
        self.assertEqual(run["gl_mode"], "4, 800x600")
        installed = (self.game / "KVR2.dll").read_bytes()
        self.assertEqual(installed, (self.launcher / "Drivers/KVR2.dll").read_bytes())
        self.assertEqual(list(self.game.glob("*.backup-*")), [])
        self.assertFalse(lock_is_held(self.lock_file()))

    def test_first_line_comes_when_the_game_is_up_and_not_at_its_end(self):
        self.stand_in(4294967295)
        starter = self.start_console("start", self.game)
        first = starter.stdout.readline()
        self.assertIn(b'"process":true', first)
        self.assertIsNone(starter.poll())
        self.kill_game()
        self.assertEqual(self.finish(starter).status, 0)

    def test_detached_start_ends_while_the_game_runs_on(self):
        self.stand_in(4294967295)
        answer = self.console("start", self.game, "--detach")
        self.assertEqual((answer.status, answer.line["process"]), (0, True), answer.errors)
        self.assertTrue(self.console("running", self.launcher / "Engine/quake2.exe").line["running"])
        self.assertFalse(self.console("running", self.game / "quake2.exe").line["running"])
        self.kill_game()

    def test_choices_on_the_command_line(self):
        # A game that ends at once still has written its command line.
        self.stand_in(0)
        choices = [
            (("--driver", "KVR", "--mode", "0", "--windowed"), "KVR.dll", "0, 320x240", "0"),
            (("--driver", "KVR", "--mode", "9"), "KVR.dll", "9, 1600x1200", "1"),
            (("--driver", "KVR2", "--mode", "7", "--windowed"), "KVR2.dll", "7, 1152x864", "0"),
            (("--mode", "3"), "KVR2.dll", "3, 640x480", "1"),
        ]
        for arguments, driver, mode, fullscreen in choices:
            with self.subTest(arguments):
                answer = self.console("start", self.game, *arguments)
                self.assertEqual(answer.line["message"], CLOSED_DURING_STARTUP)
                run = self.log()[-1]
                number = mode.split(",")[0]
                self.assertEqual(
                    run["command line"],
                    f"quake2.exe +set vid_ref gl +set gl_driver {driver} +set gl_mode {number}"
                    f" +set vid_fullscreen {fullscreen} +set logfile 1")
                self.assertTrue(run["gl_driver"].startswith(f"{driver}, loaded"), run)
                self.assertEqual((run["gl_mode"], run["vid_fullscreen"]), (mode, fullscreen))
        self.assertEqual(len(self.log()), len(choices))
        # Both drivers lie side by side, and neither replaced the other.
        self.assertTrue((self.game / "KVR.dll").exists() and (self.game / "KVR2.dll").exists())
        self.assertEqual(list(self.game.glob("*.backup-*")), [])

    def test_mode_10_is_refused_before_anything_is_written(self):
        answer = self.console("start", self.game, "--mode", "10")
        self.assertEqual((answer.status, answer.line["message"]), (1, "Unsupported display mode."))
        self.assertFalse((self.game / "KVR2.dll").exists())
        self.assertEqual(self.log(), [])

    def test_smoke_run_plays_the_map_and_quits_by_itself(self):
        answer = self.console("start", self.game, "--smoke")
        self.assertEqual([line.get("message") for line in answer.lines], [LAUNCHED, "Quake II closed."])
        run, = self.log()
        self.assertEqual(
            run["command line"],
            DEFAULT_LINE + " +set fixedtime 100 +map base1" + " +wait" * 20 + " +screenshot +wait +quit")

    def test_game_folder_inside_a_prefix_runs_in_that_prefix(self):
        game = self.make_installation(self.prefix / "drive_c/GOG Games/Quake II")
        self.stand_in(0, folder=game)
        found = self.console("find")
        self.assertEqual(found.line["folder"], str(game))
        # The prefix of the environment would be made anew, and would know the folder by another name.
        self.environment["WINEPREFIX"] = str(self.root / "another prefix")
        answer = self.console("start", game)
        self.environment["WINEPREFIX"] = str(self.prefix)
        self.assertEqual(answer.line["message"], CLOSED_DURING_STARTUP, answer.errors)
        self.assertEqual(self.log(game)[0]["working directory"], "C:\\GOG Games\\Quake II")
        self.assertFalse((self.root / "another prefix").exists())

    def test_game_folder_with_umlauts_and_blanks(self):
        game = self.make_installation(self.root / "Spiele für Größe" / "Quake  Zwei")
        self.stand_in(0, folder=game)
        answer = self.console("start", game)
        self.assertEqual(answer.line["folder"], str(game))
        self.assertEqual(self.log(game)[0]["working directory"], self.windows_path(game))

    def test_a_different_driver_in_the_game_folder_is_kept_as_one_backup(self):
        self.stand_in(0)
        (self.game / "KVR2.dll").write_bytes(b"another driver")
        for _ in range(2):  # The second start finds the right driver there.
            self.console("start", self.game)
        backup, = self.game.glob("KVR2.dll.backup-*")
        self.assertRegex(backup.name, r"^KVR2\.dll\.backup-[0-9]+$")
        self.assertEqual(backup.read_bytes(), b"another driver")
        self.assertEqual((self.game / "KVR2.dll").read_bytes(), (self.launcher / "Drivers/KVR2.dll").read_bytes())


class Ends(WineWorld):
    def end_with(self, exit_code):
        self.stand_in(2500, exit_code)
        answer = self.console("start", self.game)
        self.assertEqual(answer.status, 0, answer.errors)
        return answer.lines[1]

    def test_exit_code_1_in_the_end_sentence(self):
        self.assertEqual(self.end_with(1), {
            "exitCode": 1,
            "message": "Quake II exited with error 1. See baseq2/qconsole.log in the game folder.",
        })

    def test_exit_code_of_an_access_violation_in_full_32_bits(self):
        self.assertEqual(self.end_with(0xC0000005), {
            "exitCode": 3221225477,
            "message": "Quake II exited with error 3221225477. See baseq2/qconsole.log in the game folder.",
        })

    def test_exit_code_whose_low_byte_is_0_is_an_error(self):
        self.assertEqual(self.end_with(256)["exitCode"], 256)

    def test_game_that_quits_with_0_during_startup_is_a_negative_result(self):
        self.stand_in(0)
        answer = self.console("start", self.game)
        self.assertEqual(answer.status, 1)
        self.assertEqual(answer.line, {
            "process": False, "message": CLOSED_DURING_STARTUP, "folder": str(self.game)})
        wait_until(lambda: not lock_is_held(self.lock_file()), "the lock is free")


class Refusals(WineWorld):
    """What is refused on the way, in the order of the checks."""

    def refused(self, *arguments):
        answer = self.console("start", self.game, *arguments)
        self.assertEqual((answer.status, answer.line["process"]), (1, False))
        self.assertEqual(self.log(), [])
        return answer.line

    def test_invalid_folder_gives_the_validations_sentence(self):
        (self.game / "ref_gl.dll").unlink()
        shutil.rmtree(self.launcher / "Engine")
        line = self.refused()
        self.assertEqual(line["message"], "The classic OpenGL renderer (ref_gl.dll) is missing or incompatible.")
        self.assertEqual(line["folder"], "")

    def test_missing_engine(self):
        (self.launcher / "Engine/quake2.exe").unlink()
        self.assertEqual(self.refused()["message"],
                         "The bundled Quake II engine is missing or invalid. Extract the complete package.")

    def test_missing_driver(self):
        (self.launcher / "Drivers/KVR.dll").unlink()
        self.assertEqual(self.refused("--driver", "KVR")["message"],
                         "The selected bundled driver is missing or invalid.")

    def test_missing_game_library(self):
        (self.game / "baseq2/gamex86.dll").unlink()
        line = self.refused()
        self.assertEqual(line["message"], "The classic game DLL baseq2/gamex86.dll is missing or incompatible.")
        self.assertEqual(line["folder"], str(self.game))

    def test_state_folder_that_cannot_be_made_gives_the_install_sentence(self):
        self.environment["LOCALAPPDATA"] = "/dev/null/state"
        self.assertEqual(self.refused()["message"],
                         "Could not install the driver. Close Quake II and check write permission to its folder.")

    def test_state_folder_with_a_folder_in_the_locks_place_gives_the_locks_sentence(self):
        self.lock_file().mkdir(parents=True)
        self.assertEqual(self.refused()["message"],
                         "This installation is already running, or its runtime folder is unavailable.")


if __name__ == "__main__":
    unittest.main()
