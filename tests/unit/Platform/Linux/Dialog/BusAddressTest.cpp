#include "Platform/Linux/Dialog/BusAddress.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Base/FileDescriptor.h"
#include "tests/support/GameFiles.h"

#include <optional>
#include <string>

namespace {

using Platform::SessionBusAddress;

struct Variables {
    Variables(std::optional<std::wstring> address, std::optional<std::wstring> folder)
        : address_(L"DBUS_SESSION_BUS_ADDRESS", std::move(address)), folder_(L"XDG_RUNTIME_DIR", std::move(folder)) {}

    ScopedEnvironment address_;
    ScopedEnvironment folder_;
};

void MakeSocket(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const Platform::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

TEST(BusAddressTest, TheVariableCountsAsItIs) {
    const Variables variables(L"unix:path=/run/a;unix:path=/run/b", std::nullopt);
    EXPECT_EQ(SessionBusAddress(), "unix:path=/run/a;unix:path=/run/b");
}

TEST(BusAddressTest, EntriesThatWouldStartABusAreLeftOut) {
    const Variables variables(L"autolaunch:;unix:path=/run/a;unixexec:path=dbus-launch;autolaunch:scope=x",
                              std::nullopt);
    EXPECT_EQ(SessionBusAddress(), "unix:path=/run/a");
}

TEST(BusAddressTest, NothingButAutolaunchIsNoBus) {
    TemporaryFolder runtime;
    MakeSocket(runtime / "bus");
    const Variables variables(L"autolaunch:", Platform::TextFromPath(runtime.Path()));
    EXPECT_EQ(SessionBusAddress(), std::nullopt);
}

TEST(BusAddressTest, WithoutTheVariableTheLoginsSocketCounts) {
    TemporaryFolder runtime;
    MakeSocket(runtime / "bus");
    for (const auto& address : {std::optional<std::wstring>(), std::optional<std::wstring>(L"")}) {
        const Variables variables(address, Platform::TextFromPath(runtime.Path()));
        EXPECT_EQ(SessionBusAddress(), "unix:path=" + (runtime / "bus").native());
    }
}

TEST(BusAddressTest, APlainFileInTheSocketsPlaceIsNoBus) {
    TemporaryFolder runtime;
    WriteBytes(runtime / "bus", "");
    const Variables variables(std::nullopt, Platform::TextFromPath(runtime.Path()));
    EXPECT_EQ(SessionBusAddress(), std::nullopt);
}

TEST(BusAddressTest, WithNeitherThereIsNoBus) {
    const Variables variables(std::nullopt, std::nullopt);
    EXPECT_EQ(SessionBusAddress(), std::nullopt);
}

}  // namespace
