#pragma once

#include <string>

namespace GameDiscovery {

/// What every discovery operation returns. Travels by value from a worker thread to the screen.
struct Result {
    /// The validated folder, absolute and normalised. Empty means that no valid installation was established; there is
    /// no other sign of validity.
    std::wstring Folder;
    /// One sentence for the status line. Set on every path but a cancel, whose words are the screen's own.
    std::wstring Message;
    /// True only when the user dismissed the folder picker.
    bool Cancelled = false;
    /// The path that the user picked, exactly as the picker gave it, valid or not. Set by the picker alone.
    std::wstring SelectedFolder;
};

}  // namespace GameDiscovery
