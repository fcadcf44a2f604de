"""The launcher's screen, node by node: what scene_shot draws of each state against the screen's layout, written down
here a second time."""

import json
import math
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

BIN = Path(os.environ["VELORINTH_BIN"])

TEXT, MUTED, ACCENT, RULE = 0xE9EEEE, 0x9CA8AD, 0x72D6C8, 0x333B40
FONT = "Segoe UI"
NORMAL, SEMIBOLD = 400, 600
LEADING, TRAILING = 0, 1
NEAR, CENTRE = 0, 2

MODES = ("320 × 240", "400 × 300", "512 × 384", "640 × 480", "800 × 600", "960 × 720", "1024 × 768", "1152 × 864",
         "1280 × 960", "1600 × 1200")
USUAL_FOLDER = "/home/player/Games/Quake II"
VERIFIED = "Quake II installation verified."


class Flags:
    """The screen's state, as one would tell it."""

    def __init__(self, **given):
        self.valid = self.checking = self.launching = self.running = self.menu = False
        self.folder = self.status = self.message = ""
        self.modern = self.fullscreen = True
        self.mode = 4
        self.simulated = False
        self.__dict__.update(given)

    @property
    def choices(self):
        return not self.running and not self.launching


# What the layout is made of, each as the fields that a node is to show.


def colour(rgb, alpha=1.0):
    return [(rgb >> 16 & 255) / 255, (rgb >> 8 & 255) / 255, (rgb & 255) / 255, alpha]


def rectangle(x, y, width, height, fill, stroke=None, radius=0, alpha=1.0, kind="RectangleNode"):
    node = {"type": kind, "rect": [x, y, x + width, y + height], "fill": colour(fill, alpha),
            "strokeWidth": 0 if stroke is None else 1, "cornerRadius": [radius, radius]}
    if stroke is not None:
        node["stroke"] = colour(stroke)
    return node


def text(x, y, width, height, words, size, rgb, semibold=False, across=LEADING, down=NEAR):
    return {"type": "DecorationText", "rect": [x, y, x + width, y + height], "text": words, "color": colour(rgb),
            "fontFamily": FONT, "fontSize": size, "fontWeight": SEMIBOLD if semibold else NORMAL,
            "textAlignment": across, "paragraphAlignment": down}


def ellipse(x, y, radius, rgb):
    return {"type": "DecorationEllipse", "center": [x, y], "radius": [radius, radius], "fill": colour(rgb),
            "strokeWidth": 0}


def button(x, y, width, height, label, enabled, fill, rgb=TEXT, bordered=False):
    """One node, or two with the border."""
    radius = 10 if bordered else 6
    nodes = [{"type": "Button", "rect": [x, y, x + width, y + height], "label": label, "enabled": enabled,
              "cornerRadius": [radius, radius], "fontFamily": FONT, "fontSize": 13, "fontWeight": NORMAL,
              "normalColor": colour(fill), "hoverColor": colour(0x93E7DC if fill == 0x72D6C8 else 0x35433F),
              "pressedColor": colour(0x405550), "textColor": colour(rgb),
              "disabledColor": [0.2, 0.2, 0.22, 0.75], "disabledTextColor": [0.7, 0.7, 0.72, 1]}]
    if bordered:
        nodes.append({"type": "DecorationRectangle", "cornerRadius": [9.5, 9.5],
                      "rect": [x + 0.5, y + 0.5, x + width - 0.5, y + height - 0.5], "fill": [0, 0, 0, 0],
                      "stroke": colour(0x455056), "strokeWidth": 1})
    return nodes


# The layout, top to bottom.


def header(flags, height, logo_width):
    return [
        rectangle(0, 0, 820, height, 0x000000, radius=12, alpha=0.85),
        {"type": "ImagePrimitive", "rect": [36, 24, 36 + logo_width, 24 + logo_width * 520 / 2771]},
        text(410, 32, 374, 24, None, 14, MUTED, across=TRAILING),
        rectangle(36, 96, 748, 1, RULE),
        text(36, 108, 748, 35, "Play Quake II with a software renderer", 25, TEXT, True),
        text(36, 149, 748, 26, "Choose your renderer and display settings, then launch the game.", 14, MUTED),
        rectangle(36, 185, 748, 1, RULE),
    ]


def installation(flags):
    if flags.valid:
        name, badge = "Quake II · Classic installation", "● Ready"
    elif flags.folder:
        name, badge = "Invalid installation", "Not ready"
    else:
        name, badge = "No installation selected", "Not selected"
    path = flags.folder
    if not flags.valid and not flags.folder:
        path = "Select the folder containing quake2.exe."
    if flags.valid and flags.simulated:
        path = "C:\\Games\\Quake II (test fixture)"
    if flags.checking:
        badge = "Checking…"
    badge_colour = ACCENT if flags.valid and not flags.checking else MUTED
    message = flags.message or (VERIFIED if flags.valid else "Find or browse for your game folder.")
    enabled = flags.choices and not flags.checking
    return [
        text(36, 199, 450, 23, "Game installation", 13, TEXT, True),
        rectangle(36, 234, 748, 80, 0x171C1F, RULE, 8),
        rectangle(54, 253, 40, 40, 0x323129, None, 8),
        text(60, 258, 35, 30, "Q II", 16, 0xD5C18E, True),
        text(110, 246, 400, 26, name, 14, TEXT, True),
        text(110, 273, 400, 36, path, 11, MUTED),
        text(540, 244, 225, 23, badge, 11, badge_colour),
        text(540, 269, 225, 40, message, 11, MUTED),
        *button(36, 325, 148, 35, "Find automatically", enabled, 0x272E33, bordered=True),
        *button(194, 325, 161, 35, "Browse for game…", enabled, 0x1B2024, bordered=True),
        text(36, 363, 748, 23, flags.status, 11, MUTED),
        text(36, 387, 500, 23, "Renderer", 13, TEXT, True),
    ]


def cards(flags):
    words = (
        ("KVR2", "MODERN", 0x72D6C8, "Multithreaded, tile-based rendering\nwith AVX2 and AVX-512 support."),
        ("KVR", "ORIGINAL", 0xC7BAA0, "The classic software renderer, written in 2003.\nSingle-threaded SSE and MMX."),
    )
    nodes = []
    for index, x in ((0, 36), (1, 420)):
        name, tag, tag_colour, description = words[index]
        selected = (index == 0) == flags.modern
        fill = 0x223331 if selected else 0x20262A
        nodes += [rectangle(x, 424, 364, 101, fill, 0x72D6C8 if selected else 0x333B40, 8),
                  *button(x + 1, 425, 362, 99, "", flags.choices, fill),
                  ellipse(x + 23, 450, 7, 0x72D6C8 if selected else 0x59656B),
                  ellipse(x + 23, 450, 5, fill)]
        if selected:
            nodes.append(ellipse(x + 23, 450, 3, 0x72D6C8))
        nodes += [text(x + 42, 434, 70, 28, name, 14, TEXT, True),
                  text(x + 94, 437, 150, 23, tag, 10, tag_colour),
                  text(x + 42, 466, 310, 46, description, 12, MUTED)]
    return nodes


def display(flags):
    return [
        rectangle(36, 550, 748, 1, RULE),
        text(36, 567, 360, 27, "Resolution", 13, TEXT, True),
        text(432, 567, 350, 27, "Display mode", 13, TEXT, True),
        rectangle(36, 604, 360, 43, 0x171C1F, 0x455056, 6),
        *button(37, 605, 358, 41, "", flags.choices, 0x171C1F),
        text(49, 609, 302, 32, MODES[flags.mode], 13, TEXT),
        text(365, 608, 20, 32, "\u2304", 16, MUTED),
        *button(432, 611, 35, 22, "", flags.choices, 0x61B5A9 if flags.fullscreen else 0x455057),
        ellipse(457 if flags.fullscreen else 442, 622, 7, 0xE6EEEE),
        text(480, 606, 200, 35, "Fullscreen", 14, TEXT),
        text(36, 655, 360, 22, "Standard Quake II display modes.", 11, MUTED),
        text(432, 655, 350, 22, "Use the entire screen." if flags.fullscreen else "Play in a window on your desktop.",
             11, MUTED),
    ]


def footer(flags):
    if flags.running:
        label, launch = "Quake II is running", "Game running"
    else:
        label = "Ready to launch" if flags.valid else "Select a Quake II installation"
        launch = "Launch with KVR2 \u2197" if flags.modern else "Launch with KVR \u2197"
    enabled = flags.valid and flags.choices and not flags.checking
    return [
        rectangle(0, 696, 820, 74, 0x20272B),
        rectangle(0, 696, 820, 1, RULE),
        text(36, 711, 480, 44, label, 13, TEXT, True, down=CENTRE),
        *button(588, 711, 196, 44, launch, enabled, 0x72D6C8, 0x112622),
    ]


def zone(left, top, right, bottom):
    return {"type": "RectangleNode", "rect": [left, top, right, bottom], "fill": [0, 0, 0, 0], "stroke": [0, 0, 0, 0]}


def panel(flags):
    """Of a simulation with the launcher's own background."""

    def plain(*place, label, enabled=True):
        return button(*place, label, enabled, 0x272E33)

    nodes = [
        text(36, 787, 350, 25, "Smoke test · Game actions are simulated", 11, MUTED),
        *plain(470, 785, 99, 28, label="No game", enabled=not flags.running),
        *plain(579, 785, 99, 28, label="Game exit", enabled=flags.running),
        *plain(688, 785, 96, 28, label="Reset"),
        text(36, 829, 210, 26, "Overlay opacity: 85%", 13, MUTED),
        rectangle(250, 839, 400, 4, 0x59656B, None, 2),
        ellipse(250 + 4 * 85, 841, 7, ACCENT),
        zone(240, 825, 660, 859),
        *plain(688, 827, 96, 28, label="85% default"),
        text(36, 872, 490, 26, "Background: Liquid Metal", 13, MUTED),
        *plain(550, 870, 234, 28, label="Metal copper: off"),
    ]
    rows = (("Hue: 21°", (21 + 180) * 400 / 360), ("Saturation: 45%", 0.45 * 400 / 2),
            ("Brightness: 0%", (0 + 1) * 400 / 2), ("Contrast: 100%", 1 * 400 / 2))
    for i, (label, along) in enumerate(rows):
        y = 915 + 34 * i
        nodes += [text(36, y - 12, 210, 26, label, 13, MUTED, down=None),
                  rectangle(250, y - 2, 400, 4, 0x59656B, None, 2),
                  ellipse(250 + along, y, 7, ACCENT),
                  zone(240, y - 16, 660, y + 16)]
    nodes += plain(688, 903, 96, 28, label="Reset color")
    return nodes


def menu(flags, height):
    nodes = [{"type": "Button", "rect": [0, 0, 820, height], "label": "", "enabled": True,
              "normalColor": [0, 0, 0, 0], "hoverColor": [0, 0, 0, 0], "pressedColor": [0, 0, 0, 0]},
             rectangle(36, 252, 360, 344, 0x20272B, 0x536168, 6)]
    for i, mode in enumerate(MODES):
        current = i == flags.mode
        nodes += button(40, 256 + 33 * i, 352, 32, ("●  " if current else "    ") + mode, True,
                        0x223331 if current else 0x20272B)
    return nodes


def layout(flags, logo_width, developer=False):
    height = 1048 if developer else 770
    return [*header(flags, height, logo_width), *installation(flags), *cards(flags), *display(flags), *footer(flags),
            *(panel(flags) if developer else []), *(menu(flags, height) if flags.menu else [])]


def client_root(scale):
    """Where the frame of the window puts the client area: units to pixels."""
    return [scale, 0, 0, scale, 9 * scale, 37 * scale]


def fit(width, height, scale, canvas_height):
    """The canvas in the client area of a window of that many pixels: scale and translation."""
    wide = max(width / scale - 2 * (1 + 8), 1.0)
    high = max(height / scale - 36 - 8 - 2, 1.0)
    padding = min(min(wide, high) * 0.05, 12.0)
    size = min((wide - 2 * padding) / 820, (high - 2 * padding) / canvas_height)
    return size, (wide - 820 * size) / 2, (high - canvas_height * size) / 2


def shot(*options, width=1538, height=1505, dpi=96):
    """The nodes of a state."""
    with tempfile.TemporaryDirectory(prefix="velorinth-shot-") as folder:
        nodes = Path(folder) / "nodes.json"
        done = subprocess.run(
            [BIN / "scene_shot", "--scene", "launcher", "--width", str(width), "--height", str(height), "--dpi",
             str(dpi), "--out", Path(folder) / "shot.png", "--nodes", nodes, *options],
            stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=False)
        if done.returncode != 0:
            raise AssertionError(f"{options}: {done.returncode} {done.stderr.decode()}")
        return json.loads(nodes.read_text(encoding="utf-8"))["nodes"]


def is_close(given, expected):
    if given is None:
        return False
    if isinstance(expected, list):
        return len(given) == len(expected) and all(map(is_close, given, expected))
    if isinstance(expected, (int, float)) and not isinstance(expected, bool):
        return math.isclose(given, expected, rel_tol=1e-5, abs_tol=1e-4)
    return given == expected


def difference(nodes, flags, developer=False):
    """What keeps the nodes from being the layout of that state; nothing when they are."""
    logo = nodes[1].get("rect", [0, 0, 0, 0])
    expected = layout(flags, logo[2] - logo[0], developer)
    for row, (node, wanted) in enumerate(zip(nodes, expected)):
        if not node["visible"]:
            return f"node {row} is hidden: {wanted}"
        for field, value in wanted.items():
            if value is not None and not is_close(node.get(field), value):
                return f"node {row}, {field}: {node.get(field)!r} where {value!r} should be: {wanted}"
    if len(nodes) != len(expected):
        return f"{len(nodes)} nodes where {len(expected)} should be"
    return None


class LauncherScene(unittest.TestCase):
    maxDiff = None

    def check(self, flags, *options, developer=False):
        nodes = shot(*options)
        wrong = difference(nodes, flags, developer)
        self.assertIsNone(wrong, wrong)
        logo_width = nodes[1]["rect"][2] - nodes[1]["rect"][0]
        # Not its fall-back, and short of the line at its right.
        self.assertNotEqual(logo_width, 330)
        self.assertTrue(250 < logo_width < 420, logo_width)
        notice = nodes[2]["text"]
        self.assertRegex(notice, r"\b20[0-9]{2}\b")
        self.assertNotIn("\n", notice)
        return nodes

    def test_no_installation(self):
        self.check(Flags(), "--state", "none")

    def test_no_installation_is_the_state_that_needs_no_telling(self):
        self.check(Flags())

    def test_invalid(self):
        self.check(Flags(folder=USUAL_FOLDER), "--state", "invalid")
        self.check(Flags(folder="/tmp/nö"), "--state", "invalid", "--folder", "/tmp/nö")

    def test_checking_without_and_with_an_installation_before(self):
        search = "Checking Steam libraries and common folders…"
        self.check(Flags(checking=True, message=search), "--state", "checking")
        self.check(Flags(checking=True, valid=True, folder="/games/q2", message=search), "--state", "checking",
                   "--folder", "/games/q2")

    def test_ready(self):
        self.check(Flags(valid=True, folder=USUAL_FOLDER, message=VERIFIED), "--state", "ready")
        self.check(Flags(valid=True, folder="/games/Größe Quake", message=VERIFIED), "--state", "ready", "--folder",
                   "/games/Größe Quake")

    def test_launching(self):
        self.check(Flags(valid=True, launching=True, folder=USUAL_FOLDER,
                         status="Installing the selected driver and starting Quake II…"), "--state", "launching")

    def test_game_running(self):
        for driver in ("KVR", "KVR2"):
            self.check(Flags(valid=True, running=True, folder=USUAL_FOLDER, modern=driver == "KVR2",
                             status="Quake II launched. Its settings will be saved normally."), "--state", "running",
                       "--driver", driver)

    def test_open_resolution_list_with_each_mode(self):
        for mode in range(10):
            self.check(Flags(valid=True, menu=True, folder=USUAL_FOLDER, mode=mode), "--state", "menu", "--mode",
                       str(mode))

    def test_drivers_and_display_modes(self):
        for driver in ("KVR", "KVR2"):
            for windowed in (False, True):
                flags = Flags(valid=True, folder=USUAL_FOLDER, modern=driver == "KVR2", fullscreen=not windowed)
                self.check(flags, "--state", "ready", "--driver", driver, *(["--windowed"] if windowed else []))

    def test_told_status_and_message(self):
        status = "Quake II exited with error 3221225477. See baseq2/qconsole.log in the game folder."
        self.check(Flags(valid=True, folder=USUAL_FOLDER, status=status, message="Folder selection cancelled."),
                   "--state", "ready", "--status", status, "--message", "Folder selection cancelled.")

    def test_developer_panel(self):
        self.check(Flags(simulated=True), "--state", "none", "--developer", developer=True)
        self.check(Flags(simulated=True, valid=True), "--state", "ready", "--developer", developer=True)
        self.check(Flags(simulated=True, valid=True, running=True), "--state", "running", "--developer",
                   developer=True)
        self.check(Flags(simulated=True, valid=True, menu=True), "--state", "menu", "--developer", developer=True)

    def test_a_disabled_card_keeps_mark_and_texts(self):
        ready = shot("--state", "ready", "--driver", "KVR")
        running = shot("--state", "running", "--driver", "KVR")

        def card(nodes, kind):
            return [{name: value for name, value in node.items() if name != "children"} for node in nodes
                    if node["type"] == kind and 420 < (node.get("rect") or node["center"])[1] < 520]

        for kind in ("RectangleNode", "DecorationEllipse", "DecorationText"):
            self.assertEqual(card(ready, kind), card(running, kind))
            self.assertTrue(card(ready, kind))
        self.assertEqual([node["enabled"] for node in card(running, "Button")], [False, False])

    def test_fit_to_windows_of_all_kinds(self):
        sizes = [(1538, 1505), (1280, 984), (900, 900), (1, 1), (300, 2000), (2000, 300), (64, 64), (1920, 1080)]
        for width, height in sizes:
            for dpi in (96, 144):
                self.check_fit(width, height, dpi, False)
        for width, height, dpi in ((1538, 1505, 96), (900, 900, 120), (1, 1, 192)):
            self.check_fit(width, height, dpi, True)

    def check_fit(self, width, height, dpi, developer):
        with self.subTest(width=width, height=height, dpi=dpi, developer=developer):
            nodes = shot(*(["--developer"] if developer else []), width=width, height=height, dpi=dpi)
            scale = dpi / 96
            size, x, y = fit(width, height, scale, 1048 if developer else 770)
            self.assertGreater(size, 0)
            root = client_root(scale)
            expected = [size * scale, 0, 0, size * scale, x * scale + root[4], y * scale + root[5]]
            for node in (nodes[0], nodes[-1]):
                for given, wanted in zip(node["worldTransform"], expected, strict=True):
                    self.assertAlmostEqual(given, wanted, delta=1e-4 * max(1, abs(wanted)))

    def test_wrong_options_are_refused(self):
        for options in (["--state", "odd"], ["--driver", "KVR3"], ["--mode", "10"], ["--mode", "-1"], ["--mode", "x"],
                        ["--state"]):
            with self.subTest(options):
                done = subprocess.run([BIN / "scene_shot", "--scene", "launcher", "--width", "10", "--height", "10",
                                       "--out", "/dev/null", *options], capture_output=True, timeout=60, check=False)
                self.assertEqual(done.returncode, 2)
        # And by scenes that have no such options.
        done = subprocess.run([BIN / "scene_shot", "--scene", "text", "--state", "none", "--width", "10", "--height",
                               "10", "--out", "/dev/null"], capture_output=True, timeout=60, check=False)
        self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main()
