#pragma once

/// What validation tells the player, to the letter.
namespace Sentences {

inline constexpr const wchar_t* missing = L"Quake II was not found in this folder (quake2.exe is missing).";
inline constexpr const wchar_t* notClassic = L"Choose classic 32-bit Quake II (quake2.exe), not the remaster.";
inline constexpr const wchar_t* noRenderer = L"The classic OpenGL renderer (ref_gl.dll) is missing or incompatible.";
inline constexpr const wchar_t* noData = L"Quake II game data is missing or invalid: baseq2\\pak0.pak.";
inline constexpr const wchar_t* verified = L"Quake II installation verified.";

}  // namespace Sentences
