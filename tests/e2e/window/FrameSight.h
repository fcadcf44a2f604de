// Whether a picture of the screen shows one of window_subject's frames, and nothing but that.
#pragma once

#include "User.h"

#include <string>

/// What a picture shows, told by the picture alone: where the frame lies, and the frame with its shadow. The fault is
/// empty for one whole frame.
struct FrameSight {
    Place place;
    Place shaded;
    std::string fault;
};

/// What the client area shows: nothing of its own, so that the frame's colour fills it, or a picture that may be any.
enum class Client { Plain, Drawn };

/// Looks at every pixel: the rim and the border all around, the parts between them, the caption's end, and what lies
/// around the frame, which has to be the empty screen's picture, dimmed at most as by a shadow. A manager fills what a
/// window has grown by with the picture behind it: then the shadow alone tells of it. The scale is 96 dots
/// per inch, and the whole frame lies on the screen.
FrameSight SeeFrame(const Picture& screen, const Picture& empty, Client client);
