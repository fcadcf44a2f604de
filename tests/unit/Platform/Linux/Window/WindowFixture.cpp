#include "WindowFixture.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace {

constexpr UINT kTick = WM_APP + 1;
constexpr wchar_t kClassName[] = L"TestWindow";
constexpr auto kPatience = std::chrono::seconds(20);

/// Wakes the loop now and then, so that a condition that never comes true is noticed. Never with more than one message
/// at a time: a condition that takes longer than the pause between two would drown all else in them.
class Ticker {
public:
    explicit Ticker(DWORD thread)
        : thread_([this, thread] {
              while (!stop_) {
                  if (taken_.exchange(false)) PostThreadMessageW(thread, kTick, 0, 0);
                  std::this_thread::sleep_for(std::chrono::milliseconds(5));
              }
          }) {}
    ~Ticker() {
        stop_ = true;
        thread_.join();
    }
    void Take(const MSG& message) {
        if (message.message == kTick) taken_ = true;
    }
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

private:
    std::atomic<bool> stop_{false};
    std::atomic<bool> taken_{true};
    std::thread thread_;
};

}  // namespace

WindowTest::WindowTest() {
    display_.Reset();
}

WindowTest::~WindowTest() {
    if (window_ && IsWindow(window_)) DestroyWindow(window_);
    UnregisterClassW(kClassName, nullptr);
}

LRESULT WindowTest::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* wish = reinterpret_cast<CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(wish->lpCreateParams));
    }
    auto* test = reinterpret_cast<WindowTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return test ? test->Handle(window, message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT WindowTest::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    window_ = window;
    seen_.push_back({message, wParam, lParam});
    LRESULT result = 0;
    if (answer_ && answer_(message, wParam, lParam, result)) return result;
    switch (message) {
        case WM_NCCALCSIZE: {
            RECT& rectangle = *reinterpret_cast<RECT*>(lParam);
            rectangle = {rectangle.left + 1, rectangle.top + 1, rectangle.right - 1, rectangle.bottom - 1};
            return 0;
        }
        case WM_NCHITTEST:
            return HitTest({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least_.cx, least_.cy};
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

int WindowTest::HitTest(POINT place) const {
    const RECT all = Place();
    const bool left = place.x < all.left + 8;
    const bool right = place.x >= all.right - 8;
    if (place.y < all.top + 8) return left ? HTTOPLEFT : right ? HTTOPRIGHT : HTTOP;
    if (place.y >= all.bottom - 8) return left ? HTBOTTOMLEFT : right ? HTBOTTOMRIGHT : HTBOTTOM;
    if (left) return HTLEFT;
    if (right) return HTRIGHT;
    if (place.y >= all.top + 40) return HTCLIENT;
    return place.x >= all.right - 60 ? HTCLOSE : HTCAPTION;
}

HWND WindowTest::CreateHidden(DWORD style, UINT classStyle) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = classStyle;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClassName;
    RegisterClassExW(&windowClass);
    return CreateWindowExW(WS_EX_NOREDIRECTIONBITMAP, kClassName, L"Title \u00e9", style, 100, 50, 400, 300, nullptr,
                           nullptr, nullptr, this);
}

void WindowTest::Make(DWORD style, UINT classStyle) {
    ASSERT_NE(CreateHidden(style, classStyle), nullptr);
    ShowWindow(window_, SW_SHOWNORMAL);
    ASSERT_TRUE(PumpUntilSeen(WM_PAINT));
    ASSERT_TRUE(PumpUntilSeen(WM_SETFOCUS));
    seen_.clear();
}

bool WindowTest::PumpUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    Ticker ticker(static_cast<DWORD>(::gettid()));
    MSG message{};
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            quit_ = true;
            return condition();
        }
        ticker.Take(message);
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

bool WindowTest::PumpUntilSeen(UINT message) {
    return PumpUntil([&] { return Saw(message); });
}

void WindowTest::PumpAll() {
    // A change of a property of the window's is reported after all that came before it, and so is what it makes known.
    const std::size_t before = Count(WM_DPICHANGED);
    static int dpi = 200;
    display_.SetProperty(display_.Root(), "RESOURCE_MANAGER", "Xft.dpi:\t" + std::to_string(dpi++) + "\n");
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_DPICHANGED) > before; }));
}

bool WindowTest::Saw(UINT message) const {
    return Count(message) > 0;
}

SeenMessage WindowTest::Last(UINT message) const {
    const auto found =
        std::find_if(seen_.rbegin(), seen_.rend(), [&](const auto& each) { return each.message == message; });
    if (found != seen_.rend()) return *found;
    ADD_FAILURE() << "no message " << message;
    return {};
}

std::size_t WindowTest::Count(UINT message) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(seen_, [&](const SeenMessage& each) { return each.message == message; }));
}

std::vector<UINT> WindowTest::Order(const std::vector<UINT>& kinds) const {
    std::vector<UINT> order;
    for (const SeenMessage& each : seen_) {
        if (std::ranges::find(kinds, each.message) != kinds.end()) order.push_back(each.message);
    }
    return order;
}

RECT WindowTest::Place() const {
    RECT place{};
    GetWindowRect(window_, &place);
    return place;
}
