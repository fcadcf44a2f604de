// What travels between a caller, the supervisor and the host inside Wine.

#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"
#include "Platform/Linux/Processes/Supervisor/EngineHost.h"
#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <gtest/gtest.h>

#include <fcntl.h>

using Platform::HostReport;
using Platform::StartRequest;
using Platform::SupervisorReport;
using Platform::Wait;

namespace {

const StartRequest request{
    .image = "/a ü/quake2.exe", .commandLine = u"quake2.exe +set ü \xD800", .folder = "/game\xFF", .showWindow = 1};
const SupervisorReport report{.kind = SupervisorReport::Kind::Failed, .code = 0xC0000005, .explanation = "no ü"};

TEST(SupervisionMessages, ComeBackAsTheyWere) {
    EXPECT_EQ(Platform::DecodeStartRequest(Platform::Encode(request)), request);
    EXPECT_EQ(Platform::DecodeSupervisorReport(Platform::Encode(report)), report);
    EXPECT_EQ(Platform::DecodeStartRequest(Platform::Encode(StartRequest{})), StartRequest{});
}

TEST(SupervisionMessages, TruncatedOrPaddedOnesAreNone) {
    for (const bool isRequest : {true, false}) {
        const std::string bytes = isRequest ? Platform::Encode(request) : Platform::Encode(report);
        const auto decodes = [isRequest](const std::string& text) {
            return isRequest ? Platform::DecodeStartRequest(text).has_value()
                             : Platform::DecodeSupervisorReport(text).has_value();
        };
        for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(decodes(bytes.substr(0, size))) << size;
        EXPECT_FALSE(decodes(bytes + "x"));
    }
    EXPECT_FALSE(Platform::DecodeSupervisorReport(std::string(12, '\0')));
    EXPECT_FALSE(Platform::DecodeSupervisorReport(std::string(12, '\xFF')));
}

TEST(ControlSocket, CarriesDescriptorsThatCloseOnExec) {
    const auto [left, right] = Platform::MakeControlSocket();
    ASSERT_TRUE(left && right);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Platform::FileDescriptor read(ends[0]);
    Platform::FileDescriptor write(ends[1]);
    ASSERT_TRUE(Platform::SendControlMessage(left.Get(), "hello", {write.Get()}));
    write.Reset();
    const auto message = Platform::ReceiveControlMessage(right.Get(), Wait::Yes);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->bytes, "hello");
    ASSERT_EQ(message->descriptors.size(), 1U);
    EXPECT_NE(fcntl(message->descriptors[0].Get(), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(::write(message->descriptors[0].Get(), "x", 1), 1);
    char byte = 0;
    EXPECT_EQ(::read(read.Get(), &byte, 1), 1);
}

TEST(ControlSocket, KeepsTheBoundsOfMessages) {
    const auto [left, right] = Platform::MakeControlSocket();
    ASSERT_TRUE(Platform::SendControlMessage(left.Get(), "one"));
    ASSERT_TRUE(Platform::SendControlMessage(left.Get(), "two"));
    EXPECT_EQ(Platform::ReceiveControlMessage(right.Get(), Wait::Yes)->bytes, "one");
    EXPECT_EQ(Platform::ReceiveControlMessage(right.Get(), Wait::No)->bytes, "two");
    EXPECT_FALSE(Platform::ReceiveControlMessage(right.Get(), Wait::No));
}

TEST(ControlSocket, APeerThatHasGoneIsAnErrorAndNoSignal) {
    auto [left, right] = Platform::MakeControlSocket();
    right.Reset();
    EXPECT_FALSE(Platform::SendControlMessage(left.Get(), "hello"));
    EXPECT_EQ(errno, EPIPE);
    EXPECT_FALSE(Platform::ReceiveControlMessage(left.Get(), Wait::Yes));
}

TEST(ControlSocket, AMessageThatIsTooLongIsRefused) {
    const auto [left, right] = Platform::MakeControlSocket();
    EXPECT_FALSE(Platform::SendControlMessage(left.Get(), std::string(std::size_t{1} << 20, 'x')));
    EXPECT_EQ(errno, EMSGSIZE);
    EXPECT_TRUE(Platform::SendControlMessage(left.Get(), std::string(80'000, 'x')));
    EXPECT_EQ(Platform::ReceiveControlMessage(right.Get(), Wait::Yes)->bytes.size(), 80'000U);
}

TEST(HostReports, AreTakenFromCompleteLinesOnly) {
    std::string text = "engine_host ready\nengine_host exit 3221225477\nengine_host exi";
    const auto reports = Platform::TakeHostReports(text);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].kind, HostReport::Kind::Ready);
    EXPECT_EQ(reports[1].kind, HostReport::Kind::Exit);
    EXPECT_EQ(reports[1].number, 3221225477U);
    EXPECT_EQ(text, "engine_host exi");
}

TEST(HostReports, WhatOthersPrintIsPassedOver) {
    std::string text =
        "wine: updating\n\nengine_host\nengine_host \nengine_host readyx\nxengine_host ready\nengine_host failed\n";
    const auto reports = Platform::TakeHostReports(text);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].kind, HostReport::Kind::Failed);
    EXPECT_EQ(reports[0].number, 0U);
    EXPECT_TRUE(text.empty());
}

}  // namespace
