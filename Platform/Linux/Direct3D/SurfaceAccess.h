// The way from a Direct3D texture or DXGI surface to its image.
#pragma once

#include "Platform/Linux/Direct3D/Texture.h"

#include <memory>

namespace Platform::Direct3D {

/// The image that a texture or surface of ours stands for at the moment: a swap chain's back buffer changes with each
/// present, so ask anew for each frame. Null for a foreign object and for a staging texture.
std::shared_ptr<Texture> TextureOf(IUnknown* object);

}  // namespace Platform::Direct3D
