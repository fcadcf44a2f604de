"""launcher.ini through the console tool: what is kept, and what a damaged file loads as."""

import os
import shutil
import unittest

from support import World

DEFAULTS = {"folder": "", "modern": True, "fullscreen": True, "mode": 4}
QUICK = 5


class Settings(World):
    def setUp(self):
        super().setUp()
        self.file = self.state / "VelorinthLauncher/launcher.ini"

    def write(self, content):
        self.file.parent.mkdir(parents=True, exist_ok=True)
        self.file.write_bytes(content)

    def load(self):
        answer = self.console("settings", timeout=QUICK)
        self.assertEqual(answer.status, 0)
        return answer.line

    def test_choices_are_kept(self):
        self.console("settings", "--folder", "/games/Größe/Quake II", "--driver", "KVR", "--mode", "7", "--windowed")
        self.assertEqual(self.load(), {
            "folder": "/games/Größe/Quake II", "modern": False, "fullscreen": False, "mode": 7})
        self.console("settings", "--fullscreen")
        self.assertEqual(self.load(), {
            "folder": "/games/Größe/Quake II", "modern": False, "fullscreen": True, "mode": 7})

    def test_loading_makes_no_file(self):
        self.assertEqual(self.load(), DEFAULTS)
        self.assertFalse(self.file.exists())

    def test_mode_is_saved_as_given_and_clamped_when_loaded(self):
        for given, loaded in (("12", 9), ("-1", 0), ("2147483647", 9), ("-2147483648", 0)):
            with self.subTest(given):
                self.assertEqual(self.console("settings", "--mode", given).line["mode"], int(given))
                self.assertEqual(self.load()["mode"], loaded)

    def test_deleted_state_folder_comes_back(self):
        self.console("settings", "--mode", "3")
        shutil.rmtree(self.state)
        self.console("runtime-path", self.game)
        self.assertTrue(self.file.parent.is_dir())
        shutil.rmtree(self.state)
        self.console("settings", "--mode", "5")
        self.assertEqual(self.load()["mode"], 5)

    def test_folder_that_is_not_utf8_is_kept(self):
        folder = os.fsencode(self.root) + b"/Quake \xff"
        os.rename(self.game, folder)
        self.console("settings", "--folder", folder)
        self.assertEqual(self.load()["folder"], f"{self.root}/Quake �")

    def test_folder_of_4000_characters_is_kept(self):
        folder = "/" + "/".join(["f" * 249] * 16)
        self.console("settings", "--folder", folder)
        self.assertEqual(self.load()["folder"], folder)

    def test_files_that_load_as_told(self):
        body = b"[Launcher]\r\nFolder=/games/q2\r\nModern=0\r\nFullscreen=0\r\nMode=2\r\n"
        told = {"folder": "/games/q2", "modern": False, "fullscreen": False, "mode": 2}
        long_line = b"Long=" + b"x" * (1 << 20) + b"\r\n"
        for name, content in {
            "CRLF": body,
            "byte order mark": b"\xef\xbb\xbf" + body,
            "LF": body.replace(b"\r\n", b"\n"),
            "no line end at the end": body.rstrip(),
            "UTF-16 with its mark": b"\xff\xfe" + body.decode().encode("utf-16-le"),
            "a line of 1 MiB before": b"[Launcher]\r\n" + long_line + body.replace(b"[Launcher]\r\n", b""),
            "a second section of that name": body + b"[Launcher]\r\nMode=8\r\n",
        }.items():
            with self.subTest(name):
                self.write(content)
                self.assertEqual(self.load(), told)

    def test_files_that_load_as_defaults(self):
        for name, content in {
            "empty": b"",
            "another section": b"[Other]\nMode=2\n",
            "zeros": b"\0" * 4096,
            "a section without an end": b"[Launcher\nMode=2",
        }.items():
            with self.subTest(name):
                self.write(content)
                self.assertEqual(self.load(), DEFAULTS)

    def test_files_that_are_no_files_load_as_defaults_at_once(self):
        self.file.parent.mkdir(parents=True)
        self.file.mkdir()
        self.assertEqual(self.load(), DEFAULTS)
        self.file.rmdir()
        os.mkfifo(self.file)
        self.assertEqual(self.load(), DEFAULTS)
        self.file.unlink()
        self.file.symlink_to("/dev/zero")
        self.assertEqual(self.load(), DEFAULTS)

    def test_huge_file_is_answered_at_once(self):
        self.write(b"[Launcher]\nMode=2\n")
        os.truncate(self.file, 1 << 36)
        self.assertIn(self.load()["mode"], (2, 4))

    def test_saving_over_what_is_no_file_is_answered_at_once(self):
        self.file.parent.mkdir(parents=True)
        os.mkfifo(self.file)
        self.assertEqual(self.console("settings", "--mode", "6", timeout=QUICK).status, 0)


if __name__ == "__main__":
    unittest.main()
