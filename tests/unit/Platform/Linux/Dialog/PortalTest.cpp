// The dialog on a portal that the test plays.

#include "DialogFixture.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Window/Registry/WindowRegistry.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>
#include <iterator>
#include <thread>

namespace {

using Reply = FakePortalSettings::Reply;

class PortalTest : public DialogFixture {
protected:
    // A dialog that ends with an answer of the portal.
    DialogEnd Answered(const PortalResponse& response, FakePortalSettings settings = {}) {
        FakePortal& portal = StartPortal(std::move(settings));
        auto dialog = Show();
        portal.WaitForCall();
        portal.Respond(response);
        return End(std::move(dialog));
    }

    void ExpectFailure(const DialogEnd& end) {
        EXPECT_TRUE(FAILED(end.shown));
        EXPECT_NE(end.shown, kDialogCancelled);
        EXPECT_TRUE(FAILED(end.picked));
    }

    void ExpectCancel(const DialogEnd& end) {
        EXPECT_EQ(end.shown, kDialogCancelled);
        EXPECT_TRUE(FAILED(end.picked));
    }
};

TEST_F(PortalTest, ThePickIsTheFirstAddressAsALocalPath) {
    const DialogEnd end = Answered({0, {"file:///games/Spiele%20f%C3%BCr%20J%C3%BCrgen/Quake%20II", "file:///other"}});
    EXPECT_EQ(end.shown, S_OK);
    EXPECT_EQ(end.picked, S_OK);
    EXPECT_EQ(end.path, L"/games/Spiele für Jürgen/Quake II");
}

TEST_F(PortalTest, ANameThatIsNotUtf8IsPickedByteForByte) {
    EXPECT_EQ(Platform::PathFromText(Answered({0, {"file:///games/quake%E4"}}).path).native(), "/games/quake\xE4");
}

TEST_F(PortalTest, TheRequestHoldsTitleLabelAndTheFolderOptions) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    const PortalCall call = portal.WaitForCall();
    EXPECT_EQ(call.parent, "");
    EXPECT_EQ(call.title, "Wähle einen Ordner");
    EXPECT_EQ(call.options.at("directory"), "true");
    EXPECT_EQ(call.options.at("modal"), "true");
    EXPECT_EQ(call.options.at("accept_label"), "'Take__it'");  // A single underscore would underline the next letter.
    EXPECT_TRUE(call.options.contains("handle_token"));
    EXPECT_FALSE(call.options.contains("current_folder"));
    EXPECT_EQ(call.options.size(), 4U);
    portal.Respond({1, {}});
    End(std::move(dialog));
}

TEST_F(PortalTest, TheOwnersWindowIsTheParentInHexadecimal) {
    const HWND window = Platform::RegisterNativeWindow(0x2E0000F);
    FakePortal& portal = StartPortal();
    auto dialog = Show(window);
    EXPECT_EQ(portal.WaitForCall().parent, "x11:2e0000f");
    portal.Respond({1, {}});
    End(std::move(dialog));
    Platform::UnregisterNativeWindow(window);
}

TEST_F(PortalTest, Response1IsACancel) {
    ExpectCancel(Answered({1, {}}));
}

TEST_F(PortalTest, Response2IsACancelToo) {
    ExpectCancel(Answered({2, {}}));
}

TEST_F(PortalTest, AnUnknownResponseIsAFailure) {
    ExpectFailure(Answered({3, {}}));
}

TEST_F(PortalTest, AResponseBeforeTheCallsReplyCounts) {
    StartPortal({.earlyResponse = PortalResponse{0, {"file:///early"}}});
    EXPECT_EQ(End(Show()).path, L"/early");
}

TEST_F(PortalTest, AResponseOnAnotherHandleThanPredictedCounts) {
    // It may be sent as soon as the reply is, so it is sent until it is heard.
    FakePortal& portal = StartPortal({.reply = Reply::ForeignHandle});
    auto dialog = Show();
    portal.WaitForCall();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    do {
        portal.Respond({0, {"file:///foreign"}});
    } while (dialog.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready &&
             std::chrono::steady_clock::now() < deadline);
    EXPECT_EQ(End(std::move(dialog)).path, L"/foreign");
}

TEST_F(PortalTest, AnErrorOfThePortalIsAFailure) {
    StartPortal({.reply = Reply::Error});
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, APickThatIsNoFileHasNoResult) {
    for (const char* const uri : {"smb://server/games", "file://elsewhere/games", "nonsense"}) {
        const DialogEnd end = Answered({0, {uri}});
        EXPECT_EQ(end.shown, S_OK) << uri;
        EXPECT_TRUE(FAILED(end.picked)) << uri;
    }
}

TEST_F(PortalTest, APickWithoutAnyAddressHasNoResult) {
    const DialogEnd end = Answered({0, {}});
    EXPECT_EQ(end.shown, S_OK);
    EXPECT_TRUE(FAILED(end.picked));
}

TEST_F(PortalTest, ADialogThatNeverAnswersEndsWithItsOwnerAndIsClosed) {
    const HWND window = Platform::RegisterNativeWindow(7);
    FakePortal& portal = StartPortal();
    auto dialog = Show(window);
    portal.WaitForCall();
    Platform::UnregisterNativeWindow(window);
    ExpectCancel(End(std::move(dialog)));
    EXPECT_TRUE(portal.WaitForClose());
}

TEST_F(PortalTest, ACallThatIsNeverRepliedToEndsWithItsOwner) {
    const HWND window = Platform::RegisterNativeWindow(7);
    FakePortal& portal = StartPortal({.reply = Reply::None});
    auto dialog = Show(window);
    portal.WaitForCall();
    Platform::UnregisterNativeWindow(window);
    ExpectCancel(End(std::move(dialog)));
    EXPECT_TRUE(portal.WaitForClose());
}

TEST_F(PortalTest, AnOwnerThatWentBeforeShowIsACancelWithoutACall) {
    const HWND window = Platform::RegisterNativeWindow(7);
    Platform::UnregisterNativeWindow(window);
    FakePortal& portal = StartPortal();
    ExpectCancel(End(Show(window)));
    EXPECT_FALSE(portal.WasCalled());
}

TEST_F(PortalTest, APortalThatVanishesIsAFailure) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    portal.WaitForCall();
    portal.Leave();
    ExpectFailure(End(std::move(dialog)));
}

TEST_F(PortalTest, ABusThatVanishesIsAFailure) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    portal.WaitForCall();
    bus_.Kill();
    ExpectFailure(End(std::move(dialog)));
}

TEST_F(PortalTest, Response2AfterTheLossOfTheBackEndIsAFailure) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    portal.WaitForCall();
    portal.LoseBackEnd();
    portal.Respond({2, {}});
    ExpectFailure(End(std::move(dialog)));
}

TEST_F(PortalTest, Response2WithoutAnyBackEndIsAFailure) {
    ExpectFailure(Answered({2, {}}, {.hasBackEnd = false}));
}

TEST_F(PortalTest, TheLossOfTheBackEndWithoutAResponseIsAFailure) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    portal.WaitForCall();
    portal.LoseBackEnd();
    ExpectFailure(End(std::move(dialog)));
}

TEST_F(PortalTest, TheLossOfAnotherBackEndLeavesTheDialogOpen) {
    FakePortal& portal = StartPortal();
    auto dialog = Show();
    portal.WaitForCall();
    FakePortal::ComeAndGo(bus_.Address());
    EXPECT_TRUE(portal.WaitForInspection());
    portal.Respond({0, {"file:///later"}});
    EXPECT_EQ(End(std::move(dialog)).path, L"/later");
}

TEST_F(PortalTest, ADialogLeavesNoDescriptorBehind) {
    StartPortal({.earlyResponse = PortalResponse{0, {"file:///picked"}}});
    const auto descriptors = [] {
        const std::filesystem::directory_iterator open("/proc/self/fd");
        return std::distance(begin(open), end(open));
    };
    const auto before = descriptors();
    // GDBus keeps what it needs once per process, and its own thread lets go of a connection a moment later.
    for (int i = 0; i < 20; ++i) EXPECT_EQ(End(Show()).path, L"/picked");
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (descriptors() > before + 10 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    EXPECT_LE(descriptors(), before + 10);
}

TEST_F(PortalTest, NoPortalOnTheBusIsAFailure) {
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, NoBusAtAllIsAFailure) {
    const ScopedEnvironment none(L"DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, AStaleBusAddressIsAFailure) {
    bus_.Kill();
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, AnAddressThatIsNoneIsAFailure) {
    const ScopedEnvironment nonsense(L"DBUS_SESSION_BUS_ADDRESS", L"nonsense");
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, ABusThatAcceptsAndNeverAnswersIsAFailureInTheEnd) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::filesystem::path path = programs_ / "bus";
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const Platform::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(socket.Get(), 4), 0);
    const ScopedEnvironment silent(L"DBUS_SESSION_BUS_ADDRESS", L"unix:path=" + Platform::TextFromPath(path));
    ExpectFailure(End(Show()));
}

TEST_F(PortalTest, Version4GetsTheStartFolderAsBytesWithATerminator) {
    InstallProgram("zenity", "exit 3\n");
    const ScopedEnvironment display(L"DISPLAY", L":77");
    const std::filesystem::path folder = programs_ / "Quake II";
    std::filesystem::create_directory(folder);
    FakePortal& portal = StartPortal({.version = 4});
    auto dialog = Show(GetDesktopWindow(), folder);
    // g_variant_print shows an array of bytes this way only when it ends in a zero.
    EXPECT_EQ(portal.WaitForCall().options.at("current_folder"), "b'" + folder.native() + "'");
    portal.Respond({1, {}});
    ExpectCancel(End(std::move(dialog)));
}

TEST_F(PortalTest, Version3GetsTheStartFolderTooWhereNoProgramCanOpenThere) {
    FakePortal& portal = StartPortal({.version = 3});
    auto dialog = Show(GetDesktopWindow(), programs_.Path());
    EXPECT_TRUE(portal.WaitForCall().options.contains("current_folder"));
    portal.Respond({0, {"file:///picked"}});
    EXPECT_EQ(End(std::move(dialog)).path, L"/picked");
}

TEST_F(PortalTest, Version2CannotPickFoldersAndIsAFailure) {
    FakePortal& portal = StartPortal({.version = 2});
    ExpectFailure(End(Show()));
    EXPECT_FALSE(portal.WasCalled());
}

}  // namespace
