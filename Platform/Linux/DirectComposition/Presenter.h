// How a committed picture reaches its window.
#pragma once

#include "Platform/Linux/DirectComposition/Visual.h"

#include <memory>
#include <vector>

namespace Platform::DirectComposition {

/// Shows pictures in one window. Used, and ended, on the thread that commits.
class Presenter {
public:
    Presenter() = default;
    virtual ~Presenter() = default;
    Presenter(const Presenter&) = delete;
    Presenter& operator=(const Presenter&) = delete;

    /// Composes the layers, back to front, and shows the result in one step. Where no layer has pixels the window is
    /// black, but for contents that filled it before its size changed: around those it stays as it is. The contents'
    /// new buffers count as shown afterwards, even if the window couldn't show them. A picture that is outdated may be
    /// left aside until the thread sleeps without waiting for the next one.
    virtual HRESULT Show(const std::vector<Layer>& layers) = 0;
};

/// The presenter for a window; null if the window doesn't exist.
std::unique_ptr<Presenter> MakePresenter(HWND window);

}  // namespace Platform::DirectComposition
