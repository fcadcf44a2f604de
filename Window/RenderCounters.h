#pragma once

#include <atomic>
#include <cstdint>

namespace Tamborel {

/// What a window's render thread has done since its start, for diagnosis. Written by the render thread, read by any;
/// each number stands for itself.
struct RenderCounters {
    std::atomic<std::uint64_t> Turns{0};         ///< Calls of RenderFrame that went through.
    std::atomic<std::uint64_t> IdleTurns{0};     ///< Of these, the ones without a pass or a commit.
    std::atomic<std::uint64_t> FramePasses{0};   ///< Passes of the frame surface.
    std::atomic<std::uint64_t> ClientPasses{0};  ///< Passes of the client surface.
    std::atomic<std::uint64_t> Presents{0};      ///< Presents of both surfaces.
    std::atomic<std::uint64_t> Commits{0};       ///< Composition commits, the one of the set-up included.
    std::atomic<std::uint64_t> Resizes{0};       ///< Geometries taken over.
    std::atomic<std::uint64_t> ReadBacks{0};     ///< Read-backs whose word was read.
    std::atomic<std::uint64_t> InputEvents{0};   ///< Events taken from the ring.
};

}  // namespace Tamborel
