"""What `cmake --install` puts where, and that it works from there.

  VELORINTH_BUILD  the build folder that is installed from
  VELORINTH_CMAKE  the cmake that made it
"""

import os
import re
import shutil
import struct
import subprocess
import unittest
from pathlib import Path

from support import LAUNCHED, STAND_INS, VERIFIED, WineWorld, World

BUILD = Path(os.environ["VELORINTH_BUILD"])
CMAKE = os.environ["VELORINTH_CMAKE"]
SIZES = (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)


def cached(name):
    """A value of the build's cache."""
    return re.search(rf"^{name}:\w+=(.*)$", (BUILD / "CMakeCache.txt").read_text(), re.MULTILINE).group(1)


PROGRAMS = Path(cached("CMAKE_INSTALL_LIBDIR")) / "velorinth-launcher"
SHARE = Path("share")
DOCUMENTS = SHARE / "doc/velorinth-launcher"


def expected_files():
    names = {
        Path("bin/velorinth-launcher"),
        SHARE / "applications/velorinth-launcher.desktop",
        SHARE / "metainfo/com.velorinth.launcher.metainfo.xml",
        SHARE / "icons/hicolor/scalable/apps/velorinth-launcher.svg",
        *(DOCUMENTS / name for name in ("LICENSE", "fonts-open-sans", "Apache-2.0")),
        *(PROGRAMS / name for name in ("velorinth-launcher", "launch_console", "wine_supervisor", "engine_host.exe",
                                       "engine_bridge.exe")),
    }
    names |= {SHARE / f"icons/hicolor/{size}x{size}/apps/velorinth-launcher.png" for size in SIZES}
    if cached("VELORINTH_INSTALL_SAMPLE") == "ON":
        names |= {PROGRAMS / name for name in ("Drivers/KVR.dll", "Drivers/KVR2.dll", "Engine/quake2.exe")}
    return names


def install(prefix):
    """Gives the folder of the installed programs."""
    subprocess.run([CMAKE, "--install", BUILD, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    return prefix / PROGRAMS


class InstallTest(World):
    def setUp(self):
        super().setUp()
        self.prefix = self.root / "usr"
        self.programs = install(self.prefix)

    def test_every_file_is_there_and_no_other(self):
        found = {path.relative_to(self.prefix) for path in self.prefix.rglob("*") if not path.is_dir()}
        self.assertEqual(found, expected_files())

    def test_there_are_folders_for_the_players_drivers_and_engine(self):
        for name in ("Drivers", "Engine"):
            self.assertTrue((self.programs / name).is_dir())

    def test_the_program_on_the_path_is_a_link_that_survives_a_move(self):
        link = self.prefix / "bin/velorinth-launcher"
        self.assertFalse(os.path.isabs(os.readlink(link)))
        self.assertEqual(link.resolve(), self.programs.resolve() / "velorinth-launcher")
        moved = self.root / "moved"
        self.prefix.rename(moved)
        self.assertTrue(os.access(moved / "bin/velorinth-launcher", os.X_OK))

    def test_icons_have_the_sizes_of_their_folders(self):
        for size in SIZES:
            data = (self.prefix / SHARE / f"icons/hicolor/{size}x{size}/apps/velorinth-launcher.png").read_bytes()
            self.assertEqual(struct.unpack(">II", data[16:24]), (size, size))

    def test_the_entry_starts_the_installed_program_and_names_its_icon_and_window(self):
        entry = (self.prefix / SHARE / "applications/velorinth-launcher.desktop").read_text().splitlines()
        for line in ("Exec=velorinth-launcher", "Icon=velorinth-launcher", "StartupWMClass=velorinth-launcher"):
            self.assertIn(line, entry)

    def test_the_installed_console_tool_validates_a_game(self):
        self.assertEqual(self.console("validate", self.game, launcher=self.programs).line["message"], VERIFIED)

    def test_the_installed_launcher_runs_up_to_the_missing_display(self):
        environment = {name: value for name, value in self.environment.items() if name != "DISPLAY"}
        done = subprocess.run([self.prefix / "bin/velorinth-launcher"], env=environment, cwd=self.root, check=False,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
        self.assertEqual(done.returncode, 2, done.stdout)


class InstalledGameTest(WineWorld):
    def test_a_game_starts_with_the_drivers_and_the_engine_beside_the_installed_programs(self):
        programs = install(self.root / "usr")
        for source, target in (("KVR.dll", "Drivers"), ("KVR2.dll", "Drivers"), ("quake2.exe", "Engine")):
            shutil.copy2(STAND_INS / source, programs / target / source)
        self.stand_in(lifetime_ms=2500, exit_code=0)
        answer = self.console("start", self.game, "--driver", "KVR", launcher=programs)
        self.assertEqual([line["message"] for line in answer.lines], [LAUNCHED, "Quake II closed."])
        self.assertEqual((self.game / "KVR.dll").read_bytes(), (STAND_INS / "KVR.dll").read_bytes())
