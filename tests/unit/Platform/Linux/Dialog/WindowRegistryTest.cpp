#include "Platform/Linux/Dialog/OwnerWatch.h"
#include "Platform/Linux/Window/Registry/WindowRegistry.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <optional>
#include <thread>

namespace {

using Platform::NativeWindow;
using Platform::OwnerWatch;
using Platform::RegisterNativeWindow;
using Platform::UnregisterNativeWindow;

// Whether the descriptor becomes readable within the time.
bool Readable(int descriptor, int milliseconds) {
    pollfd event{descriptor, POLLIN, 0};
    return ::poll(&event, 1, milliseconds) == 1;
}

TEST(WindowRegistryTest, ARegisteredWindowExistsUntilItIsUnregistered) {
    const HWND window = RegisterNativeWindow(0x400001);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(NativeWindow(window), std::optional<std::uint32_t>(0x400001));
    UnregisterNativeWindow(window);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(NativeWindow(window), std::nullopt);
}

TEST(WindowRegistryTest, AHandleIsNeverGivenOutTwice) {
    const HWND first = RegisterNativeWindow(7);
    UnregisterNativeWindow(first);
    const HWND second = RegisterNativeWindow(7);
    EXPECT_NE(first, second);
    EXPECT_FALSE(IsWindow(first));
    UnregisterNativeWindow(second);
}

TEST(WindowRegistryTest, TheDesktopIsAWindowWithoutANativeOne) {
    EXPECT_TRUE(IsWindow(GetDesktopWindow()));
    EXPECT_EQ(NativeWindow(GetDesktopWindow()), std::nullopt);
    UnregisterNativeWindow(GetDesktopWindow());
    EXPECT_TRUE(IsWindow(GetDesktopWindow()));
}

TEST(WindowRegistryTest, NullAndStrangersAreNoWindows) {
    int stranger = 0;
    EXPECT_FALSE(IsWindow(nullptr));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(&stranger)));
    UnregisterNativeWindow(nullptr);
}

TEST(OwnerWatchTest, AHandleThatEndsOnAnotherThreadWakesTheWatch) {
    const ScopedEnvironment display(L"DISPLAY", std::nullopt);
    const HWND window = RegisterNativeWindow(7);
    OwnerWatch watch(window);
    EXPECT_FALSE(Readable(watch.Descriptor(), 0));
    EXPECT_FALSE(watch.Gone());
    std::thread closer([&] { UnregisterNativeWindow(window); });
    EXPECT_TRUE(Readable(watch.Descriptor(), 20000));
    EXPECT_TRUE(watch.Gone());
    closer.join();
}

TEST(OwnerWatchTest, AHandleThatNamesNoWindowIsGoneFromTheStart) {
    const HWND window = RegisterNativeWindow(7);
    UnregisterNativeWindow(window);
    OwnerWatch watch(window);
    EXPECT_TRUE(Readable(watch.Descriptor(), 0));
    EXPECT_TRUE(watch.Gone());
}

TEST(OwnerWatchTest, TheDesktopAndNoOwnerNeverGo) {
    for (const HWND window : {GetDesktopWindow(), HWND{}}) {
        OwnerWatch watch(window);
        EXPECT_FALSE(Readable(watch.Descriptor(), 0));
        EXPECT_FALSE(watch.Gone());
        EXPECT_EQ(watch.XWindow(), std::nullopt);
    }
}

TEST(OwnerWatchTest, SeveralDialogsMayWatchOneWindow) {
    const ScopedEnvironment display(L"DISPLAY", std::nullopt);
    const HWND window = RegisterNativeWindow(7);
    OwnerWatch first(window);
    std::optional<OwnerWatch> second(window);
    OwnerWatch third(window);
    second.reset();
    UnregisterNativeWindow(window);
    EXPECT_TRUE(first.Gone());
    EXPECT_TRUE(third.Gone());
}

}  // namespace
