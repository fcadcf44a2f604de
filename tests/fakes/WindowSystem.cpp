#include "tests/fakes/WindowSystem.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace Fakes {

WindowSystem& WindowSystem::Get() {
    static WindowSystem instance;
    return instance;
}

void WindowSystem::Reset() {
    const std::lock_guard lock(mutex_);
    settings_ = {};
    calls_.clear();
    posted_.clear();
    sent_.clear();
    creations_.clear();
    placements_.clear();
    classes_.clear();
    tracked_.clear();
    procedures_.clear();
    windows_.clear();
    queues_.clear();
    capture_ = nullptr;
}

WindowSettings WindowSystem::Settings() const {
    const std::lock_guard lock(mutex_);
    return settings_;
}

void WindowSystem::Change(const std::function<void(WindowSettings&)>& change) {
    const std::lock_guard lock(mutex_);
    change(settings_);
}

std::vector<std::string> WindowSystem::Calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

int WindowSystem::CountCalls(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(std::ranges::count(calls_, name));
}

void WindowSystem::ForgetCalls() {
    const std::lock_guard lock(mutex_);
    calls_.clear();
}

void WindowSystem::Record(std::string call) {
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
}

std::vector<SentOrPosted> WindowSystem::Posted() const {
    const std::lock_guard lock(mutex_);
    return posted_;
}

std::vector<SentOrPosted> WindowSystem::Sent() const {
    const std::lock_guard lock(mutex_);
    return sent_;
}

std::vector<Creation> WindowSystem::Creations() const {
    const std::lock_guard lock(mutex_);
    return creations_;
}

std::vector<Placement> WindowSystem::Placements() const {
    const std::lock_guard lock(mutex_);
    return placements_;
}

std::vector<WNDCLASSEXW> WindowSystem::Classes() const {
    const std::lock_guard lock(mutex_);
    return classes_;
}

std::vector<TRACKMOUSEEVENT> WindowSystem::Tracked() const {
    const std::lock_guard lock(mutex_);
    return tracked_;
}

std::vector<HWND> WindowSystem::Windows() const {
    const std::lock_guard lock(mutex_);
    std::vector<HWND> all;
    for (const auto& [window, state] : windows_) all.push_back(window);
    return all;
}

std::wstring WindowSystem::Title(HWND window) const {
    const std::lock_guard lock(mutex_);
    const auto found = windows_.find(window);
    return found == windows_.end() ? std::wstring() : found->second.title;
}

HWND WindowSystem::Capture() const {
    const std::lock_guard lock(mutex_);
    return capture_;
}

ATOM WindowSystem::Register(const WNDCLASSEXW& windowClass) {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("RegisterClassExW");
    classes_.push_back(windowClass);
    if (settings_.registrationFails) return 0;
    const bool isNew = procedures_.emplace(windowClass.lpszClassName, windowClass.lpfnWndProc).second;
    return isNew ? 0xC001 : 0;
}

HWND WindowSystem::Create(const Creation& creation) {
    HWND window = nullptr;
    bool declined = false;
    {
        const std::lock_guard lock(mutex_);
        calls_.emplace_back("CreateWindowExW");
        creations_.push_back(creation);
        const auto found = procedures_.find(creation.className);
        if (settings_.creationFails || found == procedures_.end()) return nullptr;
        window = reinterpret_cast<HWND>(++lastHandle_);
        windows_[window] = {found->second, GetCurrentThreadId(), 0, creation.title};
        queues_[GetCurrentThreadId()];
        declined = settings_.creationDeclined;
    }
    MINMAXINFO limits{};
    Call(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));  // ahead of the creation parameter
    CREATESTRUCTW parameters{};
    parameters.lpCreateParams = creation.parameter;
    parameters.hInstance = creation.instance;
    parameters.x = creation.x;
    parameters.y = creation.y;
    parameters.cx = creation.width;
    parameters.cy = creation.height;
    Call(window, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&parameters));
    if (declined) {
        Call(window, WM_NCDESTROY, 0, 0);
        const std::lock_guard lock(mutex_);
        windows_.erase(window);
        return nullptr;
    }
    RECT rectangle = Settings().windowRect;
    Call(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rectangle));
    Call(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(&parameters));
    return window;
}

bool WindowSystem::Destroy(HWND window) {
    Record("DestroyWindow");
    if (!Exists(window)) return false;
    Call(window, WM_DESTROY, 0, 0);
    Call(window, WM_NCDESTROY, 0, 0);
    const std::lock_guard lock(mutex_);
    windows_.erase(window);
    if (capture_ == window) capture_ = nullptr;
    return true;
}

bool WindowSystem::Exists(HWND window) const {
    const std::lock_guard lock(mutex_);
    return windows_.contains(window);
}

LRESULT WindowSystem::Call(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WNDPROC procedure = nullptr;
    {
        const std::lock_guard lock(mutex_);
        const auto found = windows_.find(window);
        if (found == windows_.end()) return 0;
        procedure = found->second.procedure;
    }
    return procedure(window, message, wParam, lParam);
}

LRESULT WindowSystem::Default(HWND, UINT message, WPARAM wParam, LPARAM lParam) {
    char text[32];
    std::snprintf(text, sizeof(text), "DefWindowProcW 0x%04X", message);
    const std::lock_guard lock(mutex_);
    calls_.emplace_back(text);
    if (message == WM_NCCALCSIZE && wParam) {
        RECT& rectangle = reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam)->rgrc[0];
        rectangle.left += settings_.zoomedFrame.left;
        rectangle.top += settings_.zoomedFrame.top;
        rectangle.right -= settings_.zoomedFrame.right;
        rectangle.bottom -= settings_.zoomedFrame.bottom;
    }
    return settings_.defaultResult;
}

bool WindowSystem::Place(const Placement& placement) {
    {
        const std::lock_guard lock(mutex_);
        calls_.emplace_back("SetWindowPos");
        placements_.push_back(placement);
    }
    if (placement.flags & SWP_FRAMECHANGED) {
        NCCALCSIZE_PARAMS parameters{};
        parameters.rgrc[0] = Settings().windowRect;
        Call(placement.window, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters));
    }
    return Exists(placement.window);
}

void WindowSystem::SetTitle(HWND window, const wchar_t* title) {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("SetWindowTextW");
    if (const auto found = windows_.find(window); found != windows_.end()) found->second.title = title;
}

LONG_PTR WindowSystem::SetUserData(HWND window, LONG_PTR value) {
    const std::lock_guard lock(mutex_);
    const auto found = windows_.find(window);
    return found == windows_.end() ? 0 : std::exchange(found->second.userData, value);
}

LONG_PTR WindowSystem::UserData(HWND window) const {
    const std::lock_guard lock(mutex_);
    const auto found = windows_.find(window);
    return found == windows_.end() ? 0 : found->second.userData;
}

HWND WindowSystem::SetCapture(HWND window) {
    HWND before = nullptr;
    {
        const std::lock_guard lock(mutex_);
        calls_.emplace_back(window ? "SetCapture" : "ReleaseCapture");
        before = std::exchange(capture_, window);
    }
    if (before && before != window) Call(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
    return before;
}

void WindowSystem::Track(const TRACKMOUSEEVENT& track) {
    const std::lock_guard lock(mutex_);
    calls_.emplace_back("TrackMouseEvent");
    tracked_.push_back(track);
}

}  // namespace Fakes
