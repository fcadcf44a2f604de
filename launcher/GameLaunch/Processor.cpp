#include "launcher/GameLaunch/DriverInstall.h"

#include <intrin.h>

namespace GameLaunch {

bool HasSse41() {
    int registers[4] = {};  // EAX, EBX, ECX, EDX
    __cpuidex(registers, 1, 0);
    return (static_cast<unsigned>(registers[2]) >> 19U & 1U) != 0;
}

}  // namespace GameLaunch
