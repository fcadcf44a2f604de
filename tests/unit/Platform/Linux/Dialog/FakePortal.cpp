#include "FakePortal.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <stdexcept>

namespace {

constexpr const char* kPortalName = "org.freedesktop.portal.Desktop";
constexpr const char* kBackEndName = "org.freedesktop.impl.portal.desktop.fake";
constexpr const char* kObject = "/org/freedesktop/portal/desktop";
constexpr std::chrono::seconds kPatience(20);

constexpr const char* kInterfaces = R"(<node>
  <interface name="org.freedesktop.portal.FileChooser">
    <method name="OpenFile">
      <arg type="s" name="parent_window" direction="in"/>
      <arg type="s" name="title" direction="in"/>
      <arg type="a{sv}" name="options" direction="in"/>
      <arg type="o" name="handle" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="org.freedesktop.portal.Request">
    <method name="Close"/>
    <signal name="Response"><arg type="u"/><arg type="a{sv}"/></signal>
  </interface>
  <interface name="org.freedesktop.impl.portal.Request">
    <method name="Close"/>
  </interface>
</node>)";

GDBusConnection* Connect(const std::string& address, const char* name) {
    GError* error = nullptr;
    GDBusConnection* const connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error);
    if (!connection) throw std::runtime_error(error->message);
    GVariant* const owned = g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", name, 0U), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (owned) g_variant_unref(owned);
    return connection;
}

GDBusInterfaceInfo* Interface(GDBusNodeInfo* node, const char* name) {
    return g_dbus_node_info_lookup_interface(node, name);
}

}  // namespace

FakePortal::FakePortal(const std::string& address, FakePortalSettings settings)
    : settings_(std::move(settings)),
      context_(g_main_context_new()),
      loop_(g_main_loop_new(context_, FALSE)),
      interfaces_(g_dbus_node_info_new_for_xml(kInterfaces, nullptr)),
      thread_([this, address] { Serve(address); }) {
    WaitFor(serving_);
}

FakePortal::~FakePortal() {
    // From inside the loop, which may not have begun yet.
    GSource* const quit = g_idle_source_new();
    g_source_set_callback(
        quit,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_, nullptr);
    g_source_attach(quit, context_);
    g_source_unref(quit);
    thread_.join();
    for (GDBusConnection* const connection : {portal_, backEnd_}) {
        if (!connection) continue;
        g_dbus_connection_close_sync(connection, nullptr, nullptr);
        g_object_unref(connection);
    }
    g_dbus_node_info_unref(interfaces_);
    g_main_loop_unref(loop_);
    g_main_context_unref(context_);
}

void FakePortal::Serve(const std::string& address) {
    static const GDBusInterfaceVTable handlers{
        [](GDBusConnection* connection, const char*, const char*, const char* interface, const char* method,
           GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
            static_cast<FakePortal*>(self)->OnMethod(connection, interface, method, arguments, invocation);
        },
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GError**, gpointer self) {
            return g_variant_new_uint32(static_cast<FakePortal*>(self)->settings_.version);
        },
        nullptr,
        {}};
    g_main_context_push_thread_default(context_);
    if (settings_.hasBackEnd) {
        backEnd_ = Connect(address, kBackEndName);
        const auto filter = [](GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer self) {
            const char* const member = g_dbus_message_get_member(message);
            if (incoming && member && std::strcmp(member, "Introspect") == 0) {
                auto* const portal = static_cast<FakePortal*>(self);
                const std::lock_guard lock(portal->mutex_);
                portal->inspected_ = true;
                portal->changed_.notify_all();
            }
            return message;
        };
        g_dbus_connection_add_filter(backEnd_, filter, this, nullptr);
    }
    portal_ = Connect(address, kPortalName);
    g_dbus_connection_register_object(portal_, kObject, Interface(interfaces_, "org.freedesktop.portal.FileChooser"),
                                      &handlers, this, nullptr, nullptr);
    {
        const std::lock_guard lock(mutex_);
        serving_ = true;
        changed_.notify_all();
    }
    g_main_loop_run(loop_);
    g_main_context_pop_thread_default(context_);
}

void FakePortal::OnMethod(GDBusConnection*, const char*, const char* method, GVariant* arguments,
                          GDBusMethodInvocation* invocation) {
    if (std::strcmp(method, "OpenFile") == 0) {
        Open(arguments, invocation);
        return;
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

void FakePortal::Open(GVariant* arguments, GDBusMethodInvocation* invocation) {
    using Reply = FakePortalSettings::Reply;
    PortalCall call;
    const char* parent = nullptr;
    const char* title = nullptr;
    GVariantIter* options = nullptr;
    g_variant_get(arguments, "(&s&sa{sv})", &parent, &title, &options);
    call.parent = parent;
    call.title = title;
    std::string token;
    const char* name = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_loop(options, "{&sv}", &name, &value)) {
        char* const text = g_variant_print(value, FALSE);
        call.options[name] = text;
        g_free(text);
        if (std::strcmp(name, "handle_token") == 0) token = g_variant_get_string(value, nullptr);
    }
    g_variant_iter_free(options);

    std::string sender = g_dbus_method_invocation_get_sender(invocation);
    sender.erase(0, 1);  // The colon.
    for (char& character : sender) {
        if (character == '.') character = '_';
    }
    if (settings_.reply == Reply::ForeignHandle) token += "_foreign";
    call.handle.append(kObject).append("/request/").append(sender).append("/").append(token);

    static const GDBusInterfaceVTable handlers{
        [](GDBusConnection* connection, const char*, const char*, const char* interface, const char* method,
           GVariant* parameters, GDBusMethodInvocation* closing, gpointer self) {
            static_cast<FakePortal*>(self)->OnMethod(connection, interface, method, parameters, closing);
        },
        nullptr,
        nullptr,
        {}};
    g_dbus_connection_register_object(portal_, call.handle.c_str(),
                                      Interface(interfaces_, "org.freedesktop.portal.Request"), &handlers, this,
                                      nullptr, nullptr);
    if (backEnd_) {
        g_dbus_connection_register_object(backEnd_, call.handle.c_str(),
                                          Interface(interfaces_, "org.freedesktop.impl.portal.Request"), &handlers,
                                          this, nullptr, nullptr);
    }
    const std::string handle = call.handle;
    {
        const std::lock_guard lock(mutex_);
        call_ = std::move(call);
        caller_ = g_dbus_method_invocation_get_sender(invocation);
    }
    if (settings_.earlyResponse) Respond(*settings_.earlyResponse);
    if (settings_.reply == Reply::Error) {
        g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.AccessDenied", "not today");
    } else if (settings_.reply != Reply::None) {
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", handle.c_str()));
    } else {
        g_object_unref(invocation);  // No reply ever.
    }
    const std::lock_guard lock(mutex_);
    called_ = true;
    changed_.notify_all();
}

bool FakePortal::WaitFor(const bool& flag) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] { return flag; });
}

PortalCall FakePortal::WaitForCall() {
    if (!WaitFor(called_)) {
        ADD_FAILURE() << "the portal was not called";
        return {};
    }
    const std::lock_guard lock(mutex_);
    return call_;
}

bool FakePortal::WaitForClose() {
    return WaitFor(closed_);
}
bool FakePortal::WaitForInspection() {
    return WaitFor(inspected_);
}

bool FakePortal::WasCalled() {
    const std::lock_guard lock(mutex_);
    return called_;
}

void FakePortal::Respond(const PortalResponse& response) {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    if (!response.uris.empty()) {
        GVariantBuilder uris;
        g_variant_builder_init(&uris, G_VARIANT_TYPE_STRING_ARRAY);
        for (const std::string& uri : response.uris) g_variant_builder_add(&uris, "s", uri.c_str());
        g_variant_builder_add(&results, "{sv}", "uris", g_variant_builder_end(&uris));
    }
    std::string handle;
    std::string caller;
    {
        const std::lock_guard lock(mutex_);
        handle = call_.handle;
        caller = caller_;
    }
    g_dbus_connection_emit_signal(portal_, caller.c_str(), handle.c_str(), "org.freedesktop.portal.Request", "Response",
                                  g_variant_new("(ua{sv})", response.response, &results), nullptr);
}

void FakePortal::Leave() {
    g_dbus_connection_close_sync(portal_, nullptr, nullptr);
}

void FakePortal::LoseBackEnd() {
    g_dbus_connection_close_sync(backEnd_, nullptr, nullptr);
}

void FakePortal::ComeAndGo(const std::string& address) {
    GDBusConnection* const other = Connect(address, "org.freedesktop.impl.portal.desktop.other");
    g_dbus_connection_close_sync(other, nullptr, nullptr);
    g_object_unref(other);
}
