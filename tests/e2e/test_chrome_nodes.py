"""The title bar as scene_shot draws it, held against a calculation of its own: boxes, glyphs, text and fills."""

import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

SCENE_SHOT = Path(os.environ["VELORINTH_BIN"]) / "scene_shot"

# The default theme, in device-independent units.
TITLE_HEIGHT, BUTTON_WIDTH, FONT_SIZE, TEXT_SCALE = 42.0, 60.0, 14.28, 1.25

# Name, widest window in units, has an icon, has a title image; in the scene's order.
BARS = [
    ("Normal", None, True, False),
    ("Hovered minimise", None, True, False),
    ("Pressed maximise", None, True, False),
    ("Hovered close", None, True, False),
    ("Pressed close", None, True, False),
    ("Maximised", None, True, False),
    ("Without icon", None, False, False),
    ("Title image", None, True, True),
    ("A title that is too long for a narrow window", 300, True, False),
    ("Narrower than its buttons", 120, True, False),
]
# Which button of which bar is filled: minimise, maximise, close.
FILLED = {1: 0, 2: 1, 3: 2, 4: 2}


def expected(width):
    """Title height, button width, icon, text and the three buttons and glyphs of a window of this width in units."""
    shrink = min(1.0, width / (3 * BUTTON_WIDTH))
    height, button = shrink * TITLE_HEIGHT, shrink * BUTTON_WIDTH
    icon = 0.6 * height
    icon_box = [8, (height - icon) / 2, 8 + icon, (height + icon) / 2]
    text_box = [16 + icon, 0, width - 3 * button - 8, height]
    inset = min(max(height / 2 - 0.5, 0), max(button / 2 - 0.5, 0), 4.5)
    boxes, glyphs = [], []
    for index in range(3):
        left = width - (3 - index) * button
        boxes.append([left + inset, inset, left + button - inset, height - inset])
        middle, half = left + button / 2, 0.175 * button
        glyphs.append([middle - half, height / 2 - half, middle + half, height / 2 + half])
    return height, icon_box, text_box, shrink * FONT_SIZE * TEXT_SCALE, boxes, glyphs


class ChromeNodes(unittest.TestCase):
    def bars(self, width, dpi):
        with tempfile.TemporaryDirectory() as folder:
            nodes = Path(folder) / "nodes.json"
            subprocess.run(
                [SCENE_SHOT, "--scene", "chrome", "--width", str(width), "--height", "500", "--dpi", str(dpi),
                 "--out", Path(folder) / "picture.png", "--nodes", nodes],
                check=True, timeout=60, stdin=subprocess.DEVNULL)
            windows = json.loads(nodes.read_text())["nodes"][0]["children"]
        return [next(child for child in window["children"] if child["type"] == "FrameChrome") for window in windows]

    def near(self, got, wanted, what):
        self.assertEqual(len(got), len(wanted), what)
        for one, other in zip(got, wanted):
            self.assertAlmostEqual(one, other, delta=1e-3 * max(1.0, abs(other)), msg=what)

    def check_bar(self, index, chrome, pixels, dpi):
        name, widest, has_icon, has_image = BARS[index]
        scale = dpi / 96
        # The surface has whole pixels.
        width = (pixels if widest is None else int(min(pixels, widest * scale))) / scale
        what = f"{name}, {pixels} px at {dpi} dpi"
        height, icon_box, text_box, font_size, boxes, glyphs = expected(width)
        children = chrome["children"]
        self.assertEqual([child["type"] for child in children],
                         ["RectangleNode"] * 5 + ["ImagePrimitive"] * 2 + ["TextPrimitive"] + ["RectangleNode"] * 3 +
                         ["ImagePrimitive"] * 3, what)
        self.assertFalse(any(panel["visible"] for panel in children[:5]), what)
        icon, image, text = children[5:8]
        self.assertEqual(icon["visible"], has_icon, what)
        self.near(icon["rect"], icon_box, what + ": icon")
        self.assertEqual((image["visible"], text["visible"]), (has_image, not has_image), what)
        self.assertEqual(text["text"], name, what)
        if not has_image:
            self.near(text["rect"], text_box, what + ": text")
            self.assertAlmostEqual(text["fontSize"], font_size, delta=1e-3, msg=what)
        limit = icon_box[2] + 8 if has_icon else 0
        for slot, (button, glyph) in enumerate(zip(children[8:11], children[11:14])):
            slot_name = f"{what}: button {slot}"
            seen = boxes[slot][2] > boxes[slot][0] and boxes[slot][3] > boxes[slot][1] and boxes[slot][2] > limit
            self.assertEqual(button["visible"], seen, slot_name)
            if abs(glyphs[slot][2] - limit) > 1e-3:
                self.assertEqual(glyph["visible"], glyphs[slot][2] > limit, slot_name)
            if seen:
                self.near(button["rect"], boxes[slot], slot_name)
                self.near(glyph["rect"], glyphs[slot], slot_name + " glyph")
            alpha = button["fill"][3]
            self.assertEqual(alpha > 0, FILLED.get(index) == slot, slot_name)
            if index in (3, 4) and slot == 2:
                red, green, blue = button["fill"][:3]
                self.assertGreater(red, 2 * max(green, blue), "close turns red")

    def test_every_box_is_where_the_formulas_put_it(self):
        for dpi in (48, 72, 96, 120, 144, 192):
            for pixels in (40, 97, 180, 331, 1000, 3000):
                for index, chrome in enumerate(self.bars(pixels, dpi)):
                    with self.subTest(dpi=dpi, pixels=pixels, bar=BARS[index][0]):
                        self.check_bar(index, chrome, pixels, dpi)


if __name__ == "__main__":
    unittest.main()
