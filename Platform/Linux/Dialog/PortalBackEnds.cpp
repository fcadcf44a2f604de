#include "Platform/Linux/Dialog/PortalBackEnds.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Platform {

namespace {

constexpr int kAnswerMilliseconds = 1000;

bool Holds(GDBusConnection* connection, const std::string& backEnd, const char* handle) {
    const GVariantOwner reply(g_dbus_connection_call_sync(
        connection, backEnd.c_str(), handle, "org.freedesktop.DBus.Introspectable", "Introspect", nullptr,
        G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, kAnswerMilliseconds, nullptr, nullptr));
    if (!reply) return false;
    const char* description = nullptr;
    g_variant_get(reply.get(), "(&s)", &description);
    return std::strstr(description, "\"org.freedesktop.impl.portal.Request\"") != nullptr;
}

}  // namespace

std::vector<std::string> RunningBackEnds(GDBusConnection* connection) {
    const GVariantOwner reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames", nullptr,
        G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, kAnswerMilliseconds, nullptr, nullptr));
    std::vector<std::string> running;
    if (!reply) return running;
    const GVariantOwner names(g_variant_get_child_value(reply.get(), 0));
    const std::string prefix = std::string(kBackEndNamespace) + '.';
    for (gsize i = 0; i < g_variant_n_children(names.get()); ++i) {
        const GVariantOwner name(g_variant_get_child_value(names.get(), i));
        std::string text = g_variant_get_string(name.get(), nullptr);
        if (text.starts_with(prefix)) running.push_back(std::move(text));
    }
    return running;
}

bool AnyBackEndHolds(GDBusConnection* connection, const char* handle) {
    const std::vector<std::string> running = RunningBackEnds(connection);
    return std::any_of(running.begin(), running.end(),
                       [&](const std::string& name) { return Holds(connection, name, handle); });
}

}  // namespace Platform
