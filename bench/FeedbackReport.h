// What feedback_bench has measured, in words.
#pragma once

#include "Hand.h"

#include <vector>

/// The rate that windows are paced at.
constexpr double displayPeriod = 1000.0 / 60;  // milliseconds

/// One answer of the screen.
struct Answer {
    double milliseconds;  ///< From the event to the notice of the picture that shows it.
    int pictures;         ///< Shown since the event, that one included.
};

struct Series {
    const char* name;
    std::vector<Answer> answers;
};

/// What a picture of the launcher's costs while nothing happens, in milliseconds.
struct Pace {
    double period;     ///< From one to the next.
    double processor;  ///< Processor time of all the launcher's threads, a software device's included.
};

/// Both write to the standard output.
void PrintTable(const WindowPlace& window, const Pace& pace, const std::vector<Series>& all);
void PrintJson(const WindowPlace& window, const Pace& pace, const std::vector<Series>& all);
