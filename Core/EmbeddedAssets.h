// The assets built into the program. The build makes their definitions from the files named in Core/CMakeLists.txt.
#pragma once

#include "Core/EmbeddedResource.h"

namespace Tamborel::Assets {

// Fonts, in the order in which DirectWrite gets them.
extern constinit EmbeddedResource FontRegular;
extern constinit EmbeddedResource FontSemibold;
extern constinit EmbeddedResource FontBold;

// Drawings of the title bar, all SVG.
extern constinit EmbeddedResource AppIcon;
extern constinit EmbeddedResource ReservedGlyphFirst;
extern constinit EmbeddedResource ReservedGlyphSecond;
extern constinit EmbeddedResource MinimizeGlyph;
extern constinit EmbeddedResource MaximizeGlyph;  ///< Stands for restore too.
extern constinit EmbeddedResource CloseGlyph;

}  // namespace Tamborel::Assets
