// A window on a real display with a presenter, and contents to show in it.
#pragma once

#include "Picture.h"
#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Presentable.h"
#include "Platform/Linux/DirectComposition/ShmPresenter.h"
#include "WindowFixture.h"

#include <wrl/client.h>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

/// Stands for a swap chain whose pictures a test sets, and writes down what a presenter does with it.
class TestContent final : public Platform::ComObject<Platform::Direct3D::IPresentable> {
public:
    TestContent(std::shared_ptr<Platform::Direct3D::GraphicsDevice> graphics, DXGI_ALPHA_MODE alphaMode)
        : ComObject("TestContent"), graphics_(std::move(graphics)), alphaMode_(alphaMode) {}

    /// Presents a picture.
    void Set(const Picture& picture);
    void Set(std::shared_ptr<Platform::Direct3D::Texture> texture) {
        texture_ = std::move(texture);
        isNew_ = true;
    }
    /// Replaces the pixels behind the presenter's back: no new picture is told of.
    void SetSilently(const Picture& picture);

    const std::shared_ptr<Platform::Direct3D::GraphicsDevice>& Graphics() override { return graphics_; }
    std::shared_ptr<Platform::Direct3D::Texture> Presented() override { return texture_; }
    DXGI_ALPHA_MODE AlphaMode() override { return alphaMode_; }
    bool HasNewPicture() override { return isNew_; }
    void Shown() override {
        isNew_ = false;
        ++shown;
    }
    bool IsOutdated() override { return isOutdated && isOutdated(); }
    void GivenUp() override { ++givenUp; }
    const Platform::HandleObject* Waitable() override { return waitable.get(); }
    void SetPeriod(std::chrono::nanoseconds period) override { periods.push_back(period); }
    void Hurry() override { ++hurried; }

    std::function<bool()> isOutdated;
    std::shared_ptr<Platform::HandleObject> waitable;
    int givenUp = 0;
    int shown = 0;
    int hurried = 0;
    std::vector<std::chrono::nanoseconds> periods;

private:
    std::shared_ptr<Platform::Direct3D::GraphicsDevice> graphics_;
    DXGI_ALPHA_MODE alphaMode_;
    std::shared_ptr<Platform::Direct3D::Texture> texture_;
    bool isNew_ = false;
};

using Content = Microsoft::WRL::ComPtr<TestContent>;

/// Vulkan's validation layer looks on: a message of its fails the test.
class PresenterTest : public WindowTest {
protected:
    static constexpr int windowWidth = 400;  // as WindowTest makes it
    static constexpr int windowHeight = 300;

    void SetUp() override;
    void TearDown() override;

    Content MakeContent(DXGI_ALPHA_MODE alphaMode, const Picture& picture);
    Content Opaque(const Picture& picture) { return MakeContent(DXGI_ALPHA_MODE_IGNORE, picture); }
    Content Translucent(const Picture& picture) { return MakeContent(DXGI_ALPHA_MODE_PREMULTIPLIED, picture); }

    /// Makes and shows the window, with its presenter.
    void MakeWindow();
    void MakePresenter();

    struct PlacedContent {
        const Content& content;
        float x = 0;
        float y = 0;
    };
    /// Back to front.
    HRESULT Show(const std::vector<PlacedContent>& contents);

    /// What the window shows at the moment; all of it must lie on the screen.
    Picture Shown() const { return ShownPart(0, 0, windowWidth, windowHeight); }
    /// Paints over the window, as nobody should.
    void PaintWindow(std::uint32_t pixel) const;
    Picture ShownPart(int x, int y, int width, int height) const;

    std::shared_ptr<Platform::Direct3D::GraphicsDevice> graphics_;
    std::unique_ptr<Platform::DirectComposition::ShmPresenter> presenter_;

private:
    std::uint64_t messagesBefore_ = 0;
};

/// A window of somebody else's on top of all others, white.
class Cover {
public:
    Cover(const TestDisplay& display, int x, int y, int width, int height);
    ~Cover() { Remove(); }
    Cover(const Cover&) = delete;
    Cover& operator=(const Cover&) = delete;
    void Remove();

private:
    const TestDisplay& display_;
    xcb_window_t window_;
};
