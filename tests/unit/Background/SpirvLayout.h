// Reads from a compiled program where the members of its constant buffer lie.
#pragma once

#include "Background/ShaderPrograms.h"

#include <cstdint>
#include <map>
#include <string>

/// The byte offset of each member, by name, of the structure called `block`; empty when there is none.
std::map<std::string, std::uint32_t> MemberOffsets(const Tamborel::ShaderBytecode& program, const std::string& block);
