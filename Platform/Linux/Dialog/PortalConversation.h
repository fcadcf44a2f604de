// The conversation with the portal, over GDBus. For this folder's sources only.
#pragma once

#include "Platform/Linux/Dialog/FolderRequest.h"
#include "Platform/Linux/Dialog/GLibOwners.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Platform {

class OwnerWatch;

// Each step starts something asynchronous and turns the context until Finish was called: by the step's own callback, or
// by one of the watches. The destructor waits for the callbacks that are still to come, since they refer to this
// object.
class PortalConversation {
public:
    explicit PortalConversation(OwnerWatch& owner);
    ~PortalConversation();
    PortalConversation(const PortalConversation&) = delete;
    PortalConversation& operator=(const PortalConversation&) = delete;

    HRESULT Connect();
    FolderAnswer PickFolder(const FolderRequest& request);
    std::uint32_t Version() const { return version_; }

private:
    HRESULT Run();
    void Finish(HRESULT result);
    void Fail(const char* step, const GError* error);
    void After(guint milliseconds, GSourceFunc callback);
    void Subscribe(const char* sender, const char* interface, const char* signal, const char* path,
                   const char* argument, GDBusSignalFlags flags, GDBusSignalCallback callback);
    void SubscribeToResponse();
    void Call(const char* path, const char* interface, const char* method, GVariant* arguments, const char* replyType,
              GDBusCallFlags flags, int milliseconds, GAsyncReadyCallback callback);
    GVariantOwner TakeReply(GAsyncResult* result, const char* step);
    void CloseRequest();
    void Disconnect();
    bool BackEndFailed() const;

    static PortalConversation& From(gpointer self) { return *static_cast<PortalConversation*>(self); }
    static void OnConnected(GObject* source, GAsyncResult* result, gpointer self);
    static void OnVersion(GObject* source, GAsyncResult* result, gpointer self);
    static void OnOpened(GObject* source, GAsyncResult* result, gpointer self);
    static void OnRequestClosed(GObject* source, GAsyncResult* result, gpointer self);
    static void OnDisconnected(GObject* source, GAsyncResult* result, gpointer self);
    static gboolean OnOwner(gint descriptor, GIOCondition condition, gpointer self);
    static gboolean OnConnectTimeout(gpointer self);
    static gboolean OnAftermath(gpointer self);
    static void OnBusClosed(GDBusConnection*, gboolean, GError* error, gpointer self);
    static void OnPortalOwner(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant* parameters, gpointer self);
    static void OnBackEndOwner(GDBusConnection*, const char*, const char*, const char*, const char*,
                               GVariant* parameters, gpointer self);
    static void OnResponse(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
                           gpointer self);

    OwnerWatch& owner_;
    ThreadContext context_;
    GObjectOwner<GCancellable> cancellable_{g_cancellable_new()};
    GObjectOwner<GDBusConnection> connection_;
    std::vector<GSourceOwner> sources_;
    std::vector<guint> subscriptions_;
    gulong closedHandler_ = 0;
    int pending_ = 0;       // Callbacks of asynchronous operations that are still to come.
    bool finished_ = true;  // False while Run waits; watches that fire later change nothing.
    bool requestClosed_ = false;
    HRESULT result_ = E_FAIL;
    std::uint32_t version_ = 0;
    std::string handle_;  // The request's object path while the dialog may be open.
    std::string path_;
    gint64 backEndLost_ = 0;  // When a back end's name last went, in microseconds of the monotonic clock; 0 for never.
};

}  // namespace Platform
