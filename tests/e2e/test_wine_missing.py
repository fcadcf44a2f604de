"""Machines that can't run the engine: a failed start with the system's code, and never a game that "ran"."""

import unittest
from pathlib import Path

from support import WineWorld, lock_is_held


class WineMissing(WineWorld):
    def assert_failed_start(self, code):
        answer = self.console("start", self.game)
        self.assertEqual(answer.status, 1)
        self.assertEqual(answer.line, {
            "process": False,
            "message": f"Windows could not launch Quake II (error {code}).",
            "folder": str(self.game),
        })
        self.assertFalse((self.game / "baseq2/qconsole.log").exists())
        self.assertFalse(lock_is_held(self.lock_file()))
        self.assertTrue((self.game / "KVR2.dll").exists(), "the driver stays installed")
        return answer.errors

    def test_without_wine_the_start_fails_with_error_2(self):
        programs = self.root / "programs"
        programs.mkdir()
        self.environment["PATH"] = str(programs)
        errors = self.assert_failed_start(2)
        self.assertRegex(errors, "(?i)wine")

    @unittest.skipIf(Path("/usr/lib/wine/wine").exists(), "the installed Wine runs 32-bit programs")
    def test_without_the_32_bit_half_the_start_fails_with_error_193(self):
        self.environment.pop("WINEDLLPATH", None)
        # A prefix that was made with that half has copies of its libraries.
        self.environment["WINEPREFIX"] = str(self.root / "new prefix")
        errors = self.assert_failed_start(193)
        self.assertRegex(errors, "32")


if __name__ == "__main__":
    unittest.main()
