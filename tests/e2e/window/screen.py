"""A virtual display of a test's own, with or without a window manager, and the programs on it that answer in JSON."""

import json
import os
import select
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

import support
from support import BIN

# Seconds. All that a window does it does in an instant; nothing here waits as long as a Wine prefix takes.
PATIENCE = 25

SIZE = (1000, 800)
BARE = 0x34495E  # where nothing is

# Colours of the subject's windows, and how wide their parts are at 96 dots per inch.
BORDER, RIM = 0x00FF00, 0x000000
RIM_WIDTH, FRAME_WIDTH, BORDER_WIDTH = 1, 8, 2

LEFT_BUTTON, MIDDLE_BUTTON, RIGHT_BUTTON = 1, 2, 3
ALT, SUPER = 64, 133  # key codes of the left ones


def is_like(colour, other):
    """Whether two colours are the same but for the dither."""
    return all(abs((colour >> shift & 0xFF) - (other >> shift & 0xFF)) <= 1 for shift in (0, 8, 16))


def wait_until(condition, what, seconds=PATIENCE):
    return support.wait_until(condition, what, seconds)


def read_line(source, what):
    """The next line of a pipe, which holds nothing yet; an empty one at its end."""
    if not select.select([source], [], [], PATIENCE)[0]:
        raise AssertionError(f"still waiting after {PATIENCE} s: {what}")
    return source.readline()


def started(words, **options):
    return subprocess.Popen([str(word) for word in words], stdout=options.pop("stdout", subprocess.DEVNULL),
                            stderr=options.pop("stderr", subprocess.DEVNULL), **options)


class Teller:
    """A program that answers each line with a line."""

    def __init__(self, program, environment, stderr=None):
        self.process = started([BIN / program], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                               stderr=stderr, text=True, bufsize=1)

    def try_ask(self, *words):
        """The answer; nothing when the program has ended instead."""
        try:
            self.process.stdin.write(" ".join(str(word) for word in words) + "\n")
            line = read_line(self.process.stdout, f"{Path(self.process.args[0]).name} answers: {words}")
        except BrokenPipeError:
            line = ""
        return json.loads(line) if line else None

    def ask(self, *words):
        answer = self.try_ask(*words)
        if answer is None:
            raise AssertionError(f"{self.process.args} ended at: {words}, with {self.process.wait(PATIENCE)}")
        if "error" in answer:
            raise AssertionError(f"{words}: {answer['error']}")
        return answer

    def end(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait(PATIENCE)
        for pipe in (self.process.stdin, self.process.stdout, self.process.stderr):
            if pipe:
                try:
                    pipe.close()
                except BrokenPipeError:
                    pass


class Screen(unittest.TestCase):
    """A test on a display of its own. MANAGER and DPI say what kind: openbox, mutter, which composes the screen too, or
    None manages its windows."""

    MANAGER = "openbox"
    DPI = None

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="velorinth-screen-")
        self.addCleanup(scratch.cleanup)
        self.scratch = Path(scratch.name)
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in ("DISPLAY", "WAYLAND_DISPLAY", "XCURSOR_THEME")}
        self.environment["HOME"] = str(self.scratch)
        self.start_server()
        self.user = self.start_teller("display_user")
        if self.DPI:
            self.user.ask("resources", f"Xft.dpi:\t{self.DPI}")
        if self.MANAGER:
            {"openbox": self.start_openbox, "mutter": self.start_mutter}[self.MANAGER]()

    def start_server(self):
        reader, writer = os.pipe()
        # Without -noreset the server starts over whenever its only client of the moment leaves.
        self.server = started(["Xvfb", "-displayfd", writer, "-screen", "0", f"{SIZE[0]}x{SIZE[1]}x24", "-nolisten",
                               "tcp", "-noreset"], pass_fds=[writer])
        self.addCleanup(self.server.wait, PATIENCE)
        self.addCleanup(self.server.kill)
        os.close(writer)
        with os.fdopen(reader) as number:
            self.environment["DISPLAY"] = ":" + read_line(number, "Xvfb starts").strip()
        # So that what no window covers can be told from black.
        subprocess.run(["xsetroot", "-solid", f"#{BARE:06x}"], env=self.environment, check=True, timeout=PATIENCE)

    def start_openbox(self):
        configuration = self.scratch / "rc.xml"
        configuration.write_text(RC)
        self.start_manager(["openbox", "--sm-disable", "--config-file", configuration], self.environment)
        self.assertTrue(self.user.ask("manager")["ready"], "openbox did not start")

    def start_mutter(self):
        runtime = self.scratch / "runtime"
        runtime.mkdir(mode=0o700)
        self.start_manager(["mutter", "--x11", "--sm-disable"], {
            **self.environment,
            "XDG_RUNTIME_DIR": str(runtime),
            # As after its installation, whoever runs the test, and it talks with nobody.
            "GSETTINGS_BACKEND": "memory",
            "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            "DBUS_SYSTEM_BUS_ADDRESS": "disabled:",
            "LIBGL_ALWAYS_SOFTWARE": "1",
            # Each picture of the screen goes to the server in one piece, not in one for each rectangle that has changed:
            # this server has no period of a display at whose end it would show them together.
            "CLUTTER_PAINT": "disable-clipped-redraws",
        })
        # It has a background of its own. No window is shown to see whether it is ready: it would fade out slowly.
        wait_until(lambda: self.colour(1, 1) != BARE, "mutter composes the screen")

    def start_manager(self, words, environment):
        manager = started(words, env=environment)
        self.addCleanup(manager.wait, PATIENCE)
        self.addCleanup(manager.kill)

    def start_teller(self, program, **options):
        teller = Teller(program, self.environment, **options)
        self.addCleanup(teller.end)
        return teller

    # The user's hands.

    def move(self, x, y):
        self.user.ask("move", x, y)

    def press(self, x, y, button=LEFT_BUTTON):
        self.move(x, y)
        self.user.ask("press", button)

    def release(self, button=LEFT_BUTTON):
        self.user.ask("release", button)

    def click(self, x, y):
        self.press(x, y)
        self.release()

    # And eyes.

    def where(self, window):
        return self.user.ask("where", window)

    def colour(self, x, y):
        return self.user.ask("pixel", x, y)["colour"]

    def states(self, window):
        return self.user.ask("states", window)["states"]

    def picture(self, path, place):
        self.user.ask("picture", path, place["x"], place["y"], place["width"], place["height"])
        keep = os.environ.get("VELORINTH_KEEP_PICTURES")
        if keep:
            subprocess.run(["convert", path, Path(keep) / (Path(path).stem + ".png")], check=True, timeout=PATIENCE)


def frame_size(look):
    """The size of the frame that a picture of a window shows, by its right and lower border; None for a side whose
    border is not in sight."""
    return tuple(
        end_of_border(look[line]) for line in ("row", "column"))


def end_of_border(runs):
    at = 0
    ends = []
    for colour, length in runs:
        if colour == BORDER:
            ends.append((at, at + length))
        at += length
    # The first border is that of the left or upper side.
    if len(ends) < 2:
        return None
    return ends[-1][1] + FRAME_WIDTH


def is_whole(look):
    return frame_size(look) == (look["width"], look["height"])


class Subject(Screen):
    """A test with the toolkit's windows on the display."""

    def setUp(self):
        super().setUp()
        self.subject = self.start_teller("window_subject", stderr=None)

    def open(self, *words):
        """Opens a window and waits until it is seen whole. Its number and its X11 name."""
        answer = self.subject.ask("open", *words)
        window = answer["window"]
        wait_until(lambda: is_whole(self.look(window)), "the window is painted")
        return answer["id"], window

    def look(self, window):
        return self.user.ask("look", window)

    def counts(self, number):
        return self.subject.ask("counts", number)

    def stop_subject(self):
        self.subject.process.send_signal(signal.SIGSTOP)


# The window manager's ways: Alt and a button move and size a window from anywhere in it, step by step.
RC = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <resistance><strength>0</strength><screen_edge_strength>0</screen_edge_strength></resistance>
  <placement><policy>Smart</policy></placement>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <resize><drawContents>yes</drawContents><popupShow>Never</popupShow></resize>
  <mouse>
    <dragThreshold>1</dragThreshold>
    <context name="Frame">
      <mousebind button="A-Left" action="Drag"><action name="Move"/></mousebind>
      <mousebind button="A-Right" action="Drag"><action name="Resize"/></mousebind>
    </context>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
