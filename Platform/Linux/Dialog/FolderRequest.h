// What a folder dialog is asked for and what it answers, whichever program shows it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace Platform {

/// Texts are UTF-8; paths are bytes as the file system has them.
struct FolderRequest {
    std::optional<std::uint32_t> ownerXWindow;  ///< The window that the dialog is modal to.
    std::string title;
    std::string acceptLabel;  ///< Empty for the dialog's own.
    std::string startFolder;  ///< Absolute and existing, or empty for the dialog's own choice.
};

/// How the dialog ended.
struct FolderAnswer {
    /// S_OK for a pick, HRESULT_FROM_WIN32(ERROR_CANCELLED) for a dismissal, another failure when it couldn't be shown
    /// or ended by itself.
    HRESULT result = E_FAIL;
    /// The pick. Empty when it is no place in the file system.
    std::string path;
};

inline constexpr HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

}  // namespace Platform
