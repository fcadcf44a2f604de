// What a person at the display does and sees, for scripts that have only lines of text to say it with.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

struct Place {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Pixels of the screen, 0xRRGGBB, first row on top.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// One client of the display. Throws std::runtime_error when the server refuses something.
class User {
public:
    User();

    /// A press waits until nobody has the pointer to themselves. Both return when the server has handed the event out;
    /// they throw after twenty seconds. x and y lie on the screen, and the button is one of the first five.
    void MovePointer(int x, int y);
    void Button(int button, bool down);
    void Key(int keycode, bool down);

    /// Where a window lies on the screen.
    Place Where(xcb_window_t window);
    bool Exists(xcb_window_t window);
    /// The whole screen.
    Place Screen() const;
    /// Asks for another place; who manages the windows decides.
    void Arrange(xcb_window_t window, Place place);
    /// A part of the screen as it is seen, cut to the screen.
    Picture See(Place part);

    /// The shape that the pointer has, and the one that a name stands for: equal texts for equal pictures.
    std::string CursorShape();
    std::string ShapeNamed(const std::string& name);

    /// A plain window over everything, which no window manager touches.
    xcb_window_t Cover(Place place);
    void Destroy(xcb_window_t window);

    /// Sets the resources that programs read the scale from.
    void SetResources(const std::string& text);
    /// Names of the states that the window manager gives a window; "Iconic" for a minimised one.
    std::vector<std::string> StatesOf(xcb_window_t window);
    /// The smallest size that the window hints.
    Place MinimumSizeOf(xcb_window_t window);

    /// How many clients the server has, this one included, and how many windows.
    std::size_t Clients();
    std::size_t Windows();

    /// Returns once a window manager takes windows in; false after twenty seconds.
    bool WaitForManager();

    /// Nothing on the screen changes while it lives.
    class Stillness {
    public:
        explicit Stillness(xcb_connection_t* x) : x_(x) { xcb_grab_server(x_); }
        ~Stillness() {
            xcb_ungrab_server(x_);
            xcb_flush(x_);
        }
        Stillness(const Stillness&) = delete;
        Stillness& operator=(const Stillness&) = delete;

    private:
        xcb_connection_t* x_;
    };
    Stillness HoldStill() { return Stillness(x_.get()); }

private:
    void Settle();
    void WaitForFreePointer();
    void WaitForPointer(const std::function<bool(const xcb_query_pointer_reply_t&)>& condition,
                        const std::string& failure);
    xcb_atom_t Atom(const char* name);
    std::string AtomName(xcb_atom_t atom);
    std::vector<std::uint32_t> Values(xcb_window_t window, const char* property);
    std::size_t WindowsBelow(xcb_window_t window);

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x_;
    xcb_screen_t* screen_;
};
