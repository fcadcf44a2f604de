#include "tests/support/GameFiles.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

template <class Integer>
void Put(std::string& bytes, std::size_t offset, Integer value) {
    if (bytes.size() < offset + sizeof value) bytes.resize(offset + sizeof value);
    for (std::size_t i = 0; i < sizeof value; ++i) {
        bytes[offset + i] = static_cast<char>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xFF);
    }
}

}  // namespace

std::string PeBytes(const PeFields& fields) {
    std::string bytes(64, '\0');
    Put(bytes, 0, fields.dosMagic);
    Put(bytes, 60, fields.headerOffset);
    Put(bytes, fields.headerOffset, fields.signature);
    Put(bytes, fields.headerOffset + 4, fields.machine);
    Put(bytes, fields.headerOffset + 24, fields.optionalMagic);
    return bytes;
}

std::string PakBytes(std::int32_t directoryOffset, std::int32_t directoryLength, std::size_t fileSize,
                     const char* magic) {
    std::string bytes(magic, std::strlen(magic));
    Put(bytes, 4, static_cast<std::uint32_t>(directoryOffset));
    Put(bytes, 8, static_cast<std::uint32_t>(directoryLength));
    bytes.resize(fileSize);
    return bytes;
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void MakeInstallation(const fs::path& folder) {
    WriteBytes(folder / "quake2.exe", PeBytes());
    WriteBytes(folder / "ref_gl.dll", PeBytes());
    WriteBytes(folder / "baseq2" / "pak0.pak", PakBytes(12, 64, 76));
    WriteBytes(folder / "baseq2" / "gamex86.dll", PeBytes());
}
