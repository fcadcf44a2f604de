// How soon the launcher's screen answers the hand: from a pointer event to the pixel that shows it, for hover, press,
// release and clicks. docs/benchmarks.md tells how to read the numbers.
#include "FeedbackReport.h"
#include "Hand.h"
#include "PrivateState.h"
#include "ScreenWatch.h"
#include "StartedProgram.h"
#include "StartReport.h"

#include "launcher/LauncherScene/SceneFit.h"

#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// What a launcher's picture covers at least: a cursor or an edge is not one.
constexpr std::int64_t smallestPicture = 10'000;  // pixels

constexpr std::int64_t second = 1'000'000'000;

// Frame and title bar of the launcher's window, at 96 dots per inch.
constexpr float rim = 9;
constexpr float titleHeight = 37;

struct Options {
    bool json = false;
    int runs = 100;
    std::string program = OwnFolder() + "../bin/velorinth-launcher";
};

Options ReadOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--json") {
            options.json = true;
        } else if (word == "--runs" && i + 1 < count) {
            options.runs = std::atoi(words[++i]);
        } else if (word == "--program" && i + 1 < count) {
            options.program = words[++i];
        } else {
            throw std::runtime_error("use: feedback_bench [--json] [--runs N] [--program LAUNCHER]");
        }
    }
    if (options.runs < 1) throw std::runtime_error("--runs needs a number from 1 on");
    return options;
}

bool IsLike(std::uint32_t colour, std::uint32_t other) {
    for (const int shift : {0, 8, 16}) {
        if (std::abs(static_cast<int>(colour >> shift & 0xFF) - static_cast<int>(other >> shift & 0xFF)) > 2)
            return false;
    }
    return true;
}

/// The launcher's window under a hand. Points are the canvas's.
class Screen {
public:
    Screen(ScreenWatch& watch, Hand& hand, pid_t process) : watch_(watch), hand_(hand) {
        const WindowPlace place = AwaitWindow(process);
        Tamborel::Matrix3x2 fit = FitScene(
            {.width = static_cast<UINT>(place.width), .height = static_cast<UINT>(place.height)}, CanvasHeight(false));
        fit.dx += static_cast<float>(place.x) + rim;
        fit.dy += static_cast<float>(place.y) + titleHeight;
        fit_ = fit;
        size_ = place;
    }

    const WindowPlace& Size() const { return size_; }

    ScreenPoint Place(Tamborel::Point point) const {
        const Tamborel::Point placed = Tamborel::Transform(fit_, point);
        return {static_cast<int>(std::lround(placed.x)), static_cast<int>(std::lround(placed.y))};
    }

    void Move(Tamborel::Point point) { moved_ = hand_.Move(Place(point)); }
    void Button(bool down) { moved_ = hand_.Button(down); }

    std::uint32_t Colour(Tamborel::Point point) { return watch_.Look({Place(point)}).front(); }

    /// What comes of the last movement of the hand: waits for a picture in which `point` has the colour.
    Answer Await(Tamborel::Point point, std::uint32_t colour, const char* what) {
        int pictures = 0;
        while (const auto shown = watch_.AwaitPicture(smallestPicture, moved_ + 10 * second)) {
            ++pictures;
            if (IsLike(Colour(point), colour)) return {static_cast<double>(*shown - moved_) / 1e6, pictures};
        }
        char text[128];
        std::snprintf(text, sizeof text, "No picture shows %s: the pixel is %06X, not %06X.", what, Colour(point),
                      colour);
        throw std::runtime_error(text);
    }

    /// Lets a part of the pictures' period pass that is another one each time, so that events come at any moment of it.
    void Pause() {
        timespec span{0, std::uniform_int_distribution<long>(20'000'000, 70'000'000)(random_)};
        nanosleep(&span, nullptr);
        watch_.Clear();
    }

private:
    WindowPlace AwaitWindow(pid_t process) {
        const std::int64_t limit = StartReport::Nanoseconds() + 20 * second;
        while (watch_.AwaitPicture(smallestPicture, limit)) {
            if (const auto place = hand_.WindowOf(process)) return *place;
        }
        throw std::runtime_error("The launcher shows no window; start it by hand to see why.");
    }

    ScreenWatch& watch_;
    Hand& hand_;
    Tamborel::Matrix3x2 fit_;
    WindowPlace size_;
    std::int64_t moved_ = 0;
    std::mt19937 random_{1};
};

// Places on the canvas, and the colours there.
constexpr Tamborel::Point nowhere{560, 160};  // beside the line below the headline
constexpr Tamborel::Point findButton{48, 343};
constexpr std::uint32_t findColour = 0x272E33;
constexpr std::uint32_t hoverColour = 0x35433F;
constexpr std::uint32_t pressedColour = 0x405550;
constexpr Tamborel::Point switchTrack{449, 615};
constexpr Tamborel::Point knobWhenOn{461, 622};
constexpr std::uint32_t knobColour = 0xE6EEEE;
constexpr Tamborel::Point knobWhenOff{438, 622};
constexpr Tamborel::Point cards[2]{{200, 512}, {600, 512}};
constexpr Tamborel::Point dots[2]{{59, 450}, {443, 450}};
constexpr std::uint32_t dotColour = 0x72D6C8;

class Session {
public:
    explicit Session(Screen& screen) : screen_(screen) {}

    std::vector<Series> Run(int runs) {
        Series enter{"hover", {}};
        Series leave{"leave", {}};
        Series press{"press", {}};
        Series release{"release", {}};
        Series toggle{"click_switch", {}};
        Series choose{"click_card", {}};
        screen_.Move(nowhere);
        for (int i = 0; i < runs; ++i) {
            screen_.Pause();
            screen_.Move(findButton);
            enter.answers.push_back(screen_.Await(findButton, hoverColour, "the hover"));
            screen_.Pause();
            screen_.Move(nowhere);
            leave.answers.push_back(screen_.Await(findButton, findColour, "the end of the hover"));

            screen_.Move(findButton);
            screen_.Await(findButton, hoverColour, "the hover");
            screen_.Pause();
            screen_.Button(true);
            press.answers.push_back(screen_.Await(findButton, pressedColour, "the press"));
            // Beside the button, so that the search doesn't begin.
            screen_.Move(nowhere);
            screen_.Pause();
            screen_.Button(false);
            release.answers.push_back(screen_.Await(findButton, findColour, "the release"));

            const bool off = i % 2 == 0;
            toggle.answers.push_back(Click(switchTrack, off ? knobWhenOff : knobWhenOn, knobColour, "the switch"));
            const int card = i % 2 == 0 ? 1 : 0;
            choose.answers.push_back(Click(cards[card], dots[card], dotColour, "the chosen card"));
            screen_.Move(nowhere);
        }
        return {enter, leave, press, release, toggle, choose};
    }

private:
    Answer Click(Tamborel::Point button, Tamborel::Point shown, std::uint32_t colour, const char* what) {
        screen_.Move(button);
        screen_.Pause();
        screen_.Button(true);
        screen_.Await(button, pressedColour, "the press");
        screen_.Pause();
        screen_.Button(false);
        return screen_.Await(shown, colour, what);
    }

    Screen& screen_;
};

Pace MeasurePace(ScreenWatch& watch, const StartedProgram& launcher) {
    constexpr int count = 90;
    watch.Clear();
    const auto first = watch.AwaitPicture(smallestPicture);
    const double used = launcher.ProcessorMilliseconds();
    auto last = first;
    for (int i = 0; i < count && last; ++i) last = watch.AwaitPicture(smallestPicture);
    if (!last) throw std::runtime_error("The launcher's background stands still.");
    return {static_cast<double>(*last - *first) / 1e6 / count, (launcher.ProcessorMilliseconds() - used) / count};
}

int Run(const Options& options) {
    const PrivateState state;
    ScreenWatch watch;
    Hand hand;
    const StartedProgram launcher({options.program});
    Screen screen(watch, hand, launcher.Process());
    screen.Move(nowhere);
    screen.Await(findButton, findColour, "the launcher's first button");
    screen.Await(knobWhenOn, knobColour, "the switch");
    const Pace pace = MeasurePace(watch, launcher);
    const std::vector<Series> all = Session(screen).Run(options.runs);
    (options.json ? PrintJson : PrintTable)(screen.Size(), pace, all);
    return 0;
}

}  // namespace

int main(int count, char** words) try { return Run(ReadOptions(count, words)); } catch (const std::exception& failure) {
    std::fprintf(stderr, "feedback_bench: %s\n", failure.what());
    return 1;
}
