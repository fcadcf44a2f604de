"""The console tool itself: its output, its exit statuses, its usage text. No game is started."""

import json
import os
import subprocess
import unittest

from support import VERIFIED, World

SEARCH_FAILED = "No classic Quake II installation found. Use Browse for game."


class WrongUsage(World):
    def test_wrong_usage_gives_status_2_and_the_usage_text_on_standard_error(self):
        wrong = [
            (),
            ("launch",),
            ("validate",),
            ("validate", "a", "b"),
            ("validate", "--fast", "a"),
            ("find", "a"),
            ("find", "--preferred"),
            ("candidates", "a"),
            ("browse", "a"),
            ("values", "file"),
            ("values", "file", 'ke"y'),
            ("pe",),
            ("pak",),
            ("runtime-path",),
            ("install", "source"),
            ("running",),
            ("start",),
            ("start", "dir", "--driver", "KVR3"),
            ("start", "dir", "--driver"),
            ("start", "dir", "--mode", "four"),
            ("start", "dir", "--mode", ""),
            ("start", "dir", "--mode", "4 "),
            ("start", "dir", "--mode", "-1"),
            ("start", "dir", "--mode", "4294967296"),
            ("start", "dir", "--fullscreen"),
            ("start", "dir", "--mode", "4", "--mode", "5"),
            ("settings", "--mode", "x"),
            ("settings", "--mode", "2147483648"),
            ("settings", "--driver", "kvr"),
            ("settings", "--windowed", "--fullscreen"),
            ("settings", "folder"),
        ]
        for arguments in wrong:
            with self.subTest(arguments):
                answer = self.console(*arguments)
                self.assertEqual((answer.status, answer.lines), (2, []))
                self.assertIn("usage: launch_console validate DIR\n", answer.errors)
        self.assertFalse(self.state.exists(), "wrong usage touches nothing")

    def test_help_is_a_positive_result_on_standard_output(self):
        process = self.start_console("--help")
        output, errors = process.communicate(timeout=10)
        self.assertEqual((process.returncode, errors), (0, b""))
        for call in ("validate", "find", "candidates", "browse", "values", "pe", "pak", "runtime-path", "install",
                     "running", "start", "settings"):
            self.assertIn(f"launch_console {call}".encode(), output)

    def test_a_name_that_begins_with_a_dash_follows_two_dashes(self):
        (self.root / "-file").write_bytes(b"")
        self.assertEqual(self.console("pe", "-file").status, 2)
        self.assertEqual(self.console("pe", "--", "-file").line, {"valid": False})


class Output(World):
    def raw(self, *arguments):
        process = self.start_console(*arguments)
        output, _ = process.communicate(timeout=10)
        return output.decode("utf-8")

    def test_fields_and_their_order(self):
        folder = json.dumps(str(self.game))
        self.assertEqual(
            self.raw("validate", self.game),
            f'{{"folder":{folder},"message":"{VERIFIED}","cancelled":false,"selectedFolder":""}}\n')
        self.assertEqual(self.raw("pe", self.game / "quake2.exe"), '{"valid":true}\n')
        self.assertEqual(self.raw("pak", self.game / "baseq2/pak0.pak"), '{"valid":true}\n')
        self.assertEqual(self.raw("running", self.game / "quake2.exe"), '{"running":false}\n')
        self.assertEqual(self.raw("settings"), '{"folder":"","modern":true,"fullscreen":true,"mode":4}\n')
        self.assertEqual(self.raw("start", self.game, "--mode", "10"),
                         '{"process":false,"message":"Unsupported display mode.","folder":""}\n')
        self.assertEqual(self.raw("install", self.game / "ref_gl.dll", self.game / "new.dll"), '{"installed":true}\n')
        self.assertRegex(self.raw("install", self.game / "missing", self.game / "new.dll"),
                         r'^{"installed":false,"error":".+"}\n$')
        self.assertRegex(self.raw("runtime-path", self.game),
                         r'^{"runtimePath":"' + str(self.state) + r'/VelorinthLauncher/Quake2-[0-9]{1,20}"}\n$')

    def test_exit_status_tells_positive_from_negative(self):
        valid, invalid = self.game, self.game / "baseq2"
        for arguments, status in [
            (("validate", valid), 0), (("validate", invalid), 1),
            (("find", "--preferred", valid), 0), (("find", "--preferred", invalid), 1),
            (("candidates",), 0),
            (("values", valid / "missing", "path"), 0),
            (("pe", valid / "quake2.exe"), 0), (("pe", valid / "missing"), 1),
            (("pak", valid / "baseq2/pak0.pak"), 0), (("pak", valid / "quake2.exe"), 1),
            (("runtime-path", valid), 0),
            (("install", valid / "ref_gl.dll", self.root / "copy"), 0), (("install", valid / "no", self.root / "copy"), 1),
            (("running", valid / "quake2.exe"), 1),
            (("start", invalid), 1),
            (("settings",), 0),
        ]:
            with self.subTest(arguments):
                self.assertEqual(self.console(*arguments).status, status)

    def test_name_that_is_not_utf8_is_found_and_shown_with_the_replacement_character(self):
        name = os.fsencode(self.root) + b"/Quake \xff II"
        os.rename(self.game, name)
        answer = self.console("validate", name)
        self.assertEqual(answer.status, 0)
        self.assertEqual(answer.line["folder"], f"{self.root}/Quake � II")

    def test_value_that_is_not_utf8_is_shown_with_the_replacement_character(self):
        file = self.root / "values.vdf"
        file.write_bytes(b'"path" "a\xffb" { "path"\t"C:\\\\Games" } "Path" "no"')
        self.assertEqual(self.console("values", file, "path").line, {"values": ["a�b", "C:\\Games"]})

    def test_failure_of_the_state_folder_is_told_on_standard_error(self):
        self.environment["LOCALAPPDATA"] = "/dev/null/state"
        for arguments in (("runtime-path", self.game), ("settings", "--mode", "3")):
            with self.subTest(arguments):
                answer = self.console(*arguments)
                self.assertEqual((answer.status, answer.lines), (1, []))
                self.assertIn("create_directories", answer.errors)

    def test_output_that_cannot_be_written_is_no_positive_result(self):
        with open("/dev/full", "wb") as full:
            process = subprocess.run([self.launcher / "launch_console", "pe", self.game / "quake2.exe"],
                                     env=self.environment, stdout=full, stderr=subprocess.PIPE, timeout=10, check=False)
        self.assertEqual((process.returncode, process.stderr), (1, b"The result could not be written.\n"))


class Search(World):
    def test_nothing_found(self):
        self.assertEqual(self.console("find").line, {
            "folder": "", "message": SEARCH_FAILED, "cancelled": False, "selectedFolder": ""})

    def test_preferred_folder_wins_over_what_the_search_would_find(self):
        self.make_installation(self.home / "Games/Quake2")
        self.assertEqual(self.console("find", "--preferred", self.game).line["folder"], str(self.game))
        self.assertEqual(self.console("find").line["folder"], str(self.home / "Games/Quake2"))

    def test_candidates_in_the_order_in_which_find_takes_them(self):
        steam = self.home / ".local/share/Steam"
        library = self.root / "second disk"
        (steam / "steamapps").mkdir(parents=True)
        (steam / "steamapps/libraryfolders.vdf").write_text(
            f'"libraryfolders"\n{{\n  "1"\n  {{\n    "path"\t\t"{library}"\n  }}\n}}\n')
        (library / "steamapps").mkdir(parents=True)
        (library / "steamapps/appmanifest_2320.acf").write_text('"AppState" { "installdir" "Quake II Classic" }')
        candidates = self.console("candidates").line["candidates"]
        own = [folder for folder in candidates if folder.startswith(str(self.root))]
        at = own.index(str(library / "steamapps/common/Quake II Classic"))
        self.assertLess(own.index(str(steam / "steamapps/common/Quake 2")), at)
        self.assertEqual(own[at + 1], str(library / "steamapps/common/Quake 2"))
        self.assertLess(at, own.index(str(self.home / "Quake2")))

        self.make_installation(self.home / "Quake2")
        self.assertEqual(self.console("find").line["folder"], str(self.home / "Quake2"))
        self.make_installation(library / "steamapps/common/Quake II Classic")
        self.assertEqual(self.console("find").line["folder"], str(library / "steamapps/common/Quake II Classic"))

    def test_manifest_that_is_not_utf8_ends_the_whole_search(self):
        steam = self.home / ".local/share/Steam/steamapps"
        steam.mkdir(parents=True)
        (steam / "appmanifest_2320.acf").write_bytes(b'"installdir" "Quake \xff"')
        self.make_installation(self.home / "Quake2")
        answer = self.console("find")
        self.assertEqual(answer.status, 1)
        self.assertEqual(answer.line["message"], "Could not inspect the installation. Try another folder.")
        self.assertEqual(self.console("candidates").status, 1)


if __name__ == "__main__":
    unittest.main()
