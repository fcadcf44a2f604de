"""The tool that enciphers assets, and the build's words when one is missing."""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[4]
ENCIPHER = ROOT / "tools/encipher/encipher.py"
KEY = "00" * 31 + "01"


class EncipherTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.key = self.write("key.hex", KEY + "\n")
        self.out = self.folder / "out.cpp"

    def write(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path

    def encipher(self, asset, key=None):
        return self.run_tool("--key", key or self.key, "--name", "Thing", "--out", self.out, asset)

    def run_tool(self, *arguments):
        command = [sys.executable, ENCIPHER, *arguments]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def block(self):
        numbers = re.search(r"block\[\] = \{(.*?)\};", self.out.read_text(), re.S).group(1)
        return bytes(map(int, numbers.replace("\n", "").split(",")))

    def expect_failure(self, result, sentence):
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"encipher: {sentence}\n")
        self.assertFalse(self.out.exists())

    def test_block_is_nonce_ciphertext_and_tag(self):
        self.assertEqual(self.encipher(self.write("a", "hello")).returncode, 0)
        self.assertEqual(len(self.block()), 12 + 5 + 16)
        self.assertNotIn(b"hello", self.block())

    def test_same_content_gives_the_same_source(self):
        asset = self.write("a", "hello")
        self.encipher(asset)
        first = self.out.read_bytes()
        self.encipher(asset)
        self.assertEqual(self.out.read_bytes(), first)

    def test_other_content_or_key_gives_another_nonce(self):
        nonces = set()
        for text, key in (("hello", self.key), ("hallo", self.key), ("hello", self.write("k", "ff" * 32))):
            self.encipher(self.write("a", text), key)
            nonces.add(self.block()[:12])
        self.assertEqual(len(nonces), 3)

    def test_empty_asset_is_28_bytes(self):
        self.encipher(self.write("a", ""))
        self.assertEqual(len(self.block()), 28)

    def test_missing_asset_is_said_in_one_line(self):
        path = self.folder / "nowhere.svg"
        self.expect_failure(self.encipher(path), f"the asset {path} is missing")

    def test_folder_is_no_asset(self):
        self.expect_failure(self.encipher(self.folder), f"the asset {self.folder} can't be read: Is a directory")

    def test_missing_key_is_said_in_one_line(self):
        path = self.folder / "no.key"
        self.expect_failure(self.encipher(self.write("a", ""), path), f"the key file {path} can't be read")

    def test_key_of_another_length_is_refused(self):
        for text in (KEY[2:], KEY + "00", "", "zz" * 32):
            key = self.write("short.hex", text)
            sentence = f"the key file {key} does not hold 64 hexadecimal digits"
            self.expect_failure(self.encipher(self.write("a", ""), key), sentence)

    def test_key_alone_becomes_its_source(self):
        self.assertEqual(self.run_tool("--key", self.key, "--out", self.out).returncode, 0)
        self.assertIn("EmbeddedKey{\n    " + "0," * 31 + "1}", self.out.read_text())

    def test_configuring_without_an_asset_names_it(self):
        self.write(
            "CMakeLists.txt",
            f"""cmake_minimum_required(VERSION 3.25)
project(Probe LANGUAGES NONE)
include({ROOT}/cmake/Assets.cmake)
add_custom_target(program)
velorinth_assets(program Logo nowhere.svg)
""",
        )
        command = ["cmake", "-S", self.folder, "-B", self.folder / "build"]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertNotEqual(result.returncode, 0)
        words = " ".join(result.stderr.split())
        self.assertIn(f"The asset Logo is missing: there is no file {self.folder}/nowhere.svg", words)


if __name__ == "__main__":
    unittest.main()
