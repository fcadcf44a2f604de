#include "Platform/Linux/Dialog/Portal.h"

#include "Platform/Linux/Dialog/PortalConversation.h"

namespace Platform {

Portal::Portal(OwnerWatch& owner) : conversation_(std::make_unique<PortalConversation>(owner)) {}
Portal::~Portal() = default;

HRESULT Portal::Connect() {
    return conversation_->Connect();
}
std::uint32_t Portal::Version() const {
    return conversation_->Version();
}
FolderAnswer Portal::PickFolder(const FolderRequest& request) {
    return conversation_->PickFolder(request);
}

}  // namespace Platform
