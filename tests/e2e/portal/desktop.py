"""A desktop of its own for a test: X server, session bus with the file chooser portal, window manager.

As a program it runs a command there:  desktop.py COMMAND [ARGUMENT...]
"""

import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PR_SET_CHILD_SUBREAPER = 36
SERVICES = pathlib.Path("/usr/share/dbus-1/services")
PORTAL = "org.freedesktop.portal.Desktop"
BACK_END = "org.freedesktop.impl.portal.desktop.gtk"

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{services}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def wait_for(condition, what, seconds=30):
    """The first true value of condition(), asked for until a deadline."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"{what}: not within {seconds} s")
        time.sleep(0.02)


def children(parent):
    """Identifiers of the processes whose parent is `parent`, zombies included."""
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            text = (entry / "stat").read_text(errors="replace")
        except OSError:
            continue
        if int(text.rsplit(")", 1)[1].split()[1]) == parent:
            found.append(int(entry.name))
    return found


def descendants(parent):
    found = []
    for child in children(parent):
        found += [child, *descendants(child)]
    return found


class Desktop:
    """Everything lies in a private folder and ends with this object, processes that left their parents included: the
    Python process becomes the parent of its orphans. One desktop at a time in a process."""

    def __init__(self, portal=True, dialogs_open_at=None, manager_rules=None, size=(1280, 1024)):
        """`portal`: whether the bus has one. `dialogs_open_at`: a folder below the home folder, made here, at which the
        desktop opens file dialogs by its own choice. `manager_rules`: the window manager's configuration, in place of
        its usual one. `size`: the screen's, in pixels."""
        ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="velorinth-desktop-"))
        self.home = self.folder / "home"
        self.environment = self._environment()
        self.started = []
        try:
            self._start_display(size)
            self._start_bus(portal, dialogs_open_at)
            self._start_window_manager(manager_rules)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _environment(self):
        keep = ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS")
        environment = {name: os.environ[name] for name in keep if name in os.environ}
        runtime = self.folder / "runtime"
        for folder in (self.home, runtime):
            folder.mkdir(mode=0o700)
        # The dialogs are the portal's, whatever dialog programs the machine has: a failing one comes first on the path.
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.install_program("zenity", "exit 255\n")
        environment["PATH"] = f"{self.programs}:{environment['PATH']}"
        environment.update(
            HOME=str(self.home),
            LC_ALL="C.UTF-8",
            XDG_RUNTIME_DIR=str(runtime),
            XDG_CONFIG_HOME=str(self.home / ".config"),
            XDG_DATA_HOME=str(self.home / ".local/share"),
            XDG_CACHE_HOME=str(self.home / ".cache"),
            XDG_CURRENT_DESKTOP="gnome",  # The desktop that the GTK back end names as its own.
            GSETTINGS_BACKEND="keyfile",
            GTK_USE_PORTAL="0",
            GTK_A11Y="none",
            NO_AT_BRIDGE="1",
            GDK_BACKEND="x11",
        )
        return environment

    def install_program(self, name, script):
        """A shell script that is found before any other program of that name."""
        program = self.programs / name
        program.write_text("#!/bin/sh\n" + script)
        program.chmod(0o755)

    def _log(self, name):
        return open(self.folder / f"{name}.log", "ab")

    def start(self, name, *command, **options):
        """A process of this desktop; its standard error, and its output unless told otherwise, go to a log."""
        with self._log(name) as log:
            options = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log, "cwd": self.home, **options}
            process = subprocess.Popen([str(part) for part in command], env=self.environment, **options)
        self.started.append(process)
        return process

    def _start_display(self, size):
        read, write = os.pipe()
        # Without -noreset the server starts over whenever its only client of the moment leaves.
        self.start("Xvfb", "Xvfb", "-displayfd", write, "-screen", "0", f"{size[0]}x{size[1]}x24", "-nolisten", "tcp",
                   "-noreset", pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start: " + (self.folder / "Xvfb.log").read_text())
        self.environment["DISPLAY"] = ":" + number

    def _start_bus(self, portal, dialogs_open_at):
        services = self.folder / "services"
        services.mkdir()
        if portal:
            # Only what the file chooser needs: no document store with its file system, no accessibility bus.
            for name in (PORTAL, BACK_END):
                shutil.copy(SERVICES / f"{name}.service", services)
        socket = self.folder / "bus"
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(socket=socket, services=services))
        # Started last, so that the services it starts see the display.
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={socket}"
        directory = self.home
        if dialogs_open_at:
            directory = self.home / dialogs_open_at
            directory.mkdir(parents=True)
            settings = self.home / ".config/glib-2.0/settings"
            settings.mkdir(parents=True)
            (settings / "keyfile").write_text("[org/gtk/settings/file-chooser]\nstartup-mode='cwd'\n")
        # The working directory becomes that of the services it starts.
        self.bus = self.start("bus", "dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile",
                              cwd=directory)
        wait_for(socket.exists, "the bus's socket")

    def _start_window_manager(self, rules):
        # Its announcement on the root window comes before it is ready: windows mapped in between stay unmapped.
        ready = self.folder / "openbox.ready"
        options = []
        if rules:
            file = self.folder / "openbox.xml"
            file.write_text(rules)
            options = ["--config-file", file]
        self.start("openbox", "openbox", "--sm-disable", *options, "--startup", f"touch {ready}")
        wait_for(ready.exists, "the window manager")

    def run(self, *command, check=False):
        """The output of a short command."""
        done = subprocess.run([str(part) for part in command], env=self.environment, cwd=self.home, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=check, timeout=30)
        return done.stdout

    def process_of(self, name):
        """The process that owns a bus name; None when nobody does."""
        answer = self.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                          "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID", name)
        return int(answer.split()[1].strip(",)")) if answer.startswith("(uint32") else None

    def logs(self):
        return "\n".join(f"== {log.name}\n{log.read_text(errors='replace')}"
                         for log in sorted(self.folder.glob("*.log")))

    def reap(self, but=()):
        """Lets go of the orphans that have ended. Of other children of this Python process too, if they are not `but`
        kept."""
        ours = {process.pid for process in self.started if process.returncode is None}
        for process in set(children(os.getpid())) - ours - set(but):
            os.waitpid(process, os.WNOHANG)

    def close(self):
        deadline = time.monotonic() + 20
        while True:  # Until none is left: a process may have started another before its end.
            for process in self.started:
                process.poll()
            left = descendants(os.getpid())
            if not left:
                break
            if time.monotonic() > deadline:
                raise TimeoutError(f"processes are left: {left}")
            for process in left:
                try:
                    os.kill(process, signal.SIGKILL)
                except ProcessLookupError:
                    pass
            self.reap()
            time.sleep(0.01)
        for process in self.started:
            if process.stdout:
                process.stdout.close()
        shutil.rmtree(self.folder, ignore_errors=True)


def main():
    if len(sys.argv) < 2:
        sys.exit("usage: desktop.py COMMAND [ARGUMENT...]")
    with Desktop() as desktop:
        return subprocess.call(sys.argv[1:], env=desktop.environment)


if __name__ == "__main__":
    sys.exit(main())
