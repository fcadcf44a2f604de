"""Picking a game folder through the real file chooser portal, driven by hand: pointer and keys."""

import os
import pathlib
import shutil
import signal
import struct
import subprocess
import time
import unittest

from desktop import BACK_END, PORTAL, Desktop, children, wait_for

PROBE = pathlib.Path(os.environ["VELORINTH_BIN"]) / "folder_dialog_probe"
TITLE = "Select the classic Quake II folder containing quake2.exe"
LABEL = "Select game folder"
NOT_OPENED = "The Windows folder picker could not be opened."
BACK_END_CLASS = "xdg-desktop-portal-gtk"
VERIFIED = "Quake II installation verified."

# "At once", with room for a busy machine. All that would hang instead hangs for ever.
AT_ONCE = 15


def command(process):
    return pathlib.Path(f"/proc/{process}/cmdline").read_bytes().decode(errors="replace")


def make_installation(folder):
    """Files whose headers pass for a classic installation."""
    header = bytearray(64)
    header[0:2] = b"MZ"
    struct.pack_into("<I", header, 60, 64)
    program = bytes(header) + b"PE\0\0" + struct.pack("<H", 0x014C) + bytes(18) + struct.pack("<H", 0x010B)
    (folder / "baseq2").mkdir(parents=True, exist_ok=True)
    for name in ("quake2.exe", "ref_gl.dll"):
        (folder / name).write_bytes(program)
    (folder / "baseq2" / "pak0.pak").write_bytes(b"PACK" + struct.pack("<ii", 12, 64) + bytes(64))


class Probe:
    """The program that picks a folder, running on a desktop."""

    def __init__(self, desktop, *arguments):
        self.desktop = desktop
        self.process = desktop.start("probe", PROBE, *arguments, stdout=subprocess.PIPE)

    def window(self):
        """The dialog's window, once it is on the screen."""
        return wait_for(lambda: self.ended("before its dialog") or next(iter(self.windows()), None), "the dialog")

    def windows(self):
        found = self.desktop.run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$")
        return [line for line in found.split() if line.isdigit()]

    def ended(self, when):
        if self.process.poll() is not None:
            raise AssertionError(f"the probe ended {when}: {self.process.stdout.read().decode()}")

    def result(self, seconds=AT_ONCE):
        """What was printed, as a dictionary."""
        output, _ = self.process.communicate(timeout=seconds)
        return dict(line.split("=", 1) for line in output.decode().splitlines())

    def ends_within(self, seconds):
        try:
            self.process.wait(timeout=seconds)
            return True
        except subprocess.TimeoutExpired:
            return False


class FolderChooserTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.addCleanup(lambda: setattr(self, "logs", self.desktop.logs()))

    def run(self, result=None):
        """As ever; a test that fails also shows what the desktop's programs had to say."""
        self.logs = ""
        result = result or self.defaultTestResult()
        before = len(result.failures) + len(result.errors)
        super().run(result)
        if len(result.failures) + len(result.errors) > before:
            print(self.logs)
        return result

    def keys(self, window, *keys):
        self.desktop.run("xdotool", "windowactivate", "--sync", window, "key", *keys)

    def start_owner(self):
        """A program with a window of its own; its process and the window's number."""
        process = self.desktop.start("owner", "xev", "-name", "owner")
        window = wait_for(lambda: self.desktop.run("xdotool", "search", "--onlyvisible", "--name", "^owner$").split(),
                          "the owner's window")
        return process, window[0]

    def portal_version(self):
        """What the portal, started by the question if need be, answers for its interface version."""
        return self.desktop.run("gdbus", "call", "--session", "--dest", PORTAL, "--object-path",
                                "/org/freedesktop/portal/desktop", "--method", "org.freedesktop.DBus.Properties.Get",
                                "org.freedesktop.portal.FileChooser", "version")

    def assert_failed(self, result):
        self.assertEqual(result, {"folder": "", "message": NOT_OPENED, "selected": "", "cancelled": "0"})

    def assert_cancelled(self, result):
        self.assertEqual(result, {"folder": "", "message": "", "selected": "", "cancelled": "1"})

    def click(self, window, from_right):
        """A click on the row of buttons at the dialog's bottom; none when the dialog has just gone."""
        geometry = dict(line.split("=") for line in
                        self.desktop.run("xdotool", "getwindowgeometry", "--shell", window).split() if "=" in line)
        if "WIDTH" not in geometry:
            return
        self.desktop.run("xdotool", "windowactivate", "--sync", window, "mousemove", "--window", window,
                         int(geometry["WIDTH"]) - from_right, int(geometry["HEIGHT"]) - 24, "click", "1")


class PickTest(FolderChooserTest):
    def test_pick_by_the_button_of_a_folder_with_blanks_and_umlauts(self):
        self.desktop.close()
        self.desktop = Desktop(dialogs_open_at="Spiele für Jürgen/Quake II")
        self.addCleanup(self.desktop.close)
        folder = self.desktop.home / "Spiele für Jürgen" / "Quake II"
        make_installation(folder)
        probe = Probe(self.desktop)
        window = probe.window()
        # The button is greyed out until the dialog has read the folder.
        wait_for(lambda: self.click(window, 60) or probe.ends_within(0.5), "the pick")
        self.assertEqual(probe.result(),
                         {"folder": str(folder), "message": VERIFIED, "selected": str(folder), "cancelled": "0"})

    def test_pick_by_typing_of_a_folder_without_the_game_keeps_the_selection(self):
        folder = self.desktop.home / "no game"
        folder.mkdir()
        probe = Probe(self.desktop)
        window = probe.window()

        def type_path():
            self.keys(window, "alt+Home", "ctrl+l")
            self.desktop.run("xdotool", "type", "--delay", "5", folder)
            self.keys(window, "Return")
            return probe.ends_within(3)

        wait_for(type_path, "the pick")
        self.assertEqual(probe.result(),
                         {"folder": "", "message": "Quake II was not found in this folder (quake2.exe is missing).",
                          "selected": str(folder), "cancelled": "0"})


class DialogTest(FolderChooserTest):
    def test_title_label_and_modality_are_the_told_ones(self):
        monitor = self.desktop.start("monitor", "dbus-monitor", "--session",
                                     "interface='org.freedesktop.portal.FileChooser'")
        log = self.desktop.folder / "monitor.log"
        wait_for(lambda: "NameLost" in log.read_text() or "NameAcquired" in log.read_text(), "the monitor")
        _, owner = self.start_owner()
        probe = Probe(self.desktop, "--owner", owner, "--folder", self.desktop.home)
        window = probe.window()
        properties = self.desktop.run("xprop", "-id", window)
        self.assertIn(f'_NET_WM_NAME(UTF8_STRING) = "{TITLE}"', properties)
        self.assertIn("_NET_WM_STATE_MODAL", properties)
        self.assertIn(f"WM_TRANSIENT_FOR(WINDOW): window id # {int(owner):#x}", properties)
        request = wait_for(lambda: log.read_text() if "current_folder" in log.read_text() else None, "the request")
        for text in ("member=OpenFile", f'string "x11:{int(owner):x}"', f'string "{TITLE}"', 'string "accept_label"',
                     f'string "{LABEL}"', 'string "directory"', 'string "modal"', 'string "handle_token"'):
            self.assertIn(text, request)
        self.assertEqual(request.count("boolean true"), 2)
        self.keys(window, "Escape")
        self.assert_cancelled(probe.result())
        monitor.kill()

    def test_start_folder_is_honoured_by_the_desktops_own_program_where_the_portal_is_too_old(self):
        answer = self.portal_version()
        if "uint32 3" not in answer:
            self.skipTest(f"this portal opens at a folder by itself: {answer}")
        folder = self.desktop.home / "Quake II"
        make_installation(folder)
        self.desktop.install_program(
            "zenity", 'printf "%s\\n" "$@" >"$HOME/arguments"\nprintf "%s\\n" "$HOME/Quake II"\n')
        result = Probe(self.desktop, "--folder", folder).result()
        self.assertEqual(result["selected"], str(folder))
        self.assertEqual(result["message"], VERIFIED)
        arguments = (self.desktop.home / "arguments").read_text().splitlines()
        self.assertIn(f"--filename={folder}/", arguments)
        self.assertIn(f"--title={TITLE}", arguments)


class ZenityTest(FolderChooserTest):
    """The dialog program itself, which a portal as old as this one has opened at a folder."""

    def setUp(self):
        super().setUp()
        answer = self.portal_version()
        if "uint32 3" not in answer:
            self.skipTest(f"this portal opens at a folder by itself: {answer}")
        (self.desktop.programs / "zenity").unlink()
        self.folder = self.desktop.home / "Spiele für Jürgen" / "Quake II"
        make_installation(self.folder)

    def start(self):
        process, owner = self.start_owner()
        probe = Probe(self.desktop, "--folder", self.folder, "--owner", owner)
        window = probe.window()
        self.assertTrue([child for child in children(probe.process.pid) if "zenity" in command(child)],
                        "the dialog is the program's")
        return probe, window, process

    def test_start_folder_is_picked_by_the_button(self):
        probe, window, _ = self.start()
        self.assertIn("_NET_WM_STATE_MODAL", self.desktop.run("xprop", "-id", window))
        wait_for(lambda: self.click(window, 60) or probe.ends_within(0.5), "the pick")
        self.assertEqual(probe.result(), {"folder": str(self.folder), "message": VERIFIED,
                                          "selected": str(self.folder), "cancelled": "0"})

    def test_escape(self):
        probe, window, _ = self.start()
        self.keys(window, "Escape")
        self.assert_cancelled(probe.result())

    def test_owner_program_killed(self):
        probe, _, owner = self.start()
        owner.kill()
        self.assert_cancelled(probe.result())
        wait_for(lambda: not probe.windows(), "the dialog's end")

    def test_process_of_the_dialog_killed_gives_the_portals(self):
        probe, _, _ = self.start()
        for child in children(probe.process.pid):
            os.kill(child, signal.SIGKILL)
        window = wait_for(lambda: next((window for window in probe.windows()
                                        if BACK_END_CLASS in self.desktop.run("xprop", "-id", window, "WM_CLASS").lower()),
                                       None), "the portal's dialog")
        self.keys(window, "Escape")
        self.assert_cancelled(probe.result())


class CancelTest(FolderChooserTest):
    def test_cancel_button(self):
        probe = Probe(self.desktop)
        window = probe.window()
        # The buttons are as wide as the font makes them. Right of Cancel is the other one, which is greyed out as long
        # as nothing is chosen, so a click there does nothing.
        for distance in range(30, 600, 50):
            self.click(window, distance)
            if probe.ends_within(1):
                break
        self.assert_cancelled(probe.result())

    def test_escape(self):
        probe = Probe(self.desktop)
        self.keys(probe.window(), "Escape")
        self.assert_cancelled(probe.result())


class LossTest(FolderChooserTest):
    def test_owner_window_destroyed(self):
        _, owner = self.start_owner()
        probe = Probe(self.desktop, "--owner", owner)
        probe.window()
        self.desktop.run("xdotool", "windowclose", owner, check=True)
        self.assert_cancelled(probe.result())
        wait_for(lambda: not probe.windows(), "the dialog's end")

    def test_owner_program_killed(self):
        process, owner = self.start_owner()
        probe = Probe(self.desktop, "--owner", owner)
        probe.window()
        process.kill()
        self.assert_cancelled(probe.result())
        wait_for(lambda: not probe.windows(), "the dialog's end")

    def test_owner_gone_before_the_dialog(self):
        process, owner = self.start_owner()
        process.kill()
        process.wait()
        self.assert_cancelled(Probe(self.desktop, "--owner", owner).result())

    def test_process_of_the_dialog_killed(self):
        probe = Probe(self.desktop)
        probe.window()
        os.kill(self.desktop.process_of(BACK_END), signal.SIGKILL)
        self.assert_failed(probe.result())

    def test_portal_killed(self):
        probe = Probe(self.desktop)
        probe.window()
        os.kill(self.desktop.process_of(PORTAL), signal.SIGKILL)
        self.assert_failed(probe.result())

    def test_bus_killed(self):
        probe = Probe(self.desktop)
        probe.window()
        self.desktop.bus.kill()
        self.assert_failed(probe.result())

    def test_back_end_that_cannot_start(self):
        service = self.desktop.folder / "services" / f"{BACK_END}.service"
        self.portal_version()  # The portal reads its back ends when it starts.
        service.write_text(f"[D-BUS Service]\nName={BACK_END}\nExec=/bin/false\n")
        self.desktop.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                         "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.ReloadConfig")
        back_end = wait_for(lambda: self.desktop.process_of(BACK_END), "the back end")
        os.kill(back_end, signal.SIGKILL)
        wait_for(lambda: not self.desktop.process_of(BACK_END), "the back end's end")
        self.assert_failed(Probe(self.desktop).result())

    def test_no_bus_at_all(self):
        del self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.assert_failed(Probe(self.desktop).result())

    def test_address_of_a_bus_that_has_gone(self):
        self.desktop.bus.kill()
        self.desktop.bus.wait()
        self.assert_failed(Probe(self.desktop).result())


class NoPortalTest(unittest.TestCase):
    def test_no_portal_on_the_bus(self):
        with Desktop(portal=False) as desktop:
            result = Probe(desktop).result()
        self.assertEqual(result, {"folder": "", "message": NOT_OPENED, "selected": "", "cancelled": "0"})


if __name__ == "__main__":
    unittest.main()
