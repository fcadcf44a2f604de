// Pictures that can be drawn on any Direct2D device.
#pragma once

#include "Core/EmbeddedResource.h"
#include "Scene/DrawContext.h"
#include "Scene/Records.h"

#include <d2d1_3.h>
#include <windows.h>
#include <wrl/client.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace Tamborel {

/// Hash of a device's identity: FNV-1a with 64 bits over its eight bytes in memory order.
struct DeviceIdentityHash {
    std::size_t operator()(std::uint64_t identity) const noexcept;
};

/// An encoded picture, raster or SVG, and what devices have made of it. The device object is made at the first draw on
/// a device; after the first that succeeds the encoded bytes are dropped, so that only a picture built into the program
/// can be drawn on a second device. A picture that can't be had or decoded paints nothing and says nothing; decoding is
/// tried again at each draw as long as there are bytes.
///
/// Creators and loading are free-threaded; drawing belongs to the render thread.
class ImageAsset {
public:
    /// What a load fills in. The thread that reads a file holds it too, so the asset may go meanwhile.
    struct LoadState {
        std::vector<std::uint8_t> bytes;    ///< Encoded; guarded by `lock`. Empty once decoded, or if loading failed.
        std::atomic<bool> complete{false};  ///< Whether loading has ended, well or badly. Publishes `bytes`.
        std::mutex lock;
    };

    /// Starts to read a file on a thread of its own and returns at once. A path that ends in ".svg", in any case, is an
    /// SVG. Raises std::system_error if the thread can't be started.
    static std::shared_ptr<ImageAsset> LoadFromFile(std::wstring path);

    /// Takes encoded bytes.
    static std::shared_ptr<ImageAsset> FromBytes(std::vector<std::uint8_t> bytes, bool isSvg);

    /// Copies a resource of `module` (null: the running program). One that is missing gives an asset that never draws.
    static std::shared_ptr<ImageAsset> FromResource(HMODULE module, const wchar_t* name, const wchar_t* type,
                                                    bool isSvg);

    /// Draws from bytes built into the program, which are deciphered at the first use. `resource` is not owned and
    /// outlives the asset.
    static std::shared_ptr<ImageAsset> FromEmbedded(EmbeddedResource* resource, bool isSvg);

    ImageAsset(const ImageAsset&) = delete;
    ImageAsset& operator=(const ImageAsset&) = delete;

    /// Stretches the picture over `destination`, a rectangle of the context's current transform. Opacity, from 0 to 1,
    /// and interpolation count for raster pictures only. Returns whether anything was painted: false while a file is
    /// being read.
    bool Draw(DrawContext& context, const Rect& destination, float opacity = 1.0F,
              D2D1_INTERPOLATION_MODE interpolation = D2D1_INTERPOLATION_MODE_LINEAR);

    /// The picture's size in device-independent pixels. For an SVG that is the destination of its first draw, whatever
    /// the file says. False, and a size of 0, before the first draw that painted.
    bool GetSize(D2D1_SIZE_F& size);

    /// Whether any device has made something of the picture.
    bool HasDeviceResources();

    /// Lets go of what devices have made. Any thread.
    void ReleaseDeviceResources();

    /// What the bytes are loaded into; empty for a picture built into the program.
    const std::shared_ptr<LoadState>& State() const { return state_; }
    bool IsSvg() const { return isSvg_; }

private:
    /// At most one of the two is set.
    struct DeviceEntry {
        Microsoft::WRL::ComPtr<ID2D1Bitmap> bitmap;
        Microsoft::WRL::ComPtr<ID2D1SvgDocument> document;
    };
    class EncodedBytes;

    ImageAsset(std::shared_ptr<LoadState> state, bool isSvg, EmbeddedResource* embedded);

    DeviceEntry EntryOf(std::uint64_t device);
    void Decode(ID2D1DeviceContext5* target, const Rect& destination, DeviceEntry& made);
    HRESULT MakeDocument(ID2D1DeviceContext5* target, D2D1_SIZE_F viewport, ID2D1SvgDocument** document);
    HRESULT MakeBitmap(ID2D1DeviceContext5* target, ID2D1Bitmap** bitmap);

    std::shared_ptr<LoadState> state_;  // empty for an embedded picture
    bool isSvg_;                        // told, never found out from the bytes
    EmbeddedResource* embedded_;        // not owned; null for other sources
    std::mutex cacheLock_;
    std::unordered_map<std::uint64_t, DeviceEntry, DeviceIdentityHash> deviceCache_;  // guarded by cacheLock_
};

}  // namespace Tamborel
