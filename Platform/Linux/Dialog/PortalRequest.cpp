#include "Platform/Linux/Dialog/PortalRequest.h"

#include <algorithm>
#include <cstring>

namespace Platform {

namespace {

// The portal shows an underline where a label has a single underscore.
std::string EscapedLabel(const std::string& label) {
    std::string escaped;
    for (const char character : label) escaped.append(character == '_' ? 2 : 1, character);
    return escaped;
}

std::string ParentWindow(const FolderRequest& request) {
    if (!request.ownerXWindow) return {};
    const GTextOwner text(g_strdup_printf("x11:%x", *request.ownerXWindow));
    return text.get();
}

GVariant* Options(const FolderRequest& request, const std::string& token) {
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    const auto add = [&](const char* name, GVariant* value) { g_variant_builder_add(&options, "{sv}", name, value); };
    add("handle_token", g_variant_new_string(token.c_str()));
    add("directory", g_variant_new_boolean(TRUE));
    add("modal", g_variant_new_boolean(TRUE));
    if (!request.acceptLabel.empty()) {
        add("accept_label", g_variant_new_string(EscapedLabel(request.acceptLabel).c_str()));
    }
    // Before version 4 the portal ignores it.
    if (!request.startFolder.empty()) add("current_folder", g_variant_new_bytestring(request.startFolder.c_str()));
    return g_variant_builder_end(&options);
}

}  // namespace

std::string NewRequestToken() {
    const GTextOwner random(g_uuid_string_random());
    std::string token = std::string("velorinth_") + random.get();
    std::replace(token.begin(), token.end(), '-', '_');
    return token;
}

std::string RequestHandle(const char* busName, const std::string& token) {
    std::string sender = busName + 1;  // Without the colon.
    std::replace(sender.begin(), sender.end(), '.', '_');
    return "/org/freedesktop/portal/desktop/request/" + sender + '/' + token;
}

GVariant* OpenFileArguments(const FolderRequest& request, const std::string& token) {
    return g_variant_new("(ss@a{sv})", ParentWindow(request).c_str(), request.title.c_str(), Options(request, token));
}

std::string PickedPath(GVariant* results) {
    const GVariantOwner addresses(g_variant_lookup_value(results, "uris", G_VARIANT_TYPE_STRING_ARRAY));
    if (!addresses || g_variant_n_children(addresses.get()) == 0) return {};
    const GVariantOwner first(g_variant_get_child_value(addresses.get(), 0));
    char* host = nullptr;
    const GTextOwner path(g_filename_from_uri(g_variant_get_string(first.get(), nullptr), &host, nullptr));
    const GTextOwner owner(host);
    if (!path || (host && *host && std::strcmp(host, "localhost") != 0)) return {};
    return path.get();
}

}  // namespace Platform
