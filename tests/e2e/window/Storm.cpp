#include "Storm.h"

#include <algorithm>
#include <random>
#include <vector>

namespace {

/// Pixels around the window that belong to the storm, and those of the close button's surroundings.
constexpr int kRim = 12;
constexpr int kCloseWidth = 72;
constexpr int kCloseHeight = 48;

bool HasCloseButton(const Place& place, int x, int y) {
    const int right = place.x + place.width;
    return x >= right - kCloseWidth && x < right + kRim && y >= place.y - kRim && y < place.y + kCloseHeight;
}

class Hands {
public:
    Hands(User& user, std::uint64_t seed, xcb_window_t window)
        : user_(user), window_(window), screen_(user.Screen()), random_(seed) {
        constexpr int escape = 9;
        constexpr int caps = 66;
        constexpr int f4 = 70;
        constexpr int numLock = 77;
        constexpr int scrollLock = 78;
        constexpr int last = 119;
        for (int code = escape; code <= last; ++code) {
            if (code != caps && code != f4 && code != numLock && code != scrollLock) keys_.push_back(code);
        }
    }

    void Step() {
        const int chance = Below(100);
        if (chance < 60) {
            Move();
        } else if (chance < 85) {
            UseButton();
        } else {
            UseKey();
        }
    }

    void Move() {
        const Place place = user_.Where(window_);
        const int left = std::clamp(place.x - kRim, 0, screen_.width - 1);
        const int top = std::clamp(place.y - kRim, 0, screen_.height - 1);
        const int right = std::clamp(place.x + place.width + kRim, left + 1, screen_.width);
        const int bottom = std::clamp(place.y + place.height + kRim, top + 1, screen_.height);
        x_ = left + Below(right - left);
        y_ = top + Below(bottom - top);
        user_.MovePointer(x_, y_);
        ++counts_.moves;
    }

    void LetGo() {
        if (button_ != 0) ReleaseButton();
        if (key_ != 0) ReleaseKey();
    }

    int Held() const { return (button_ != 0 ? 1 : 0) + (key_ != 0 ? 1 : 0); }
    int Given() const { return counts_.moves + counts_.buttons + counts_.keys; }
    const StormCounts& Counts() const { return counts_; }

private:
    // Not a distribution of the library's: those differ from one library to the next.
    int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }

    void UseButton() {
        if (button_ != 0) return ReleaseButton();
        if (HasCloseButton(user_.Where(window_), x_, y_) || HasCloseButton(screen_, x_, y_)) return Move();
        constexpr int buttons[] = {1, 1, 1, 1, 1, 1, 2, 3, 4, 5};
        button_ = buttons[Below(10)];
        user_.Button(button_, true);
        ++counts_.buttons;
    }

    void ReleaseButton() {
        user_.Button(button_, false);
        button_ = 0;
        ++counts_.buttons;
    }

    void UseKey() {
        if (key_ != 0) return ReleaseKey();
        key_ = keys_[static_cast<std::size_t>(Below(static_cast<int>(keys_.size())))];
        user_.Key(key_, true);
        ++counts_.keys;
    }

    void ReleaseKey() {
        user_.Key(key_, false);
        key_ = 0;
        ++counts_.keys;
    }

    User& user_;
    xcb_window_t window_;
    Place screen_;
    std::mt19937_64 random_;
    std::vector<int> keys_;
    int x_ = 0;
    int y_ = 0;
    int button_ = 0;  // held down; 0 for none
    int key_ = 0;     // held down; 0 for none
    StormCounts counts_;
};

}  // namespace

StormCounts Storm(User& user, std::uint64_t seed, int events, xcb_window_t window) {
    Hands hands(user, seed, window);
    try {
        // A press brings its release along, so that the last event may have to be one that brings none.
        while (hands.Given() + hands.Held() < events - 1) hands.Step();
        if (hands.Given() + hands.Held() < events) hands.Move();
    } catch (...) {
        hands.LetGo();
        if (user.Exists(window)) throw;
        return hands.Counts();
    }
    hands.LetGo();
    return hands.Counts();
}
