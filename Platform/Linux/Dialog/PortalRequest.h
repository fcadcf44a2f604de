// The words of a file chooser request and of its response. For this folder's sources only.
#pragma once

#include "Platform/Linux/Dialog/FolderRequest.h"
#include "Platform/Linux/Dialog/GLibOwners.h"

#include <string>

namespace Platform {

/// A name for a request that no other one has, fit for an object path.
std::string NewRequestToken();

/// The object path that the portal gives to a request with this token by the client with this bus name.
std::string RequestHandle(const char* busName, const std::string& token);

/// The arguments of OpenFile for a folder dialog; a floating reference.
GVariant* OpenFileArguments(const FolderRequest& request, const std::string& token);

/// The local path of the first address in a response's results; empty when there is none.
std::string PickedPath(GVariant* results);

}  // namespace Platform
