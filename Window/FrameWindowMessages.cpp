// UI thread: which handler answers which message, and the end of a window.
#include "Window/FrameWindow.h"
#include "Window/Messages.h"

namespace Tamborel {

LRESULT FrameWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
        case WM_GETMINMAXINFO:
        case WM_NCCALCSIZE:
        case WM_ENTERSIZEMOVE:
        case WM_EXITSIZEMOVE:
        case WM_DPICHANGED:
            return HandleGeometryMessage(message, wParam, lParam);
        case WM_NCHITTEST:
        case WM_NCMOUSEMOVE:
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
        case WM_NCLBUTTONUP:
        case WM_CAPTURECHANGED:
        case WM_NCMOUSELEAVE:
        case WM_MOUSELEAVE:
            return HandleCaptionMessage(message, wParam, lParam);
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_CHAR:
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_MBUTTONDOWN:
        case WM_MBUTTONUP:
        case WM_MOUSEWHEEL:
            return HandleInputMessage(message, wParam, lParam);
        default:
            return HandleLifeMessage(message, wParam, lParam);
    }
}

LRESULT FrameWindow::HandleLifeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_NCDESTROY:
            OnNcDestroy();
            return 0;
        case WM_APP_DISPATCH_EVENTS:
            events_.Dispatch();
            return 0;
        default:
            return AppWindow::HandleMessage(message, wParam, lParam);
    }
}

void FrameWindow::OnClose() {
    QueuePlainEvent(InputEventKind::WindowClosing);
    PostToRenderThread([] {});  // for the redraw that any closure brings
    DestroyWindow(Handle());
}

void FrameWindow::OnDestroy() {
    if (threads_) threads_->RequestStop();
    PostQuitMessage(0);
}

void FrameWindow::OnNcDestroy() {
    ClearHandle();
    ReleaseOnce();
}

}  // namespace Tamborel
