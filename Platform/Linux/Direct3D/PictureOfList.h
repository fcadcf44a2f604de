#pragma once

#include "Platform/Linux/Direct3D/Commands.h"
#include "Platform/Linux/Direct3D/Player.h"
#include "Platform/Linux/Direct3D/UnfinishedPicture.h"

#include <optional>

namespace Platform::Direct3D {

/// The texture that a list draws on last; null if its last command draws nothing.
Texture2D* DrawnLast(const CommandList& list);

/// The list as a picture in steps, if it draws one and nothing else: its last command draws on a buffer whose pixels
/// lie in memory, what else it draws on it has cleared before, and it computes and copies nothing. Else nothing. With
/// the device locked; the steps refer to the player and keep the list. Throws std::bad_alloc.
std::optional<UnfinishedPicture> PictureOf(CommandList& list, Player& player);

}  // namespace Platform::Direct3D
