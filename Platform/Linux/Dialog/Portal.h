// The conversation with the desktop's file chooser portal (org.freedesktop.portal.FileChooser).
#pragma once

#include "Platform/Linux/Dialog/FolderRequest.h"

#include <cstdint>
#include <memory>

namespace Platform {

class OwnerWatch;
class PortalConversation;

/// One dialog of the portal. It speaks over a bus connection of its own, on a main context of its own, so that it needs
/// no main loop in the program and a lost bus doesn't end the process. Every wait ends when the dialog's owner goes,
/// when the portal or the bus leaves, or when the program behind the dialog dies. One thread only; throws only
/// std::bad_alloc.
class Portal {
public:
    /// The first interface version that can pick folders, and the first that opens at a given one.
    static constexpr std::uint32_t kDirectoryVersion = 3;
    static constexpr std::uint32_t kCurrentFolderVersion = 4;

    /// `owner` outlives this object.
    explicit Portal(OwnerWatch& owner);
    ~Portal();
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;

    /// Connects to the session bus and asks the portal for its version, which starts it where it doesn't run yet. A
    /// failure when there is no bus or no portal; kCancelled when the owner goes meanwhile.
    HRESULT Connect();

    /// The interface version, once Connect has succeeded.
    std::uint32_t Version() const;

    /// Shows the dialog and waits for its end. Once per object, after Connect.
    FolderAnswer PickFolder(const FolderRequest& request);

private:
    std::unique_ptr<PortalConversation> conversation_;
};

}  // namespace Platform
