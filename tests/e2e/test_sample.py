"""The stand-in engine on a display, and a real package in the stand-ins' place."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import STAND_INS, WineWorld, wait_until

PLACE = Path(os.environ["VELORINTH_PLACE"])
TITLE = "Quake II (stand-in)"


class Window(WineWorld):
    def setUp(self):
        super().setUp()
        reader, writer = os.pipe()
        # Without -noreset the server starts over when its only client leaves, and takes a window manager that is just
        # connecting down with it.
        screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1920x1440x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(screen.wait)
        self.addCleanup(screen.terminate)
        os.close(writer)
        with os.fdopen(reader) as display:
            self.environment["DISPLAY"] = ":" + display.readline().strip()
        manager = subprocess.Popen(["openbox"], env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        # Wine must go before its display does.
        self.addCleanup(self.end_wine, manager.pid)
        wait_until(self.is_managed, "the window manager")

    def is_managed(self):
        answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.environment, text=True,
                                capture_output=True, timeout=30, check=False).stdout
        return "window id" in answer

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, text=True, capture_output=True,
                              timeout=30, check=False).stdout

    def open_window(self, *arguments):
        self.starter = self.start_console("start", self.game, "--windowed", *arguments)
        return wait_until(self.visible_windows, "the window")[0]

    def visible_windows(self):
        return self.xdotool("search", "--onlyvisible", "--name", f"^{re.escape(TITLE)}$").split()

    def press_until_it_closes(self, window, key):
        """A window that has just appeared may not have the keyboard yet: a person would press the key again."""
        def closed():
            return window not in self.visible_windows()

        for _ in range(10):
            self.xdotool("windowactivate", window)
            self.xdotool("key", key)
            try:
                return wait_until(closed, f"{key} closes the window", seconds=5)
            except AssertionError:
                continue
        self.fail(f"{key} does not close the window")

    def test_window_of_the_modes_size_lives_until_escape(self):
        window = self.open_window("--mode", "1")
        self.assertIn('"process":true', self.starter.stdout.readline().decode())
        self.assertIn("Geometry: 400x300\n", self.xdotool("getwindowgeometry", window))
        self.assertEqual(self.xdotool("getwindowname", window), TITLE + "\n")
        self.assertEqual(self.log()[0]["display"], "yes")
        self.press_until_it_closes(window, "Escape")
        self.assertEqual(self.finish(self.starter).line, {"exitCode": 0, "message": "Quake II closed."})

    def test_window_is_closed_like_any_other(self):
        window = self.open_window()
        self.assertIn('"process":true', self.starter.stdout.readline().decode())
        self.press_until_it_closes(window, "alt+F4")
        self.assertEqual(self.finish(self.starter).line["exitCode"], 0)

    def test_window_closes_by_itself_when_its_time_is_over(self):
        self.stand_in(2500, 7)
        self.open_window()
        self.assertEqual(self.finish(self.starter).lines[1]["exitCode"], 7)

    def test_smoke_run_shows_no_window(self):
        self.stand_in(2500)
        starter = self.start_console("start", self.game, "--smoke")
        wait_until(self.log, "the engine runs")
        while starter.poll() is None:
            self.assertEqual(self.visible_windows(), [])
        self.assertEqual(self.finish(starter).status, 0)


class Placing(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.stand_ins = self.root / "stand-ins"
        shutil.copytree(STAND_INS, self.stand_ins)
        self.engine = self.root / "build/bin/Engine/quake2.exe"
        self.place()

    def place(self):
        subprocess.run(["cmake", "-D", f"STAND_INS={self.stand_ins}", "-D", f"PLACED={self.root}/placed", "-D",
                        f"BUILD={self.root}/build", "-P", PLACE], check=True, stdout=subprocess.DEVNULL)

    def test_all_files_are_placed(self):
        files = {str(file.relative_to(self.root / "build")) for file in (self.root / "build").rglob("*.*")}
        self.assertEqual(files, {
            "bin/Engine/quake2.exe", "bin/Drivers/KVR.dll", "bin/Drivers/KVR2.dll", "sample/Quake II/quake2.exe",
            "sample/Quake II/ref_gl.dll", "sample/Quake II/baseq2/gamex86.dll", "sample/Quake II/baseq2/pak0.pak"})
        self.assertEqual(self.engine.read_bytes(), (STAND_INS / "quake2.exe").read_bytes())

    def test_a_players_file_stays(self):
        self.engine.write_bytes(b"a real engine")
        (self.stand_ins / "quake2.exe").write_bytes(b"a newer stand-in")
        self.place()
        self.assertEqual(self.engine.read_bytes(), b"a real engine")

    def test_a_stand_in_follows_its_sources_and_comes_back_when_it_was_removed(self):
        (self.stand_ins / "quake2.exe").write_bytes(b"a newer stand-in")
        self.place()
        self.assertEqual(self.engine.read_bytes(), b"a newer stand-in")
        self.engine.unlink()
        self.place()
        self.assertEqual(self.engine.read_bytes(), b"a newer stand-in")

    def test_an_unchanged_stand_in_is_not_written(self):
        def written():
            state = self.engine.stat()
            return state.st_ino, state.st_mtime_ns, state.st_ctime_ns

        before = written()
        self.place()
        self.assertEqual(written(), before)


if __name__ == "__main__":
    unittest.main()
