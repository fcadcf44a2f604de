"""What lies in the game folder when a system call of the driver's installation fails, or when the process dies there.

A first traced run lists the system calls of one installation. Then the same installation runs again for each of them, with
that call failing (once, or from then on) or with the process killed at it, and the folder is judged afterwards.

INSTALL_ONCE names the program that installs.
"""

import concurrent.futures
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["INSTALL_ONCE"]
ERRORS = ("ENOSPC", "EACCES", "EIO", "EROFS")
# More than one chunk of the copy each, and of different length.
OLD = b"old driver " * 110_000
NEW = b"new driver!" * 100_000
PATIENCE = 60  # seconds; reached only by a run that hangs

CALL = re.compile(r"(\w+)\(")
WRITING_CALLS = re.compile(
    r"p?write(64|v|v2)?|sendfile|copy_file_range|splice|fallocate|f?truncate|f?chmod(at)?|f?chown(at)?|lchown|"
    r"(rename|link|unlink|symlink|mkdir|mknod)(at|at2)?|rmdir|utime(s|nsat)?|futimesat|f?l?(set|remove)xattr|creat"
)
WRITING_FLAGS = re.compile(r"\b(O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND|O_TMPFILE)\b")


def setUpModule():
    tried = subprocess.run(["strace", "-o", "/dev/null", "true"], capture_output=True, text=True)
    if tried.returncode != 0:
        raise unittest.SkipTest("processes can't be traced here: " + tried.stderr.strip())


def installation_calls(log):
    """The lines of a trace between the two marks."""
    lines = log.read_text(errors="replace").splitlines()
    begin = next(i for i, line in enumerate(lines) if '"/installation-begins"' in line)
    end = next(i for i, line in enumerate(lines) if '"/installation-ends"' in line)
    return lines[: begin + 1], lines[begin + 1 : end]


class World:
    """A private folder with the driver to install and a game folder that holds `files`."""

    def __init__(self, files):
        self.root = Path(tempfile.mkdtemp(prefix="velorinth-faults-"))
        self.source = self.root / "KVR2.dll"
        self.game = self.root / "game"
        self.log = self.root / "log"
        self.source.write_bytes(NEW)
        self.game.mkdir()
        for name, content in files.items():
            (self.game / name).write_bytes(content)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.root, ignore_errors=True)

    def command(self, *options):
        return ["strace", "-qq", "-o", self.log, *options, PROGRAM, self.source, self.game / "KVR2.dll"]

    def install(self, *options):
        """Exit status of a traced installation; negative when a signal ended it."""
        return subprocess.run(self.command(*options), capture_output=True, timeout=PATIENCE).returncode

    def files(self):
        return {path.name: path.read_bytes() for path in self.game.iterdir()}

    def stamps(self):
        return {path.name: (path.stat().st_ino, path.stat().st_mtime_ns) for path in self.game.iterdir()}


class Case:
    """A state of the game folder before the installation, and how to judge what a failed one leaves."""

    def __init__(self, files):
        self.files = files
        self.name = next(iter(files), "KVR2.dll")

    def points(self):
        """The system calls of an installation without faults: name and how many of that name came before."""
        with World(self.files) as world:
            if world.install() != 0:
                raise AssertionError("the installation fails without a fault")
            before, during = installation_calls(world.log)
        counts = {}
        points = []
        for index, line in enumerate(before + during):
            match = CALL.match(line)
            if not match:
                continue
            call = match.group(1)
            # The kernel reports a failed brk by the old end of the heap; an error code in its place is a success to libc.
            if call == "brk":
                continue
            counts[call] = counts.get(call, 0) + 1
            if index >= len(before):
                points.append((call, counts[call]))
        return points

    def judge(self, files, status):
        """What is wrong with the folder after an installation; empty when it is as promised."""
        target = files.pop(self.name, None)
        # Where the spelling in the folder couldn't be looked up, the backup bears the name that was asked for.
        backups = [files.pop(name) for name in list(files) if name.lower().startswith("kvr2.dll.backup-")]
        old = self.files.get(self.name)
        if files:
            return f"other files appeared: {sorted(files)}"
        if len(backups) > 1:
            return "more than one backup"
        if status == 0:
            expected = [old] if old not in (None, NEW) else []
            return "" if target == NEW and backups == expected else "success was reported without being one"
        if old is None:
            if backups:
                return "a backup of nothing"
            return "" if target is None or status < 0 else "a failed first installation left its file"
        if target != old and backups != [old]:
            return "the old driver is lost"
        if backups and backups != [old] and status > 0:
            return "an incomplete backup stayed"
        return ""


REPLACED = Case({"KVR2.dll": OLD})
OTHER_CASE = Case({"kvr2.dll": OLD})
FIRST = Case({})
IDENTICAL = Case({"KVR2.dll": NEW})


class InstallationFaults(unittest.TestCase):
    def run_all(self, case, faults):
        """Runs an installation for each fault: a label and what strace is told to inject."""

        def run(fault):
            label, injection = fault
            with World(case.files) as world:
                before = world.stamps()
                status = world.install("-e", "inject=" + injection)
                problem = ""
                if status not in (0, 1, -9):
                    problem = f"exit status {status}"
                elif status >= 0 and "INJECTED" not in world.log.read_text(errors="replace"):
                    problem = "the fault did not happen"
                elif "SIGKILL" in injection and status != -9:
                    problem = "the process was not killed"
                elif case is IDENTICAL and world.stamps() != before:
                    problem = "an identical driver was touched"
                return label, problem or case.judge(world.files(), status)

        with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
            problems = [f"{label}: {problem}" for label, problem in pool.map(run, faults) if problem]
        self.assertEqual(problems, [])

    def fail_each_call(self, case, lasting):
        self.run_all(
            case,
            [
                (f"{call} {count}{lasting} {error}", f"{call}:error={error}:when={count}{lasting}")
                for call, count in case.points()
                for error in ERRORS
            ],
        )

    def kill_at_each_call(self, case):
        self.run_all(
            case,
            [(f"{call} {count} SIGKILL", f"{call}:signal=SIGKILL:when={count}") for call, count in case.points()],
        )

    def test_calls_under_test_are_those_of_an_installation(self):
        calls = [call for call, _ in REPLACED.points()]
        self.assertGreaterEqual(calls.count("read"), 4)
        self.assertGreaterEqual(calls.count("write"), 4)
        self.assertEqual(calls.count("fsync"), 2)
        self.assertLess({"openat", "close"}, set(calls))
        # The backup is on the disk before the file under its name is emptied.
        self.assertLess(calls.index("fsync"), calls.index("ftruncate"))

    def test_replacement_with_each_call_failing_once(self):
        self.fail_each_call(REPLACED, lasting="")

    def test_replacement_with_each_call_failing_from_then_on(self):
        self.fail_each_call(REPLACED, lasting="+")

    def test_replacement_killed_at_each_call(self):
        self.kill_at_each_call(REPLACED)

    def test_replacement_of_a_file_in_other_case_with_each_call_failing_once(self):
        self.fail_each_call(OTHER_CASE, lasting="")

    def test_replacement_of_a_file_in_other_case_killed_at_each_call(self):
        self.kill_at_each_call(OTHER_CASE)

    def test_first_installation_with_each_call_failing_once(self):
        self.fail_each_call(FIRST, lasting="")

    def test_first_installation_killed_at_each_call(self):
        self.kill_at_each_call(FIRST)

    def test_identical_driver_with_each_call_failing_once(self):
        self.fail_each_call(IDENTICAL, lasting="")

    def test_identical_driver_killed_at_each_call(self):
        self.kill_at_each_call(IDENTICAL)


class ReadOnlyFolder(unittest.TestCase):
    def install(self, world):
        """Installs with the game folder read-only in earnest; returns the exit status."""
        mounted = ["unshare", "--mount", "sh", "-c",
                   'mount --bind "$0" "$0" && mount -o remount,bind,ro "$0" && ! touch "$0/probe" && exec "$@"', world.game]
        if os.geteuid() == 0 and subprocess.run([*mounted, "true"], capture_output=True).returncode == 0:
            return subprocess.run([*mounted, *world.command()], capture_output=True, timeout=PATIENCE).returncode

        # Permissions do as well, for whoever isn't the administrator.
        program = shutil.copy(PROGRAM, world.root)
        command = [program if part == PROGRAM else part for part in world.command()]
        for path in world.game.iterdir():
            path.chmod(0o444)
        world.game.chmod(0o555)
        world.root.chmod(0o777)
        other = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}
        try:
            return subprocess.run(command, capture_output=True, timeout=PATIENCE, **other).returncode
        finally:
            world.game.chmod(0o755)

    def test_identical_driver_costs_no_write(self):
        with World({"KVR2.dll": NEW}) as world:
            before = world.stamps()
            self.assertEqual(self.install(world), 0)
            self.assertEqual(world.stamps(), before)
            _, calls = installation_calls(world.log)
        self.assertTrue(any("KVR2.dll" in line for line in calls))
        writing = [line for line in calls
                   if WRITING_CALLS.fullmatch(CALL.match(line).group(1)) or WRITING_FLAGS.search(line)]
        self.assertEqual(writing, [])

    def test_different_driver_fails_and_the_folder_stays_as_it_is(self):
        with World({"KVR2.dll": OLD}) as world:
            before = world.stamps()
            self.assertEqual(self.install(world), 1)
            self.assertEqual(world.stamps(), before)
            self.assertEqual(world.files(), {"KVR2.dll": OLD})

    def test_first_installation_fails(self):
        with World({}) as world:
            self.assertEqual(self.install(world), 1)
            self.assertEqual(world.files(), {})


if __name__ == "__main__":
    unittest.main(verbosity=2)
