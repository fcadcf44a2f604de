// An X server of the test program's own.
#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>

/// A virtual display, running as long as the program; DISPLAY names it. Its windows' threads keep their connections, so
/// all tests of a program have it in common.
class TestDisplay {
public:
    static TestDisplay& Get();

    /// With a name, a server without that extension.
    explicit TestDisplay(const char* lackedExtension = nullptr);
    ~TestDisplay();
    TestDisplay(const TestDisplay&) = delete;
    TestDisplay& operator=(const TestDisplay&) = delete;

    /// Starts openbox on the display and waits until it rules.
    void StartManager();
    /// As it was at first: no window manager, no scale, and the pointer in a corner.
    void Reset();
    /// Ends the server, as a crash of it would.
    void Kill();

    /// A client beside the program's own: what the user does, and looks from outside.
    xcb_connection_t* Client() const { return client_.get(); }
    xcb_window_t Root() const { return root_; }
    xcb_atom_t Atom(const char* name) const;
    void Settle() const;

    void MovePointer(int x, int y) const;
    void Button(std::uint8_t button, bool down) const;
    void Click(std::uint8_t button) const;
    void Key(std::uint8_t keycode, bool down) const;
    void SetProperty(xcb_window_t window, const char* name, const std::string& text) const;
    void ConfigureWindow(xcb_window_t window, int x, int y, int width, int height) const;

private:
    std::string name_;
    pid_t server_ = -1;
    pid_t manager_ = -1;
    std::shared_ptr<xcb_connection_t> client_;
    xcb_window_t root_ = 0;
};
