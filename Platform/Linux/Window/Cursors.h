// The pointer's shapes.
#pragma once

#include "Platform/Linux/Window/Connection.h"

#include <windows.h>

#include <map>

struct xcb_cursor_context_t;

namespace Platform {

/// The desktop's cursors by their X names, loaded when first used. One thread.
class Cursors {
public:
    explicit Cursors(const Connection& connection);
    ~Cursors();
    Cursors(const Cursors&) = delete;
    Cursors& operator=(const Cursors&) = delete;

    xcb_cursor_t Load(const char* name);

private:
    const Connection& connection_;
    xcb_cursor_context_t* context_ = nullptr;
    std::map<std::string, xcb_cursor_t> loaded_;
};

/// The X name of one of the IDC_ cursors; the arrow's for any other value.
const char* CursorName(HCURSOR cursor);

}  // namespace Platform
