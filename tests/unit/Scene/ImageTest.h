// A fake device to draw assets on, with every call on record.
#pragma once

#include "Core/DeviceManager.h"
#include "Scene/ImageAsset.h"
#include "tests/fakes/FakeDirect2D.h"
#include "tests/fakes/FakeImaging.h"
#include "tests/fakes/GraphicsTest.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Tamborel {

/// A device and its context.
class ImageDevice {
public:
    ImageDevice() {
        device_.Attach(new Fakes::FakeDrawingDevice);
        context_.Attach(new Fakes::FakeDrawingContext(device_.Get()));
    }

    ID2D1DeviceContext5* Target() { return context_.Get(); }

    /// One frame with one picture.
    bool Draw(ImageAsset& asset, const Rect& destination, const Matrix3x2& transform = {}) {
        DrawContext context(context_.Get(), &brushes_, 1.0F);
        context.SetTransform(transform);
        return asset.Draw(context, destination, 0.5F, D2D1_INTERPOLATION_MODE_HIGH_QUALITY_CUBIC);
    }
    BrushCache& Brushes() { return brushes_; }

private:
    Microsoft::WRL::ComPtr<ID2D1Device> device_;
    Microsoft::WRL::ComPtr<ID2D1DeviceContext5> context_;
    BrushCache brushes_;
};

/// Bytes that need no deciphering.
class PlainResource final : public EmbeddedResource {
public:
    explicit PlainResource(std::vector<std::uint8_t> bytes) : EmbeddedResource(nullptr, 0), bytes_(std::move(bytes)) {}

    std::pair<const std::uint8_t*, std::uint64_t> Data() override {
        ++uses;
        return {bytes_.empty() ? nullptr : bytes_.data(), bytes_.size()};
    }

    int uses = 0;

private:
    std::vector<std::uint8_t> bytes_;
};

class ImageAssetTest : public Fakes::GraphicsTest {
protected:
    ImageAssetTest() {
        EXPECT_EQ(DeviceManager::Get().Initialize(), S_OK);
        Fakes::SetPictureSize(40, 20);
        recorder.TakeCalls();
    }
    void TearDown() override {
        DeviceManager::Get().Shutdown();
        GraphicsTest::TearDown();
    }

    static bool IsLoaded(const ImageAsset& asset) { return asset.State()->complete; }
    static std::size_t BytesLeft(ImageAsset& asset) {
        const std::lock_guard lock(asset.State()->lock);
        return asset.State()->bytes.size();
    }
};

}  // namespace Tamborel
