#include "TestDisplay.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace {

template <class Prepare>
pid_t Start(const std::array<const char*, 12>& words, Prepare prepare) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    prepare();
    ::execvp(words[0], const_cast<char* const*>(words.data()));
    ::_exit(127);
}

void End(pid_t& process) {
    if (process <= 0) return;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    process = -1;
}

std::string ReadLine(int descriptor) {
    std::string line;
    pollfd source{descriptor, POLLIN, 0};
    char character = 0;
    while (::poll(&source, 1, 20000) == 1 && ::read(descriptor, &character, 1) == 1 && character != '\n') {
        line += character;
    }
    return line;
}

}  // namespace

TestDisplay::TestDisplay(const char* lackedExtension) {
    std::array<int, 2> number{};
    if (::pipe(number.data()) != 0) throw std::runtime_error("pipe");
    const std::string end = std::to_string(number[1]);
    server_ = Start({"Xvfb", "-displayfd", end.c_str(), "-screen", "0", "1000x800x24", "-nolisten", "tcp", "-noreset",
                     lackedExtension ? "-extension" : nullptr, lackedExtension, nullptr},
                    [&] { ::close(number[0]); });
    ::close(number[1]);
    name_ = ":" + ReadLine(number[0]);
    ::close(number[0]);
    if (name_.size() < 2) throw std::runtime_error("Xvfb did not start");
    ::setenv("DISPLAY", name_.c_str(), 1);
    client_ = {xcb_connect(nullptr, nullptr), xcb_disconnect};
    if (xcb_connection_has_error(client_.get())) throw std::runtime_error("no connection to Xvfb");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(client_.get())).data->root;
}

TestDisplay& TestDisplay::Get() {
    static TestDisplay display;
    return display;
}

void TestDisplay::Reset() {
    ::setenv("DISPLAY", name_.c_str(), 1);
    End(manager_);
    for (const char* property : {"RESOURCE_MANAGER", "_NET_WORKAREA", "_NET_SUPPORTING_WM_CHECK"}) {
        xcb_delete_property(Client(), root_, Atom(property));
    }
    for (std::uint8_t button = 1; button <= 3; ++button) Button(button, false);
    MovePointer(990, 790);
}

TestDisplay::~TestDisplay() {
    End(manager_);
    End(server_);
}

void TestDisplay::Kill() {
    End(server_);
}

void TestDisplay::StartManager() {
    manager_ = Start({"openbox", "--sm-disable", nullptr}, [] {});
    // It loses windows that are shown while it starts. So one is shown again and again until it is taken in.
    const xcb_window_t probe = xcb_generate_id(Client());
    xcb_create_window(Client(), XCB_COPY_FROM_PARENT, probe, root_, 600, 600, 50, 50, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t state = Atom("WM_STATE");
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < deadline) {
        const auto cookie = xcb_get_property(Client(), 0, probe, state, state, 0, 1);
        const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
            xcb_get_property_reply(Client(), cookie, nullptr), std::free);
        if (reply && reply->value_len == 1) {
            xcb_destroy_window(Client(), probe);
            return Settle();
        }
        // Without a manager yet the window is really shown, and would be so when one comes.
        xcb_unmap_window(Client(), probe);
        xcb_map_window(Client(), probe);
        Settle();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    throw std::runtime_error("openbox did not start");
}

xcb_atom_t TestDisplay::Atom(const char* name) const {
    const auto cookie = xcb_intern_atom(Client(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(Client(), cookie, nullptr), std::free);
    return reply->atom;
}

void TestDisplay::Settle() const {
    std::free(xcb_get_input_focus_reply(Client(), xcb_get_input_focus(Client()), nullptr));
}

void TestDisplay::MovePointer(int x, int y) const {
    xcb_test_fake_input(Client(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    Settle();
}

void TestDisplay::Button(std::uint8_t button, bool down) const {
    xcb_test_fake_input(Client(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button, XCB_CURRENT_TIME, root_, 0, 0,
                        0);
    Settle();
}

void TestDisplay::Click(std::uint8_t button) const {
    Button(button, true);
    Button(button, false);
}

void TestDisplay::Key(std::uint8_t keycode, bool down) const {
    xcb_test_fake_input(Client(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode, XCB_CURRENT_TIME, root_, 0, 0, 0);
    Settle();
}

void TestDisplay::SetProperty(xcb_window_t window, const char* name, const std::string& text) const {
    xcb_change_property(Client(), XCB_PROP_MODE_REPLACE, window, Atom(name), XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
    Settle();
}

void TestDisplay::ConfigureWindow(xcb_window_t window, int x, int y, int width, int height) const {
    const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y),
                                              static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    xcb_configure_window(Client(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    Settle();
}
