// A file chooser portal that shows nothing: it notes what it is asked for and answers when the test says so.
#pragma once

#include <gio/gio.h>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// A call of OpenFile. Options as GVariant prints them: `true`, `'text'`, `b'bytes'`.
struct PortalCall {
    std::string parent;
    std::string title;
    std::map<std::string, std::string> options;
    std::string handle;
};

struct PortalResponse {
    guint32 response = 0;
    std::vector<std::string> uris;
};

struct FakePortalSettings {
    enum class Reply {
        Handle,         ///< As the rules say.
        ForeignHandle,  ///< Another path than the caller can predict, as portals before version 0.9 do.
        Error,
        None,
    };

    guint32 version = 3;
    Reply reply = Reply::Handle;
    bool hasBackEnd = true;                         ///< Whether a program that shows dialogs is on the bus as well.
    std::optional<PortalResponse> earlyResponse{};  ///< Sent before the reply.
};

/// Runs on a thread of its own from construction, when its names are on the bus, to destruction. Methods: any thread.
class FakePortal {
public:
    FakePortal(const std::string& address, FakePortalSettings settings);
    ~FakePortal();
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    /// The call of OpenFile, once it has come. Fails the test, and gives an empty one, after a while.
    PortalCall WaitForCall();
    /// Whether the client closes its request within a while.
    bool WaitForClose();
    bool WasCalled();

    void Respond(const PortalResponse& response);
    /// Leaves the bus with everything open, as a crash does.
    void Leave();
    /// The same for the program behind the dialog alone.
    void LoseBackEnd();

    /// Another program of the kind, without a dialog, that comes to the bus and leaves it.
    static void ComeAndGo(const std::string& address);
    /// Whether somebody asks the back end within a while which requests it holds.
    bool WaitForInspection();

private:
    void Serve(const std::string& address);
    void OnMethod(GDBusConnection* connection, const char* interface, const char* method, GVariant* arguments,
                  GDBusMethodInvocation* invocation);
    void Open(GVariant* arguments, GDBusMethodInvocation* invocation);
    bool WaitFor(const bool& flag);

    const FakePortalSettings settings_;
    GMainContext* context_ = nullptr;
    GMainLoop* loop_ = nullptr;
    GDBusNodeInfo* interfaces_ = nullptr;
    GDBusConnection* portal_ = nullptr;
    GDBusConnection* backEnd_ = nullptr;

    std::mutex mutex_;
    std::condition_variable changed_;
    PortalCall call_;  // guarded by mutex_, as all that follows
    std::string caller_;
    bool serving_ = false;
    bool called_ = false;
    bool closed_ = false;
    bool inspected_ = false;

    std::thread thread_;  // last: starts once all above exists
};
