// What makes a file a classic game's program or pak, judged by headers alone.
#pragma once

#include "launcher/GameDiscovery/ByteSource.h"

namespace GameDiscovery {

/// Whether the bytes begin like a 32-bit (i386, PE32) Windows program or library: DOS header, signature, COFF file
/// header and the optional header's magic. Nothing else is looked at.
bool HasClassicPeHeaders(ByteSource& source);

/// Whether the bytes begin with a pak header whose directory lies inside them and holds at least one entry.
bool HasPakHeader(ByteSource& source);

}  // namespace GameDiscovery
