// Windows for the end-to-end tests to handle: reads commands, one a line, and answers each with one line of JSON.
//
//   open X Y WIDTH HEIGHT [animated] [fixed]   {"id":N,"window":X11 WINDOW}; X of -1 leaves the place to the system
//   counts ID | frames ID | block ID           what the render thread did; the longest wait for a frame in a size loop
//   stop ID                                    shuts the window down, which the user may have closed already
//   wait                                       answers once the user has closed all windows
//   quit                                       stops what is open and ends with 0
#include "FrameLog.h"

#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Platform/Linux/Window/NativeWindow.h"
#include "Window/FrameWindow.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <sstream>

using namespace Tamborel;

namespace {

constexpr Color kFrame{0.8F, 0.1F, 0.1F, 1};
constexpr Color kBorder{0, 1, 0, 1};
constexpr Color kTitle{0.1F, 0.1F, 0.8F, 1};

/// Opaque plain colours, so that a picture tells where a frame begins and ends.
ChromeTheme PlainTheme() {
    ChromeTheme theme;
    theme.FrameWidth = 8.0F;
    theme.InnerBorderWidth = 2.0F;
    theme.FrameFill = kFrame;
    theme.InnerBorderColor = kBorder;
    theme.TitleBarFill = kTitle;
    return theme;
}

/// A window that knows how long it kept the system's size loop.
class Subject : public FrameWindow {
public:
    BackgroundRenderer background;
    HWND handle = nullptr;  // also after the window's end

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_NCCALCSIZE) return FrameWindow::HandleMessage(message, wParam, lParam);
        const double before = FrameLog::Now();
        const LRESULT result = FrameWindow::HandleMessage(message, wParam, lParam);
        longestBlock_ = std::max<double>(longestBlock_, FrameLog::Now() - before);
        return result;
    }

    double TakeLongestBlock() { return longestBlock_.exchange(0); }

private:
    std::atomic<double> longestBlock_{0};  // milliseconds; written by the UI thread
};

class Subjects {
public:
    std::string Answer(const std::string& command, std::istream& words) {
        if (command == "open") return Open(words);
        if (command == "wait") {
            WaitForWindows();
            return "";
        }
        int id = 0;
        words >> id;
        Subject& subject = *open_.at(id);
        if (command == "counts") return Text(FrameLog::Get().CountsOf(subject.handle));
        if (command == "frames") return Text(FrameLog::Get().TakeFrames(subject.handle));
        if (command == "block") return R"("milliseconds":)" + std::to_string(subject.TakeLongestBlock());
        if (command == "stop") return Stop(id);
        throw std::runtime_error("unknown command");
    }

    ~Subjects() {
        while (!open_.empty()) Stop(open_.begin()->first);
    }

private:
    std::string Open(std::istream& words) {
        WindowConfig config;
        config.title = L"Subject";
        config.theme = PlainTheme();
        words >> config.x >> config.y >> config.width >> config.height;
        if (config.x < 0) config.x = config.y = CW_USEDEFAULT;
        bool animated = false;
        for (std::string word; words >> word;) {
            animated = animated || word == "animated";
            if (word == "fixed") config.resizable = false;
        }
        auto subject = std::make_unique<Subject>();
        subject->Create(nullptr, SW_SHOWNORMAL, config);
        if (!subject->WaitUntilReady()) {
            subject->Shutdown();
            throw std::runtime_error("not ready");
        }
        subject->handle = subject->Handle();
        if (animated) subject->SetBackgroundRenderer(&subject->background);
        const auto view = Platform::ViewNativeWindow(subject->handle);
        const int id = next_++;
        open_[id] = std::move(subject);
        return R"("id":)" + std::to_string(id) + R"(,"window":)" + std::to_string(view ? view->window : 0);
    }

    std::string Stop(int id) {
        open_.at(id)->Shutdown();
        open_.erase(id);
        return "";
    }

    static std::string Text(const Counts& counts) {
        std::ostringstream text;
        text << R"("turns":)" << counts.turns << R"(,"framePasses":)" << counts.framePasses << R"(,"clientPasses":)"
             << counts.clientPasses << R"(,"presents":)" << counts.presents << R"(,"commits":)" << counts.commits
             << R"(,"resizes":)" << counts.resizes;
        return text.str();
    }

    static std::string Text(const std::vector<FinishedFrame>& frames) {
        std::ostringstream text;
        text.precision(12);
        text << R"("frames":[)";
        for (const FinishedFrame& frame : frames) {
            if (&frame != &frames.front()) text << ',';
            text << '[' << frame.milliseconds << ',' << frame.size.cx << ',' << frame.size.cy << ']';
        }
        text << "]";
        return text.str();
    }

    std::map<int, std::unique_ptr<Subject>> open_;
    int next_ = 0;
};

void Obey() {
    Subjects subjects;
    std::string line;
    while (std::getline(std::cin, line) && line != "quit") {
        std::istringstream words(line);
        std::string command;
        words >> command;
        try {
            const std::string answer = subjects.Answer(command, words);
            std::cout << '{' << answer << '}' << std::endl;
        } catch (const std::exception& failure) {
            std::cout << R"({"error":")" << failure.what() << R"("})" << std::endl;
        }
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    if (FAILED(Initialize())) return 1;
    Obey();
    Shutdown();
    return 0;
}
