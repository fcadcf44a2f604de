// Messages between threads and windows.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Window/UiThread.h"

#include <unistd.h>

#include <new>
#include <system_error>

using Platform::MessageQueue;
using Platform::UiThread;

namespace {

/// Whether a message tells what the pointer or the keyboard does.
bool IsInput(UINT message) {
    return (message >= WM_NCMOUSEMOVE && message <= WM_NCMBUTTONUP) ||
           (message >= WM_KEYDOWN && message <= WM_SYSCHAR) || (message >= WM_MOUSEMOVE && message <= WM_MOUSEHWHEEL) ||
           message == WM_NCMOUSELEAVE || message == WM_MOUSELEAVE;
}

void TellInput(HWND handle) noexcept try {
    if (const auto window = Platform::FindOwnWindow(handle)) window->inputListeners.Tell();
} catch (const std::bad_alloc&) {
    // The answer comes at the usual pace then.
}

}  // namespace

BOOL GetMessageW(LPMSG message, HWND window, UINT filterMin, UINT filterMax) noexcept try {
    if (!message || window || filterMin != 0 || filterMax != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    *message = UiThread::OfThisThread().Next();
    return message->message == WM_QUIT ? FALSE : TRUE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return -1;
} catch (const std::system_error&) {
    SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    return -1;
}

BOOL TranslateMessage(const MSG* message) noexcept {
    if (!message) return FALSE;
    const bool system = message->message == WM_SYSKEYDOWN;
    if (!system && message->message != WM_KEYDOWN) return FALSE;
    UiThread& thread = UiThread::OfThisThread();
    const std::u16string text = std::exchange(thread.keyText, {});
    for (const char16_t unit : text) {
        const UINT kind = system ? WM_SYSCHAR : WM_CHAR;
        thread.queue->Post({message->hwnd, kind, unit, message->lParam, message->time, message->pt});
    }
    return TRUE;
}

LRESULT DispatchMessageW(const MSG* message) noexcept {
    if (!message || !message->hwnd) return 0;
    const LRESULT result = Platform::CallProcedure(message->hwnd, message->message, message->wParam, message->lParam);
    if (IsInput(message->message)) TellInput(message->hwnd);
    return result;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept try {
    if (!window) return PostThreadMessageW(static_cast<DWORD>(::gettid()), message, wParam, lParam);
    const auto found = Platform::FindWindowObject(window);
    if (!found) return FALSE;
    return found->queue->Post({window, message, wParam, lParam, 0, {}}) ? TRUE : FALSE;
} catch (const std::bad_alloc&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
}

BOOL PostThreadMessageW(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) noexcept try {
    const auto queue = MessageQueue::OfThread(thread);
    if (!queue || !queue->Post({nullptr, message, wParam, lParam, 0, {}})) {
        return Platform::Fail(ERROR_INVALID_THREAD_ID);
    }
    return TRUE;
} catch (const std::bad_alloc&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto found = Platform::FindWindowObject(window);
    if (!found) return 0;
    if (found->queue->IsOfThisThread()) return Platform::CallProcedure(window, message, wParam, lParam);
    return found->queue->Send(window, message, wParam, lParam);
}

void PostQuitMessage(int exitCode) noexcept {
    UiThread::OfThisThread().queue->Quit(exitCode);
}

HDC BeginPaint(HWND window, LPPAINTSTRUCT paint) noexcept {
    const auto found = Platform::FindOwnWindow(window);
    if (!found || !paint) return nullptr;
    found->painting = false;
    *paint = {};
    GetClientRect(window, &paint->rcPaint);
    return nullptr;
}

BOOL EndPaint(HWND, const PAINTSTRUCT*) noexcept {
    return TRUE;
}
