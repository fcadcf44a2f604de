// The native window's creation, its procedure, its title, theme and icons.
#include "StandIns.h"

#include "Window/Messages.h"

namespace Tamborel {

namespace {

using Creation = WindowTest;

/// A window that notes the handle it had at each message.
class NotingWindow : public AppWindow {
public:
    using AppWindow::ClearHandle;
    using AppWindow::CreateNativeWindow;

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        messages.push_back(message);
        allHadTheHandle = allHadTheHandle && Handle() != nullptr;
        return AppWindow::HandleMessage(message, wParam, lParam);
    }

    std::vector<UINT> messages;
    bool allHadTheHandle = true;
};

TEST_F(Creation, RegistersCreatesMeasuresAnewAndShows) {
    WindowConfig config;
    config.title = L"A title";
    config.x = 11;
    config.y = 12;
    config.width = 640;
    config.height = 480;
    NotingWindow window;
    const auto instance = reinterpret_cast<HINSTANCE>(std::uintptr_t{0x400000});
    ASSERT_TRUE(window.CreateNativeWindow(instance, 5, config));

    const std::vector<std::string> calls = windows.Calls();
    EXPECT_EQ(calls.front(), "RegisterClassExW");
    EXPECT_EQ(calls.back(), "ShowWindow 5");
    const WNDCLASSEXW windowClass = windows.Classes().at(0);
    EXPECT_EQ(windowClass.cbSize, sizeof(WNDCLASSEXW));
    EXPECT_EQ(windowClass.style, 0U);
    EXPECT_EQ(windowClass.hInstance, instance);
    EXPECT_EQ(windowClass.hCursor, LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(windowClass.hIcon, nullptr);
    EXPECT_EQ(windowClass.hbrBackground, nullptr);

    const Fakes::Creation creation = windows.Creations().at(0);
    EXPECT_EQ(creation.className, L"TamborelWindow");
    EXPECT_EQ(creation.title, L"A title");
    EXPECT_EQ(creation.extendedStyle, 0x00200000U);
    EXPECT_EQ(creation.style, 0x00CF0000U);
    EXPECT_EQ(creation.x, 11);
    EXPECT_EQ(creation.y, 12);
    EXPECT_EQ(creation.width, 640);
    EXPECT_EQ(creation.height, 480);
    EXPECT_EQ(creation.instance, instance);
    EXPECT_EQ(creation.parameter, static_cast<AppWindow*>(&window));

    const Fakes::Placement placed = windows.Placements().at(0);
    EXPECT_EQ(placed.window, window.Handle());
    EXPECT_EQ(placed.flags, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
}

TEST_F(Creation, HandleIsKnownFromTheFirstMessageOnAndWhatComesBeforeIsTheSystems) {
    NotingWindow window;
    window.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {});
    EXPECT_EQ(window.messages.front(), WM_NCCREATE);
    EXPECT_TRUE(window.allHadTheHandle);
    EXPECT_EQ(windows.Calls().at(2), "DefWindowProcW 0x0024");  // ahead of the creation parameter
}

TEST_F(Creation, DefaultsOfTheConfig) {
    const WindowConfig config;
    EXPECT_EQ(config.title, L"Tamborel");
    EXPECT_EQ(config.x, CW_USEDEFAULT);
    EXPECT_EQ(config.y, CW_USEDEFAULT);
    EXPECT_EQ(config.width, 1280);
    EXPECT_EQ(config.height, 720);
    EXPECT_TRUE(config.resizable);
    EXPECT_FALSE(config.theme.has_value());
}

TEST_F(Creation, WindowThatIsNotResizableHasNoSizingBorderAndItsFrameLogicIsTheSame) {
    WindowConfig config;
    config.resizable = false;
    TestWindow window(config);
    const DWORD style = windows.Creations().at(0).style;
    EXPECT_EQ(style, 0x00CA0000U);
    EXPECT_EQ(style & (WS_THICKFRAME | WS_MAXIMIZEBOX), 0U);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(100, 200)), HTTOPLEFT);
    EXPECT_EQ(window.Send(WM_NCHITTEST, 0, PackedPoint(790, 220)), HTMAXBUTTON);
}

TEST_F(Creation, FailsWithoutAWindow) {
    windows.Change([](Fakes::WindowSettings& settings) { settings.creationFails = true; });
    NotingWindow window;
    EXPECT_FALSE(window.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {}));
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(windows.CountCalls("SetWindowPos"), 0);
}

TEST_F(Creation, ResultOfTheRegistrationIsNotLookedAt) {
    NotingWindow first;
    NotingWindow second;
    EXPECT_TRUE(first.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {}));
    EXPECT_TRUE(second.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {}));  // the class is taken
    EXPECT_NE(first.Handle(), second.Handle());
    windows.Reset();
    first.ClearHandle();
    second.ClearHandle();
    windows.Change([](Fakes::WindowSettings& settings) { settings.registrationFails = true; });
    EXPECT_FALSE(first.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {}));  // creation decides
    EXPECT_EQ(windows.CountCalls("CreateWindowExW"), 1);
}

TEST_F(Creation, DestructorDestroysAWindowThatRemains) {
    {
        NotingWindow window;
        window.CreateNativeWindow(nullptr, SW_SHOWNORMAL, {});
        EXPECT_EQ(windows.Windows().size(), 1U);
    }
    EXPECT_TRUE(windows.Windows().empty());
}

TEST_F(Creation, PaintCycleIsEndedAtOnceAndNothingIsErased) {
    TestWindow window;
    EXPECT_EQ(window.Send(WM_PAINT), 0);
    EXPECT_EQ(windows.Calls(), (std::vector<std::string>{"BeginPaint", "EndPaint"}));
    EXPECT_EQ(window.Send(WM_ERASEBKGND), 1);
    EXPECT_EQ(window.Send(WM_USER + 3), 77);
    EXPECT_EQ(windows.Calls().back(), "DefWindowProcW 0x0403");
}

TEST_F(Creation, ThemeOfTheConfigIsMergedWithTheDefaultTheme) {
    ChromeTheme base;
    base.TitleHeight = 30.0F;
    base.ButtonWidth = 50.0F;
    SetDefaultChromeTheme(base);
    WindowConfig config;
    config.theme.emplace().TitleHeight = 36.0F;
    TestWindow window(config);
    EXPECT_EQ(window.State().Theme.Effective.TitleHeight, 36.0F);
    EXPECT_EQ(window.State().Theme.Effective.ButtonWidth, 50.0F);
    EXPECT_EQ(window.State().Theme.Metrics.titleHeight, 36.0F);
    EXPECT_EQ(window.State().CaptionMetrics.Load().buttonWidth, 50.0F);
}

TEST_F(Creation, ThemeSetLaterReplacesTheWindowsOverlay) {
    WindowConfig config;
    config.theme.emplace().TitleHeight = 36.0F;
    TestWindow window(config);
    ChromeTheme theme;
    theme.FrameWidth = 3.0F;
    window.SetChromeTheme(theme);
    EXPECT_FALSE(window.State().Theme.Effective.TitleHeight.has_value());
    EXPECT_EQ(window.State().CaptionMetrics.Load().frameWidth, 3.0F);
    EXPECT_TRUE(window.State().Closures.RunPending());
}

TEST_F(Creation, OnlyIconsThatArePresentAreSent) {
    TestWindow window;
    const auto icon = reinterpret_cast<HICON>(std::uintptr_t{0x55});
    ChromeTheme theme;
    window.SetChromeTheme(theme);
    EXPECT_TRUE(windows.Sent().empty());
    theme.LargeIcon = icon;
    window.SetChromeTheme(theme);
    ASSERT_EQ(windows.Sent().size(), 1U);
    EXPECT_EQ(windows.Sent()[0].message, WM_SETICON);
    EXPECT_EQ(windows.Sent()[0].wParam, WPARAM{ICON_BIG});
    EXPECT_EQ(windows.Sent()[0].lParam, reinterpret_cast<LPARAM>(icon));
    theme.SmallIcon = nullptr;  // present: takes the icon away
    window.SetChromeTheme(theme);
    ASSERT_EQ(windows.Sent().size(), 3U);
    EXPECT_EQ(windows.Sent()[1].wParam, WPARAM{ICON_SMALL});
    EXPECT_EQ(windows.Sent()[1].lParam, 0);
}

TEST_F(Creation, TitleReachesTheWindowAndTheRenderThread) {
    TestWindow window;
    window.SetTitle(L"Another");
    EXPECT_EQ(windows.Title(window.Handle()), L"Another");
    EXPECT_TRUE(window.State().Closures.RunPending());
}

TEST_F(Creation, TitleImageIsStoredAndAnnounced) {
    TestWindow window;
    const std::shared_ptr<ImageAsset> image(std::make_shared<int>(), nullptr);
    window.SetTitleImage(image);
    EXPECT_FALSE(window.State().Theme.TitleImage.owner_before(image) ||
                 image.owner_before(window.State().Theme.TitleImage));
    EXPECT_TRUE(window.State().Closures.RunPending());
}

TEST_F(Creation, EventsAreStampedPostedAndHandedToListenersByTheMessage) {
    TestWindow window;
    UiEvent heard;
    int count = 0;
    window.AddEventListener(L"ui.button.click", [&](const UiEvent& event) {
        heard = event;
        ++count;
    });
    UiEvent event;
    event.name = L"ui.button.click";
    window.PostEvent(event);
    EXPECT_EQ(count, 0);
    ASSERT_EQ(windows.Posted().size(), 1U);
    EXPECT_EQ(windows.Posted()[0].message, 0x8417U);
    EXPECT_EQ(windows.Posted()[0].window, window.Handle());
    EXPECT_EQ(window.Send(WM_APP_DISPATCH_EVENTS), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(heard.window, window.Handle());
    EXPECT_GT(heard.timestampMicroseconds, 0);

    event.window = reinterpret_cast<HWND>(std::uintptr_t{0x77});
    event.timestampMicroseconds = 5;
    window.PostEvent(event);
    window.Send(WM_APP_DISPATCH_EVENTS);
    EXPECT_EQ(heard.window, event.window);
    EXPECT_EQ(heard.timestampMicroseconds, 5);
}

TEST_F(Creation, EventWithoutANameIsDroppedAndNothingIsPosted) {
    TestWindow window;
    window.PostEvent({});
    EXPECT_TRUE(windows.Posted().empty());
}

TEST_F(Creation, ListenerWithAnEmptyFunctionHasNoId) {
    TestWindow window;
    EXPECT_EQ(window.AddEventListener(L"name", {}), 0U);
}

TEST_F(Creation, ListenerMayAddAListener) {
    TestWindow window;
    std::uint64_t added = 0;
    window.AddEventListener(L"name",
                            [&](const UiEvent&) { added = window.AddEventListener(L"other", [](const UiEvent&) {}); });
    UiEvent event;
    event.name = L"name";
    window.PostEvent(event);
    window.Send(WM_APP_DISPATCH_EVENTS);
    EXPECT_EQ(added, 2U);
}

TEST_F(Creation, UserCloseTellsTheSceneWakesARedrawAndDestroysTheWindowOnTheSpot) {
    TestWindow window;
    const HWND handle = window.Handle();
    EXPECT_EQ(window.Send(WM_CLOSE), 0);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(WindowCount::released, 1);
    const std::vector<InputEvent> events = window.Drain();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].kind, InputEventKind::WindowClosing);
    EXPECT_EQ(events[0].window, handle);
    EXPECT_TRUE(window.State().Closures.RunPending());
    EXPECT_EQ(windows.Calls(), (std::vector<std::string>{"DestroyWindow", "PostQuitMessage"}));
}

}  // namespace

}  // namespace Tamborel
