#include "Platform/Linux/Dialog/PortalConversation.h"

#include "Platform/Linux/Base/Trace.h"
#include "Platform/Linux/Dialog/BusAddress.h"
#include "Platform/Linux/Dialog/OwnerWatch.h"
#include "Platform/Linux/Dialog/PortalBackEnds.h"
#include "Platform/Linux/Dialog/PortalRequest.h"

#include <glib-unix.h>

#include <utility>

namespace Platform {

namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kFileChooser = "org.freedesktop.portal.FileChooser";
constexpr const char* kRequest = "org.freedesktop.portal.Request";

constexpr guint kConnectMilliseconds = 5000;
constexpr int kCallMilliseconds = 25000;  // The portal and its back ends may have to be started first.
constexpr int kCloseMilliseconds = 1000;
// A back end's death shows as response 2, an ordinary end, a moment after its bus name went.
constexpr guint kAftermathMilliseconds = 1000;

// The `response` values of the signal.
enum Response : guint32 { kPicked = 0, kDismissed = 1, kEnded = 2 };

}  // namespace

PortalConversation::PortalConversation(OwnerWatch& owner) : owner_(owner) {
    GSourceOwner source(g_unix_fd_source_new(owner_.Descriptor(), G_IO_IN));
    g_source_set_callback(source.get(), reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(OnOwner)), this,
                          nullptr);
    g_source_attach(source.get(), context_.Get());
    sources_.push_back(std::move(source));
}

PortalConversation::~PortalConversation() {
    for (const GSourceOwner& source : sources_) g_source_destroy(source.get());
    sources_.clear();
    if (connection_) {
        for (const guint subscription : subscriptions_) {
            g_dbus_connection_signal_unsubscribe(connection_.get(), subscription);
        }
        if (closedHandler_ != 0) g_signal_handler_disconnect(connection_.get(), closedHandler_);
        if (!handle_.empty()) CloseRequest();
    }
    g_cancellable_cancel(cancellable_.get());
    while (pending_ > 0) g_main_context_iteration(context_.Get(), TRUE);
    if (connection_) Disconnect();
    // Signals that were on their way here refer to the connection, and through it to the context that they wait in.
    while (g_main_context_iteration(context_.Get(), FALSE)) continue;
}

HRESULT PortalConversation::Run() {
    finished_ = false;
    if (owner_.Gone()) Finish(kCancelled);
    while (!finished_) g_main_context_iteration(context_.Get(), TRUE);
    return result_;
}

void PortalConversation::Finish(HRESULT result) {
    if (finished_) return;  // The first end counts.
    finished_ = true;
    result_ = result;
}

void PortalConversation::Fail(const char* step, const GError* error) {
    if (finished_) return;
    TraceFailure(step, error ? error->message : "it left");
    Finish(E_FAIL);
}

void PortalConversation::After(guint milliseconds, GSourceFunc callback) {
    GSourceOwner source(g_timeout_source_new(milliseconds));
    g_source_set_callback(source.get(), callback, this, nullptr);
    g_source_attach(source.get(), context_.Get());
    sources_.push_back(std::move(source));
}

HRESULT PortalConversation::Connect() {
    const auto address = SessionBusAddress();
    if (!address) {
        TraceFailure("session bus", "there is none");
        return E_FAIL;
    }
    After(kConnectMilliseconds, OnConnectTimeout);
    ++pending_;
    // Not g_bus_get: that connection is shared by the whole process and ends it when the bus goes.
    g_dbus_connection_new_for_address(address->c_str(),
                                      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
                                      nullptr, cancellable_.get(), OnConnected, this);
    if (const HRESULT result = Run(); FAILED(result)) return result;
    g_source_destroy(sources_.back().get());  // The time-out.

    closedHandler_ = g_signal_connect(connection_.get(), "closed", G_CALLBACK(OnBusClosed), this);
    Subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", "/org/freedesktop/DBus", kService,
              G_DBUS_SIGNAL_FLAGS_NONE, OnPortalOwner);
    Subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", "/org/freedesktop/DBus",
              kBackEndNamespace, G_DBUS_SIGNAL_FLAGS_MATCH_ARG0_NAMESPACE, OnBackEndOwner);
    Call(kPath, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", kFileChooser, "version"), "(v)",
         G_DBUS_CALL_FLAGS_NONE, kCallMilliseconds, OnVersion);
    return Run();
}

FolderAnswer PortalConversation::PickFolder(const FolderRequest& request) {
    const std::string token = NewRequestToken();
    handle_ = RequestHandle(g_dbus_connection_get_unique_name(connection_.get()), token);
    // Before the call, for the response may come before the call's reply.
    SubscribeToResponse();
    Call(kPath, kFileChooser, "OpenFile", OpenFileArguments(request, token), "(o)", G_DBUS_CALL_FLAGS_NONE,
         kCallMilliseconds, OnOpened);
    const HRESULT result = Run();
    return {result, path_};
}

void PortalConversation::Subscribe(const char* sender, const char* interface, const char* signal, const char* path,
                                   const char* argument, GDBusSignalFlags flags, GDBusSignalCallback callback) {
    subscriptions_.push_back(g_dbus_connection_signal_subscribe(connection_.get(), sender, interface, signal, path,
                                                                argument, flags, callback, this, nullptr));
}

void PortalConversation::SubscribeToResponse() {
    Subscribe(kService, kRequest, "Response", handle_.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE, OnResponse);
}

void PortalConversation::Call(const char* path, const char* interface, const char* method, GVariant* arguments,
                              const char* replyType, GDBusCallFlags flags, int milliseconds,
                              GAsyncReadyCallback callback) {
    ++pending_;
    g_dbus_connection_call(connection_.get(), kService, path, interface, method, arguments, G_VARIANT_TYPE(replyType),
                           flags, milliseconds, cancellable_.get(), callback, this);
}

// The reply of a call whose callback runs; none, with the conversation failed, for an error.
GVariantOwner PortalConversation::TakeReply(GAsyncResult* result, const char* step) {
    --pending_;
    GError* error = nullptr;
    GVariantOwner reply(g_dbus_connection_call_finish(connection_.get(), result, &error));
    const GErrorOwner owner(error);
    if (!reply) Fail(step, error);
    return reply;
}

// Takes the dialog off the screen. A portal that has left is not started again for it.
void PortalConversation::CloseRequest() {
    Call(handle_.c_str(), kRequest, "Close", nullptr, "()", G_DBUS_CALL_FLAGS_NO_AUTO_START, kCloseMilliseconds,
         OnRequestClosed);
    while (!requestClosed_) g_main_context_iteration(context_.Get(), TRUE);
}

// Leaves the bus, upon which the portal also closes what this client has open. A bus that doesn't take what is still to
// be sent is given up.
void PortalConversation::Disconnect() {
    const GObjectOwner<GCancellable> patience(g_cancellable_new());
    GSourceOwner timeout(g_timeout_source_new(kCloseMilliseconds));
    g_source_set_callback(
        timeout.get(),
        [](gpointer cancellable) -> gboolean {
            g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
            return G_SOURCE_REMOVE;
        },
        patience.get(), nullptr);
    g_source_attach(timeout.get(), context_.Get());
    ++pending_;
    g_dbus_connection_close(connection_.get(), patience.get(), OnDisconnected, this);
    while (pending_ > 0) g_main_context_iteration(context_.Get(), TRUE);
    g_source_destroy(timeout.get());
}

void PortalConversation::OnConnected(GObject*, GAsyncResult* result, gpointer self) {
    PortalConversation& conversation = From(self);
    --conversation.pending_;
    GError* error = nullptr;
    conversation.connection_.reset(g_dbus_connection_new_for_address_finish(result, &error));
    const GErrorOwner owner(error);
    if (conversation.connection_) {
        conversation.Finish(S_OK);
    } else {
        conversation.Fail("session bus", error);
    }
}

void PortalConversation::OnVersion(GObject*, GAsyncResult* result, gpointer self) {
    PortalConversation& conversation = From(self);
    const GVariantOwner reply = conversation.TakeReply(result, "file chooser portal");
    if (!reply) return;
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    const GVariantOwner owner(value);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) conversation.version_ = g_variant_get_uint32(value);
    conversation.Finish(S_OK);
}

void PortalConversation::OnOpened(GObject*, GAsyncResult* result, gpointer self) {
    PortalConversation& conversation = From(self);
    const GVariantOwner reply = conversation.TakeReply(result, "file chooser portal");
    if (!reply) return;
    const char* handle = nullptr;
    g_variant_get(reply.get(), "(&o)", &handle);
    if (conversation.handle_.empty() || conversation.handle_ == handle) return;
    conversation.handle_ = handle;  // Portals older than the rule that handles follow.
    conversation.SubscribeToResponse();
}

void PortalConversation::OnRequestClosed(GObject*, GAsyncResult* result, gpointer self) {
    PortalConversation& conversation = From(self);
    --conversation.pending_;
    // An error means that the request has ended already.
    const GVariantOwner reply(g_dbus_connection_call_finish(conversation.connection_.get(), result, nullptr));
    conversation.requestClosed_ = true;
}

void PortalConversation::OnDisconnected(GObject*, GAsyncResult* result, gpointer self) {
    PortalConversation& conversation = From(self);
    --conversation.pending_;
    g_dbus_connection_close_finish(conversation.connection_.get(), result, nullptr);
}

gboolean PortalConversation::OnOwner(gint, GIOCondition, gpointer self) {
    PortalConversation& conversation = From(self);
    if (!conversation.owner_.Gone()) return G_SOURCE_CONTINUE;
    conversation.Finish(kCancelled);
    return G_SOURCE_REMOVE;
}

gboolean PortalConversation::OnConnectTimeout(gpointer self) {
    if (!From(self).finished_) TraceFailure("session bus", "it does not answer");
    From(self).Finish(E_FAIL);
    return G_SOURCE_REMOVE;
}

void PortalConversation::OnBusClosed(GDBusConnection*, gboolean, GError* error, gpointer self) {
    From(self).Fail("session bus", error);
}

void PortalConversation::OnPortalOwner(GDBusConnection*, const char*, const char*, const char*, const char*,
                                       GVariant* parameters, gpointer self) {
    const char* oldOwner = nullptr;
    g_variant_get_child(parameters, 1, "&s", &oldOwner);
    if (*oldOwner) From(self).Fail("file chooser portal", nullptr);
}

void PortalConversation::OnBackEndOwner(GDBusConnection*, const char*, const char*, const char*, const char*,
                                        GVariant* parameters, gpointer self) {
    const char* oldOwner = nullptr;
    g_variant_get_child(parameters, 1, "&s", &oldOwner);
    PortalConversation& conversation = From(self);
    if (!*oldOwner || conversation.handle_.empty()) return;
    conversation.backEndLost_ = g_get_monotonic_time();
    conversation.After(kAftermathMilliseconds, OnAftermath);
}

// A back end went and no response came of it: either it wasn't ours, or there will never be one.
gboolean PortalConversation::OnAftermath(gpointer self) {
    PortalConversation& conversation = From(self);
    if (!conversation.finished_ && !AnyBackEndHolds(conversation.connection_.get(), conversation.handle_.c_str())) {
        conversation.Fail("file chooser portal's back end", nullptr);
    }
    return G_SOURCE_REMOVE;
}

void PortalConversation::OnResponse(GDBusConnection*, const char*, const char*, const char*, const char*,
                                    GVariant* parameters, gpointer self) {
    PortalConversation& conversation = From(self);
    if (conversation.finished_ || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})"))) return;
    conversation.handle_.clear();  // The request has ended: nothing to close.
    guint32 response = 0;
    GVariant* results = nullptr;
    g_variant_get(parameters, "(u@a{sv})", &response, &results);
    const GVariantOwner owner(results);
    const bool dismissed = response == kDismissed;
    const bool ended = response == kEnded;  // Escape, and the window's own close button; or a dialog that died.
    if (response == kPicked) {
        conversation.path_ = PickedPath(results);
        conversation.Finish(S_OK);
    } else if (dismissed || (ended && !conversation.BackEndFailed())) {
        conversation.Finish(kCancelled);
    } else {
        conversation.Fail("file chooser portal's back end", nullptr);
    }
}

// Whether a response that tells of some other end than a choice stands for a dialog that died, or that never was: the
// portal answers with it too when its back end leaves or can't be started.
bool PortalConversation::BackEndFailed() const {
    const gint64 sinceLoss = g_get_monotonic_time() - backEndLost_;
    if (backEndLost_ != 0 && sinceLoss < gint64{kAftermathMilliseconds} * 1000) return true;
    return RunningBackEnds(connection_.get()).empty();
}

}  // namespace Platform
