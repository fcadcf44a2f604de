#!/usr/bin/env python3
"""Makes C++ sources of the assets that the program carries within itself, enciphered, and of their key.

    encipher.py --key KEY.hex --name NAME --out FILE.cpp ASSET    one asset: Tamborel::Assets::NAME
    encipher.py --key KEY.hex --out FILE.cpp                      the key: Tamborel::EmbeddedKey

The block is nonce (12 bytes), AES-256-GCM ciphertext, tag (16 bytes). The nonce comes from the key and the content, so
that the same input always gives the same source; two different contents under one key get different nonces, which is
what the mode asks for.
"""

import argparse
import hashlib
import re
import sys
from pathlib import Path

KEY_SIZE = 32
NONCE_SIZE = 12
BYTES_A_LINE = 32


class EncipherError(Exception):
    """Ends the program with one line."""


def read_key(path):
    try:
        text = Path(path).read_text(encoding="ascii").strip()
    except (OSError, UnicodeDecodeError) as error:
        raise EncipherError(f"the key file {path} can't be read") from error
    if not re.fullmatch(r"[0-9a-fA-F]{%d}" % (2 * KEY_SIZE), text):
        raise EncipherError(f"the key file {path} does not hold {2 * KEY_SIZE} hexadecimal digits")
    return bytes.fromhex(text)


def read_asset(path):
    try:
        content = Path(path).read_bytes()
    except FileNotFoundError as error:
        raise EncipherError(f"the asset {path} is missing") from error
    except OSError as error:
        raise EncipherError(f"the asset {path} can't be read: {error.strerror}") from error
    return content


def encipher(key, content):
    try:
        from cryptography.hazmat.primitives.ciphers.aead import AESGCM
    except ImportError as error:
        raise EncipherError("the Debian package python3-cryptography is not installed") from error
    nonce = hashlib.sha256(key + content).digest()[:NONCE_SIZE]
    return nonce + AESGCM(key).encrypt(nonce, content, None)


def byte_list(data):
    lines = (data[start:start + BYTES_A_LINE] for start in range(0, len(data), BYTES_A_LINE))
    return ",\n".join("    " + ",".join(map(str, line)) for line in lines)


def key_source(key):
    return f"""#include "Core/EmbeddedKey.h"

namespace Tamborel {{

const std::array<std::uint8_t, {KEY_SIZE}> EmbeddedKey{{
{byte_list(key)}}};

}}  // namespace Tamborel
"""


def asset_source(name, asset, block):
    return f"""// {Path(asset).name}, enciphered.
#include "Core/EmbeddedResource.h"

namespace Tamborel::Assets {{

namespace {{

alignas(16) std::uint8_t block[] = {{
{byte_list(block)}}};

}}  // namespace

extern constinit EmbeddedResource {name};
constinit EmbeddedResource {name}(block, sizeof(block));

}}  // namespace Tamborel::Assets
"""


def main():
    parser = argparse.ArgumentParser(description="Enciphers an asset, or writes the key, as a C++ source.")
    parser.add_argument("--key", required=True)
    parser.add_argument("--name")
    parser.add_argument("--out", required=True)
    parser.add_argument("asset", nargs="?")
    arguments = parser.parse_args()
    if (arguments.name is None) != (arguments.asset is None):
        parser.error("--name and the asset go together")
    try:
        key = read_key(arguments.key)
        if arguments.asset is None:
            source = key_source(key)
        else:
            source = asset_source(arguments.name, arguments.asset, encipher(key, read_asset(arguments.asset)))
        Path(arguments.out).write_text(source, encoding="ascii")
    except EncipherError as error:
        print(f"encipher: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
