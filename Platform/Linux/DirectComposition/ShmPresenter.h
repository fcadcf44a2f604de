// Shows a window's layers by composing them in memory that the X server reads.
#pragma once

#include "Platform/Linux/Base/PutOffWork.h"
#include "Platform/Linux/Direct3D/Presentable.h"
#include "Platform/Linux/DirectComposition/Presenter.h"
#include "Platform/Linux/DirectComposition/SharedImage.h"
#include "Platform/Linux/Window/NativeWindow.h"

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Platform::DirectComposition {

/// On a software device the pixels lie in the processor's memory anyway and are composed from where they are, so this
/// is the quickest way to the screen there; on a hardware one each frame is read back once.
///
/// There the bottom layer, opaque and as large as the window but for its rim, is read straight into the picture, and of
/// the layers above it copies are kept. The runs of pixels that show anything are remembered, so that a frame that
/// stands still costs nothing to read and little to lay over.
///
/// Drawing takes a frame's time there. So a picture that came too early for input that has come meanwhile is given up,
/// and the hand gets its answer sooner, unless that answer doesn't come: what was given up is shown when the thread
/// would sleep.
class ShmPresenter final : public Presenter {
public:
    ShmPresenter(HWND window, NativeWindowView view);
    ~ShmPresenter() override;

    HRESULT Show(const std::vector<Layer>& layers) override;

private:
    /// What is kept of a content between two pictures.
    struct Kept {
        Microsoft::WRL::ComPtr<Direct3D::IPresentable> content;
        std::shared_ptr<Direct3D::Texture> texture;  ///< Owns the pixels of `view`, where they are read in place;
        std::vector<std::uint32_t> memory;           ///< elsewhere this does.
        Pixels view;
        std::vector<Span> spans;
        bool used = false;
    };

    enum class Outdated : bool { GiveUp, Show };
    HRESULT Show(const std::vector<Layer>& layers, Outdated outdated);
    bool GiveUpIfOutdated(const std::vector<Layer>& layers);
    SIZE PictureSize(const std::vector<Layer>& layers, SIZE window);
    bool WouldLieWithinFormer(SIZE size, SIZE window) const;
    Kept& Keep(Direct3D::IPresentable* content);
    void DropUnused();
    void Compose(const Pixels& target, const std::vector<Layer>& layers);
    void ComposeLayer(const Pixels& target, Kept& kept, const D2D_MATRIX_3X2_F& placement, bool isBottom);
    void Refresh(Kept& kept, const std::shared_ptr<Direct3D::Texture>& texture);
    void MarkShown(const std::vector<Layer>& layers);

    /// What the window's own thread reaches too, through listeners whose last call may outlive the presenter.
    struct Screen {
        explicit Screen(NativeWindowView nativeView);
        ~Screen();
        Screen(const Screen&) = delete;
        Screen& operator=(const Screen&) = delete;

        /// The image that was not put last, in this size; its former picture has been read. Null without memory.
        SharedImage* NextImage(SIZE size);
        void PutNext();
        void PutAgain();
        void SetPace(bool isSeen);
        void Hurry();
        void Pace(Direct3D::IPresentable* content);
        void LeaveAlone(const Direct3D::IPresentable* content);

        const NativeWindowView view;
        const xcb_gcontext_t context;

        std::mutex mutex;  ///< Guards all below.
        std::array<std::unique_ptr<SharedImage>, 2> images;
        std::size_t current = 0;  ///< The image that was put last.
        std::vector<Microsoft::WRL::ComPtr<Direct3D::IPresentable>> paced;
        bool seen = true;
    };

    /// A tree whose newest picture was given up.
    struct GivenUp {
        std::vector<Layer> layers;
        std::vector<Microsoft::WRL::ComPtr<IUnknown>> contents;  ///< Of the layers.
    };

    HWND window_;
    std::vector<std::unique_ptr<Kept>> kept_;
    std::vector<const IUnknown*> filling_;  ///< The contents that filled the window exactly when they last did.
    SIZE former_{0, 0};                     ///< Of the picture that was put last.
    bool hasShown_ = false;  ///< A tree without a single picture, as it is at a window's start, shows nothing.
    std::shared_ptr<Screen> screen_;
    std::uint64_t seenListener_ = 0;
    std::uint64_t exposedListener_ = 0;
    std::uint64_t inputListener_ = 0;
    GivenUp givenUp_;
    std::optional<PutOffWork> toShow_;  ///< Shows `givenUp_`.
};

}  // namespace Platform::DirectComposition
