"""Joins pictures into what a window tells the desktop of its icon: window_icon.py OUT PICTURE...

For each picture width, height, and the pixels as 0xAARRGGBB from the top left on, not premultiplied, all as 32-bit words in
the byte order of x86-64. ImageMagick reads the pictures.
"""

import struct
import subprocess
import sys
from pathlib import Path


def main(out, *pictures):
    joined = b""
    for picture in pictures:
        size = subprocess.run(["identify", "-format", "%w %h", picture], check=True, stdout=subprocess.PIPE).stdout
        width, height = map(int, size.split())
        pixels = subprocess.run(["convert", picture, "-depth", "8", "BGRA:-"], check=True, stdout=subprocess.PIPE).stdout
        if len(pixels) != width * height * 4:
            raise SystemExit(f"{picture}: {len(pixels)} bytes for {width} by {height} pixels")
        joined += struct.pack("<II", width, height) + pixels
    Path(out).write_bytes(joined)


main(*sys.argv[1:])
