// A window system without a screen: windows, message queues, capture and keys that a test sets, watches and makes fail.
// It stands in for the functions of winuser.h, and for the apartment of a UI thread.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace Fakes {

/// What the functions answer. Coordinates are pixels.
struct WindowSettings {
    bool registrationFails = false;
    bool creationFails = false;     ///< CreateWindowExW gives no window and sends nothing.
    bool creationDeclined = false;  ///< CreateWindowExW sends WM_NCCREATE and WM_NCDESTROY and then gives no window.
    bool getMessageFails = false;   ///< GetMessageW returns -1.
    bool zoomed = false;
    UINT dpi = 96;
    RECT windowRect{100, 200, 900, 800};
    RECT clientRect{0, 0, 798, 598};
    POINT clientOrigin{101, 201};
    RECT zoomedFrame{8, 31, 8, 8};  ///< What DefWindowProcW takes off each side in WM_NCCALCSIZE.
    int captionHeight = 23;
    std::set<int> keysDown;
    LRESULT defaultResult = 77;  ///< Of DefWindowProcW, for messages without an answer of their own.
};

struct SentOrPosted {
    HWND window;
    DWORD thread;  ///< PostThreadMessageW: the thread; else 0.
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

/// What CreateWindowExW was given.
struct Creation {
    DWORD extendedStyle;
    std::wstring className;
    std::wstring title;
    DWORD style;
    int x, y, width, height;
    HINSTANCE instance;
    LPVOID parameter;
};

struct Placement {
    HWND window;
    int x, y, width, height;
    UINT flags;
};

/// Everything is behind one lock, which is never held while a window procedure runs. Tests read the records through
/// copies.
class WindowSystem {
public:
    static WindowSystem& Get();

    /// Forgets windows, classes, records and settings. No window thread may be running.
    void Reset();

    WindowSettings Settings() const;
    void Change(const std::function<void(WindowSettings&)>& change);

    /// Names of the functions called so far, in order; of DefWindowProcW with the message, as "DefWindowProcW 0x0083".
    std::vector<std::string> Calls() const;
    int CountCalls(const std::string& name) const;
    void ForgetCalls();

    std::vector<SentOrPosted> Posted() const;
    std::vector<SentOrPosted> Sent() const;
    std::vector<Creation> Creations() const;
    std::vector<Placement> Placements() const;
    std::vector<WNDCLASSEXW> Classes() const;
    std::vector<TRACKMOUSEEVENT> Tracked() const;
    std::wstring Title(HWND window) const;
    HWND Capture() const;

    /// The windows that exist.
    std::vector<HWND> Windows() const;

    /// Runs a window's procedure on the calling thread.
    LRESULT Call(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // What the functions of winuser.h do. Each takes the lock itself.
    ATOM Register(const WNDCLASSEXW& windowClass);
    HWND Create(const Creation& creation);
    bool Destroy(HWND window);
    bool Exists(HWND window) const;
    LRESULT Default(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool Place(const Placement& placement);
    void SetTitle(HWND window, const wchar_t* title);
    LONG_PTR SetUserData(HWND window, LONG_PTR value);
    LONG_PTR UserData(HWND window) const;
    int Next(MSG& message);
    bool Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool PostToThread(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void PostQuit();
    HWND SetCapture(HWND window);
    void Track(const TRACKMOUSEEVENT& track);
    void Record(std::string call);

private:
    struct Window {
        WNDPROC procedure;
        DWORD thread;
        LONG_PTR userData = 0;
        std::wstring title;
    };

    struct Queue {
        std::deque<MSG> messages;
        bool quit = false;
    };

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    WindowSettings settings_;
    std::vector<std::string> calls_;
    std::vector<SentOrPosted> posted_;
    std::vector<SentOrPosted> sent_;
    std::vector<Creation> creations_;
    std::vector<Placement> placements_;
    std::vector<WNDCLASSEXW> classes_;
    std::vector<TRACKMOUSEEVENT> tracked_;
    std::map<std::wstring, WNDPROC> procedures_;
    std::map<HWND, Window> windows_;
    std::map<DWORD, Queue> queues_;
    HWND capture_ = nullptr;
    std::uintptr_t lastHandle_ = 0x1000;
};

}  // namespace Fakes
