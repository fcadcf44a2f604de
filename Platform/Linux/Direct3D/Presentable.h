// What a compositor asks of a swap chain.
#pragma once

#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Direct3D/Texture.h"

#include <dxgi1_2.h>

#include <chrono>
#include <memory>

namespace Platform::Direct3D {

class GraphicsDevice;

/// A private interface of our swap chains, reached by QueryInterface. Called on the thread that commits.
struct IPresentable : public IUnknown {
    virtual const std::shared_ptr<GraphicsDevice>& Graphics() = 0;

    /// The buffer of the last Present1, which stays the same through ResizeBuffers until the next one; null before the
    /// first.
    virtual std::shared_ptr<Texture> Presented() = 0;

    /// PREMULTIPLIED, or IGNORE for a content without transparency.
    virtual DXGI_ALPHA_MODE AlphaMode() = 0;

    /// Whether there was a Present1 since the last Shown().
    virtual bool HasNewPicture() = 0;

    /// A commit has taken what was presented: the next frame may start one period after the last one did.
    virtual void Shown() = 0;

    /// Whether input has come that what was presented shows nothing of, while a later picture will, as it is when the
    /// frames go on.
    virtual bool IsOutdated() = 0;
    /// A commit has left what was presented aside, though it may still be shown: the next frame may start at once.
    virtual void GivenUp() = 0;
    /// What a wait for the next frame waits for. For comparing.
    virtual const HandleObject* Waitable() = 0;

    /// The time between two frames; 1/60 s at first. A shorter one takes effect on a wait that goes on.
    virtual void SetPeriod(std::chrono::nanoseconds period) = 0;

    /// Input has come: the next two frames may start without waiting for the rest of their period. Any thread.
    virtual void Hurry() = 0;
};

}  // namespace Platform::Direct3D
VELORINTH_DECLARE_IID(Platform::Direct3D::IPresentable, 0x5d0f6f5e, 0x6c1b, 0x4f0e, 0x9a, 0x3d, 0x0b, 0x6e, 0x2f, 0x1c,
                      0x77, 0xd4);
