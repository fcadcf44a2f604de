#include "Platform/Linux/Files/FullPath.h"

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Files/TextResult.h"
#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <new>

namespace Platform {

std::string ResolveDots(std::string_view absolute) {
    std::string resolved;  // "" for the root, else "/a/b"
    for (std::size_t position = 0; position < absolute.size();) {
        const std::size_t end = std::min(absolute.find('/', position), absolute.size());
        const std::string_view name = absolute.substr(position, end - position);
        position = end + 1;
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            resolved.erase(std::min(resolved.rfind('/'), resolved.size()));
        } else {
            resolved.append("/").append(name);
        }
    }
    if (resolved.empty() || absolute.ends_with('/')) resolved += '/';
    return resolved;
}

namespace {

struct FreeMemory {
    void operator()(char* memory) const noexcept { free(memory); }
};

}  // namespace

}  // namespace Platform

DWORD GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* filePart) noexcept try {
    if (!name || !*name || filePart) {
        SetLastError(filePart ? ERROR_INVALID_PARAMETER : ERROR_INVALID_NAME);
        return 0;
    }
    std::string path = Platform::NativeFromWide(name);
    if (!path.starts_with('/')) {
        const std::unique_ptr<char, Platform::FreeMemory> folder(getcwd(nullptr, 0));
        if (!folder) {
            Platform::SetLastErrorFromErrno();
            return 0;
        }
        path = std::string(folder.get()) + '/' + path;
    }
    return Platform::CopyOrTellSize(Platform::WideFromNative(Platform::ResolveDots(path)), buffer, size);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}
