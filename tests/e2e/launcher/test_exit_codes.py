"""What the launcher's end says of its run, and what it says in the terminal. It shows no message on any of these paths."""

import os
import subprocess
import unittest

from player import TITLE
from screen import PATIENCE, Screen, wait_until
from support import BIN

LAUNCHER = BIN / "velorinth-launcher"
NO_MEMORY = os.environ["VELORINTH_NO_MEMORY"]

# The start as it is logged.
BEGUN = ("[Tamborel] Initialize: setting DPI awareness.\n"
         "[Tamborel] Initialize: calling CoInitializeEx.\n"
         "[Tamborel] Initialize: creating devices.\n")
NO_DISPLAY = "The X display could not be opened: DISPLAY names none that runs.\n"
NO_VULKAN = "No usable Vulkan driver was found. Install the package mesa-vulkan-drivers.\n"


class ExitCodes(Screen):
    def setUp(self):
        super().setUp()
        self.state = self.scratch / "state"
        self.environment["LOCALAPPDATA"] = str(self.state)

    def run_launcher(self, **changes):
        environment = {**self.environment, **changes}
        return subprocess.run([LAUNCHER], env={name: value for name, value in environment.items() if value is not None},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              timeout=PATIENCE, check=False)

    def start_and_close(self, *arguments):
        """The exit code and standard error of a run that its user ends with the close button."""
        errors = self.scratch / "errors"
        with errors.open("wb") as file:
            process = subprocess.Popen([LAUNCHER, *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=file)
        self.addCleanup(process.wait, PATIENCE)
        self.addCleanup(process.kill)
        window = wait_until(lambda: self.search(process), "the launcher's window")
        # The screen's first frame, which comes after the window's, saves the settings.
        wait_until((self.state / "VelorinthLauncher/launcher.ini").exists, "the launcher's screen")
        place = self.where(window)
        self.click(place["x"] + place["width"] - 30, place["y"] + 18)
        return process.wait(PATIENCE), errors.read_text(encoding="utf-8")

    def search(self, process):
        found = subprocess.run(["xdotool", "search", "--all", "--onlyvisible", "--pid", str(process.pid), "--name",
                                f"^{TITLE}$"], env=self.environment, stdout=subprocess.PIPE, timeout=PATIENCE,
                               check=False)
        return int(found.stdout.split()[0]) if found.stdout.split() else None

    def test_window_closed_by_its_user_is_0(self):
        code, said = self.start_and_close()
        self.assertEqual(code, 0)
        self.assertTrue(said.startswith(BEGUN), said)
        self.assertNotIn("FAILED", said)

    def test_arguments_change_nothing(self):
        code, said = self.start_and_close("--help", "--smoke-test", "--developer", "/?", "")
        self.assertEqual(code, 0)
        self.assertTrue(said.startswith(BEGUN), said)

    def test_toolkit_that_cannot_start_is_1(self):
        for display in (self.environment["DISPLAY"], None):
            with self.subTest(display=display):
                ended = self.run_launcher(DISPLAY=display, LD_PRELOAD=NO_MEMORY,
                                          VELORINTH_NO_MEMORY_AFTER="creating devices.")
                self.assertEqual(ended.returncode, 1, ended.stderr)
                # Nothing is said of the display: no window is tried.
                self.assertRegex(ended.stderr, "^" + BEGUN.replace("[", "\\[").replace(".", "\\.")
                                 + "(\\[Tamborel\\] FAILED 0x8007000E \\(.*\\)\n  expr : .*\n  at   : .*\n){2}$")
                self.assertIn("  expr : CreateDevices()\n", ended.stderr)
                self.assertFalse(self.state.exists())

    def test_no_display_is_2(self):
        for display in (None, "", ":4095", "nowhere:0"):
            with self.subTest(display=display):
                ended = self.run_launcher(DISPLAY=display)
                self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (2, "", BEGUN + NO_DISPLAY))
        self.assertFalse(self.state.exists(), "settings of a launcher that never had a screen")

    def test_no_vulkan_device_is_2(self):
        nowhere = str(self.scratch / "nowhere.json")
        ended = self.run_launcher(VK_DRIVER_FILES=nowhere, VK_ICD_FILENAMES=nowhere)
        self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (2, "", BEGUN + NO_VULKAN))
        self.assertFalse(self.state.exists())


if __name__ == "__main__":
    unittest.main()
