"""What the end-to-end tests share: a private world with a launcher, an installation and a Wine prefix of its own.

The build tells where its products are:
  VELORINTH_BIN        folder of the built programs
  VELORINTH_STAND_INS  folder of the stand-in engine, drivers and game files, as built
  VELORINTH_PREFIX     a Wine prefix to copy from (tests with Wine only)
  VELORINTH_SCRATCH    folder for the worlds; on the file system of the prefix, whose files they link to
  WINEDLLPATH          where Wine finds its 32-bit half, unless it is installed
"""

import fcntl
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

BIN = Path(os.environ["VELORINTH_BIN"])
STAND_INS = Path(os.environ["VELORINTH_STAND_INS"])
SCRATCH = Path(os.environ["VELORINTH_SCRATCH"])

# What lies beside the console tool when it starts a game on Linux.
PROGRAMS = ("launch_console", "wine_supervisor", "engine_host.exe", "engine_bridge.exe")

LAUNCHED = "Quake II launched. Its settings will be saved normally."
CLOSED_DURING_STARTUP = "Quake II closed during startup. Check baseq2/qconsole.log in the game folder."
ALREADY_RUNNING = "Quake II is already running. Close it before changing drivers."
LOCKED = "This installation is already running, or its runtime folder is unavailable."
VERIFIED = "Quake II installation verified."

# Seconds. A busy machine with two cores takes most of a minute to make a prefix; only what hangs takes longer than this.
PATIENCE = 150


class Answer:
    """What one call of the console tool gave."""

    def __init__(self, status, output, errors):
        self.status = status
        self.lines = [json.loads(line) for line in output.decode("utf-8").splitlines()]
        self.errors = errors.decode("utf-8", "replace")

    @property
    def line(self):
        if len(self.lines) != 1:
            raise AssertionError(f"one line was expected: {self.lines} {self.errors}")
        return self.lines[0]


def wait_until(condition, what, seconds=PATIENCE):
    """Polls until the condition gives something true, and returns that. The longer it has waited the less often: many a
    condition starts a program or reads of all processes."""
    start = time.monotonic()
    while True:
        value = condition()
        if value:
            return value
        waited = time.monotonic() - start
        if waited > seconds:
            raise AssertionError(f"still waiting after {seconds} s: {what}")
        time.sleep(min(max(waited / 8, 0.002), 0.025))


def link_or_copy(source, target):
    try:
        os.link(source, target)
    except OSError:
        shutil.copy2(source, target)


def lock_is_held(lock_file):
    """Whether somebody holds the lock. Takes it for an instant when nobody does."""
    try:
        descriptor = os.open(lock_file, os.O_RDWR | os.O_CLOEXEC)
    except FileNotFoundError:
        return False
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return False
    except BlockingIOError:
        return True
    finally:
        os.close(descriptor)


class World(unittest.TestCase):
    """A test in a folder of its own: home, state folder, launcher and one installation."""

    def setUp(self):
        SCRATCH.mkdir(parents=True, exist_ok=True)
        self.root = Path(tempfile.mkdtemp(prefix="world-", dir=SCRATCH))
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.home = self.root / "home"
        self.home.mkdir()
        self.state = self.root / "state"
        self.environment = {
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "HOME": str(self.home),
            "XDG_DATA_HOME": str(self.home / ".local/share"),
            "LOCALAPPDATA": str(self.state),
            "WINEPREFIX": str(self.root / "prefix"),
            "WINEDEBUG": "-all",
        }
        for name, value in os.environ.items():
            if name.endswith("SAN_OPTIONS") or name == "WINEDLLPATH":
                self.environment[name] = value
        self.launcher = self.make_launcher("launcher")
        self.game = self.make_installation(self.root / "Quake II")

    def make_launcher(self, name):
        """A launcher folder of its own: games started from one launcher folder exclude each other."""
        folder = self.root / name
        (folder / "Drivers").mkdir(parents=True)
        (folder / "Engine").mkdir()
        for program in PROGRAMS:
            if (BIN / program).exists():
                link_or_copy(BIN / program, folder / program)
        for driver in ("KVR.dll", "KVR2.dll"):
            shutil.copy2(STAND_INS / driver, folder / "Drivers" / driver)
        shutil.copy2(STAND_INS / "quake2.exe", folder / "Engine/quake2.exe")
        return folder

    def make_installation(self, folder):
        (folder / "baseq2").mkdir(parents=True)
        for name in ("quake2.exe", "ref_gl.dll", "baseq2/gamex86.dll", "baseq2/pak0.pak"):
            shutil.copy2(STAND_INS / Path(name).name, folder / name)
        return folder

    def start_console(self, *arguments, launcher=None):
        return subprocess.Popen(
            [os.fsencode((launcher or self.launcher) / "launch_console"), *map(os.fsencode, arguments)],
            env=self.environment,
            cwd=self.root,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        )

    def finish(self, process, timeout=PATIENCE):
        try:
            output, errors = process.communicate(timeout=timeout)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            self.fail(f"no answer within {timeout} s: {process.args}")
        return Answer(process.returncode, output, errors)

    def console(self, *arguments, launcher=None, timeout=PATIENCE):
        return self.finish(self.start_console(*arguments, launcher=launcher), timeout)

    def lock_file(self, folder=None):
        return Path(self.console("runtime-path", folder or self.game).line["runtimePath"] + ".lock")


class WineWorld(World):
    """A world in which games run. Nothing that ran in it is left at the end."""

    def setUp(self):
        super().setUp()
        self.prefix = self.root / "prefix"
        self.copy_prefix(self.prefix)
        self.addCleanup(self.end_wine)

    def copy_prefix(self, target):
        """Links the large and constant files, copies what Wine writes. Other tests run Wine in the template: registry files
        are replaced there at any moment, by way of temporary ones."""
        template = Path(os.environ["VELORINTH_PREFIX"])
        shutil.copytree(template, target, symlinks=True, copy_function=os.link,
                        ignore=shutil.ignore_patterns("*.reg", "reg*.tmp"))
        for registry in template.glob("*.reg"):
            shutil.copy2(registry, target / registry.name)

    def end_wine(self, *kept):
        """Ends all of this world's processes but those kept."""
        environment = {**self.environment, "PATH": os.environ["PATH"]}
        subprocess.run(["wineserver", "-k"], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        wait_until(lambda: not self.processes().keys() - set(kept), "processes of this test end")

    def processes(self):
        """The running processes of this world, as {process id: name}; the test itself isn't one."""
        found = {}
        mark = os.fsencode(f"LOCALAPPDATA={self.state}") + b"\0"
        for entry in Path("/proc").iterdir():
            if not entry.name.isdigit():
                continue
            try:
                if mark in (entry / "environ").read_bytes() + b"\0":
                    found[int(entry.name)] = (entry / "comm").read_text().strip()
            except OSError:
                continue
        return found

    def process_named(self, name):
        for process, its_name in self.processes().items():
            if its_name == name:
                return process
        return None

    def game_process(self):
        return wait_until(lambda: self.process_named("quake2.exe"), "the game runs")

    def kill_game(self):
        os.kill(self.game_process(), signal.SIGKILL)

    def stand_in(self, lifetime_ms, exit_code=0, folder=None):
        """Tells the stand-in engine of an installation how to end."""
        text = f"[stand-in]\nlifetime_ms={lifetime_ms}\nexit_code={exit_code}\n"
        ((folder or self.game) / "stand-in.ini").write_text(text)

    def log(self, folder=None):
        """The runs in the game's log, oldest first, each as {name: value}."""
        path = (folder or self.game) / "baseq2/qconsole.log"
        text = path.read_text(encoding="utf-8") if path.exists() else ""
        runs = []
        for line in text.splitlines():
            if line == "Quake II (stand-in)":
                runs.append({})
                continue
            name, _, value = line.partition(": ")
            runs[-1][name] = value
        return runs

    def windows_path(self, path):
        return "Z:" + str(path).replace("/", "\\")
