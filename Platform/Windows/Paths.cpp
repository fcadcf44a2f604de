#include "Platform/Interface/Paths.h"

#include <windows.h>

#include <array>
#include <utility>

namespace Platform {

namespace {

namespace fs = std::filesystem;

/// Move-only owner of a file handle.
class OpenHandle {
public:
    explicit OpenHandle(HANDLE handle) noexcept : handle_(handle) {}
    ~OpenHandle() {
        if (IsOpen()) CloseHandle(handle_);
    }
    OpenHandle(OpenHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    OpenHandle& operator=(OpenHandle&&) = delete;

    bool IsOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

/// Whether the last error says that there is nothing of that name.
bool NothingThere() {
    switch (GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
            return true;
        default:
            return false;
    }
}

/// Opens a file or folder for nothing but asking what it is.
OpenHandle OpenForQuery(const fs::path& path) {
    return OpenHandle(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

/// "\\?\C:\x" as "C:\x" and "\\?\UNC\server\share" as "\\server\share".
std::wstring WithoutPrefix(std::wstring path) {
    static constexpr std::wstring_view network = LR"(\\?\UNC\)";
    static constexpr std::wstring_view local = LR"(\\?\)";
    if (path.starts_with(network)) return LR"(\\)" + path.substr(network.size());
    return path.starts_with(local) ? path.substr(local.size()) : path;
}

/// The file's path with all links resolved.
fs::path FinalPath(HANDLE file, std::error_code& error) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const auto size = static_cast<DWORD>(path.size());
        const DWORD length = GetFinalPathNameByHandleW(file, path.data(), size, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length == 0) {
            error = LastError();
            return {};
        }
        path.resize(length);
        if (length < size) return WithoutPrefix(std::move(path));
    }
}

}  // namespace

std::wstring TextFromPath(const fs::path& path) {
    return path.wstring();
}

fs::path PathFromText(std::wstring_view text) {
    return fs::path(text);
}

fs::path ExistingSpelling(const fs::path& path) {
    return path;
}

fs::path WeaklyCanonical(const fs::path& path, std::error_code& error) {
    error.clear();
    if (path.empty()) return {};
    // From the whole path towards the root, until something exists. ".." counts as Windows counts it: by the text.
    fs::path existing = path.lexically_normal();
    fs::path rest;
    while (!existing.empty()) {
        const OpenHandle file = OpenForQuery(existing);
        if (file.IsOpen()) {
            const fs::path resolved = FinalPath(file.Get(), error);
            if (error) return {};
            return (rest.empty() ? resolved : resolved / rest).lexically_normal();
        }
        if (!NothingThere()) {
            error = LastError();
            return {};
        }
        if (!existing.has_relative_path()) break;  // a drive or share that isn't there
        if (existing.has_filename()) rest = rest.empty() ? existing.filename() : existing.filename() / rest;
        existing = existing.parent_path();
    }
    return path.lexically_normal();
}

void PrepareProfileFile(const fs::path& path) noexcept {
    // The profile functions write UTF-16 to a file that starts with this mark, else the system's code page.
    static constexpr std::array<unsigned char, 2> mark{0xFF, 0xFE};
    const OpenHandle file(
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (file.IsOpen()) WriteFile(file.Get(), mark.data(), static_cast<DWORD>(mark.size()), &written, nullptr);
}

std::FILE* OpenForWriting(const fs::path& path) noexcept {
    return _wfopen(path.c_str(), L"wb");
}

}  // namespace Platform
