"""Files that are not what they should be, in every place where one is read: the told answer comes at once."""

import os
import unittest

from support import World

# Seconds. Whoever reads a whole file, or waits for one, takes longer.
QUICK = 5
HUGE = 1 << 40
NOT_CLASSIC = "Choose classic 32-bit Quake II (quake2.exe), not the remaster."
NO_RENDERER = "The classic OpenGL renderer (ref_gl.dll) is missing or incompatible."
NO_DATA = "Quake II game data is missing or invalid: baseq2\\pak0.pak."
NO_GAME = "Quake II was not found in this folder (quake2.exe is missing)."
NOT_INSPECTED = "Could not inspect the installation. Try another folder."


def fifo(path):
    os.mkfifo(path)


def directory(path):
    path.mkdir()


def endless(path):
    path.symlink_to("/dev/zero")


def loop(path):
    path.symlink_to(path.name)


def empty(path):
    path.write_bytes(b"")


def huge_zeros(path):
    path.touch()
    os.truncate(path, HUGE)


NO_FILES = (fifo, directory, endless, loop, empty, huge_zeros)


class BadInput(World):
    def quick(self, *arguments):
        return self.console(*arguments, timeout=QUICK)

    def replace(self, path, make):
        if path.is_dir() and not path.is_symlink():
            path.rmdir()
        else:
            path.unlink(missing_ok=True)
        make(path)

    def test_pe_and_pak_of_what_is_no_such_file(self):
        for make in NO_FILES:
            with self.subTest(make.__name__):
                self.replace(self.root / "file", make)
                for call in ("pe", "pak"):
                    self.assertEqual(self.quick(call, self.root / "file").line, {"valid": False})

    def test_every_truncation_of_the_headers_fails(self):
        # The whole file is read as valid, so each of these cuts is what makes it fail.
        for call, source, header in (("pe", "quake2.exe", 154), ("pak", "baseq2/pak0.pak", 187)):
            content = (self.game / source).read_bytes()
            for length in range(0, header, 7):
                with self.subTest(call=call, length=length):
                    (self.root / "cut").write_bytes(content[:length])
                    self.assertFalse(self.quick(call, self.root / "cut").line["valid"])

    def test_huge_files_with_good_headers_pass_by_their_headers(self):
        program = self.root / "huge.exe"
        program.write_bytes((self.game / "quake2.exe").read_bytes())
        os.truncate(program, HUGE)
        self.assertTrue(self.quick("pe", program).line["valid"])
        pak = self.root / "huge.pak"
        pak.write_bytes((self.game / "baseq2/pak0.pak").read_bytes())
        os.truncate(pak, HUGE)
        self.assertTrue(self.quick("pak", pak).line["valid"])

    def test_validate_with_bad_files_in_each_place(self):
        for place, sentence in (("quake2.exe", NOT_CLASSIC), ("ref_gl.dll", NO_RENDERER), ("baseq2/pak0.pak", NO_DATA)):
            good = (self.game / place).read_bytes()
            for make in NO_FILES:
                with self.subTest(place=place, kind=make.__name__):
                    self.replace(self.game / place, make)
                    answer = self.quick("validate", self.game)
                    expected = NOT_INSPECTED if (make is loop and place == "quake2.exe") else sentence
                    self.assertEqual((answer.status, answer.line["message"]), (1, expected))
            self.replace(self.game / place, empty)
            (self.game / place).write_bytes(good)

    def test_validate_with_bad_folders(self):
        os.mkfifo(self.root / "fifo")
        deep = str(self.root) + "/" + "/".join(["d" * 200] * 19)
        for folder, sentence in (
            ("", "Select a Quake II installation folder."),
            (self.root / "fifo", NO_GAME),
            ("/dev/zero", NO_GAME),
            (self.root / "missing", NO_GAME),
            (deep[:4000], NO_GAME),
            (os.fsencode(self.root) + b"/\xff\xfe", NO_GAME),
            ("/" + "n" * 4000, NO_GAME),
        ):
            with self.subTest(folder):
                answer = self.quick("validate", folder)
                self.assertEqual((answer.status, answer.line["message"]), (1, sentence))

    def test_values_of_what_is_no_such_file(self):
        for make in NO_FILES:
            with self.subTest(make.__name__):
                self.replace(self.root / "file", make)
                self.assertEqual(self.quick("values", self.root / "file", "path").line, {"values": []})
        for file in ("/" + "n" * 4000, b"/\xff\xfe", ""):
            self.assertEqual(self.quick("values", file, "path").line, {"values": []})

    def test_values_up_to_4_mib_and_not_a_byte_more(self):
        file = self.root / "libraryfolders.vdf"
        file.write_bytes(b'"path" "here"'.ljust(4194304))
        self.assertEqual(self.quick("values", file, "path").line, {"values": ["here"]})
        file.write_bytes(b'"path" "here"'.ljust(4194305))
        self.assertEqual(self.quick("values", file, "path").line, {"values": []})

    def test_search_with_bad_files_in_steams_place_goes_on(self):
        steam = self.home / ".local/share/Steam/steamapps"
        steam.mkdir(parents=True)
        self.make_installation(self.home / "Quake2")
        for make in NO_FILES:
            for name in ("libraryfolders.vdf", "appmanifest_2320.acf"):
                with self.subTest(name=name, kind=make.__name__):
                    self.replace(steam / name, make)
                    self.assertEqual(self.quick("find").line["folder"], str(self.home / "Quake2"))

    def test_install_from_what_is_no_file(self):
        target = self.root / "target.dll"
        for make in (fifo, directory, endless, loop):
            for present in (False, True):
                with self.subTest(kind=make.__name__, target_present=present):
                    self.replace(self.root / "source.dll", make)
                    target.unlink(missing_ok=True)
                    if present:
                        target.write_bytes(b"the old driver")
                    answer = self.quick("install", self.root / "source.dll", target)
                    self.assertEqual((answer.status, answer.line["installed"]), (1, False))
                    if present:
                        self.assertEqual(target.read_bytes(), b"the old driver")

    def test_install_onto_what_is_no_file(self):
        source = self.launcher / "Drivers/KVR2.dll"
        target = self.root / "target.dll"
        for make in (fifo, directory, endless, loop):
            with self.subTest(make.__name__):
                self.replace(target, make)
                answer = self.quick("install", source, target)
                self.assertEqual((answer.status, answer.line["installed"]), (1, False))

    def test_names_that_are_too_long_or_not_utf8(self):
        long_name = "/" + "n" * 4000
        self.assertEqual(self.quick("pe", long_name).line, {"valid": False})
        self.assertEqual(self.quick("pak", long_name).line, {"valid": False})
        self.assertEqual(self.quick("running", long_name).line, {"running": False})
        self.assertEqual(self.quick("install", long_name, long_name).status, 1)
        self.assertIn(self.quick("runtime-path", long_name).status, (0, 1))
        strange = os.fsencode(self.root) + b"/\xff.exe"
        os.rename(self.game / "quake2.exe", strange)
        self.assertEqual(self.quick("pe", strange).line, {"valid": True})
        self.assertEqual(self.quick("install", strange, strange + b"2").line, {"installed": True})
        self.assertTrue(os.path.exists(strange + b"2"))


if __name__ == "__main__":
    unittest.main()
