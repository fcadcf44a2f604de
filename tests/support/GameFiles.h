// Files for the checks to judge: just large enough headers, with the fields that matter to choose.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/// Fields of an executable's headers. The defaults make a file that counts as a classic program.
struct PeFields {
    std::uint16_t dosMagic = 0x5A4D;
    std::uint32_t headerOffset = 64;
    std::uint32_t signature = 0x00004550;
    std::uint16_t machine = 0x014C;
    std::uint16_t optionalMagic = 0x010B;
};

/// The bytes of the headers: `headerOffset` bytes of DOS header and padding, then signature, COFF header and magic.
std::string PeBytes(const PeFields& fields = {});

/// A pak header, then zeros up to `fileSize` bytes.
std::string PakBytes(std::int32_t directoryOffset, std::int32_t directoryLength, std::size_t fileSize,
                     const char* magic = "PACK");

/// Writes a file, making its folders; replaces an existing one.
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);
std::string ReadBytes(const std::filesystem::path& path);

/// Makes a folder that passes validation: quake2.exe, ref_gl.dll, baseq2/pak0.pak, and baseq2/gamex86.dll for a launch.
void MakeInstallation(const std::filesystem::path& folder);
