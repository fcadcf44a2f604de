// The imaging factory.

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Com/ClassRegistry.h"
#include "Platform/Linux/Imaging/Converter.h"
#include "Platform/Linux/Imaging/Decoder.h"
#include "Platform/Linux/Imaging/Stream.h"

#include <wincodec.h>

#include <new>

namespace Platform {

namespace {

/// Keeps nothing, so any thread may use it.
class ImagingFactory final : public ComObject<IWICImagingFactory2, IWICImagingFactory> {
public:
    ImagingFactory() : ComObject("IWICImagingFactory") {}

    // The stream is read to its end at once, whatever the options; each format here has one decoder.
    HRESULT CreateDecoderFromStream(IStream* stream, const GUID*, WICDecodeOptions,
                                    IWICBitmapDecoder** decoder) override {
        if (!decoder) return E_INVALIDARG;
        *decoder = nullptr;
        return stream ? Imaging::MakeDecoder(*stream, decoder) : E_INVALIDARG;
    }
    HRESULT CreateFormatConverter(IWICFormatConverter** converter) override {
        return Make<Imaging::Converter>(converter);
    }
    HRESULT CreateStream(IWICStream** stream) override { return Make<Imaging::Stream>(stream); }

private:
    ~ImagingFactory() override = default;

    template <class Object, class Interface>
    static HRESULT Make(Interface** object) noexcept {
        if (!object) return E_INVALIDARG;
        *object = new (std::nothrow) Object();
        return *object ? S_OK : E_OUTOFMEMORY;
    }
};

HRESULT MakeImagingFactory(REFIID iid, void** object) noexcept {
    auto* const made = new (std::nothrow) ImagingFactory();
    if (!made) return E_OUTOFMEMORY;
    const HRESULT result = made->QueryInterface(iid, object);
    made->Release();
    return result;
}

}  // namespace

}  // namespace Platform

// Named for the linker, which is told to keep it.
extern "C" const Platform::ClassRegistration VelorinthImagingFactoryClass;
const Platform::ClassRegistration VelorinthImagingFactoryClass(CLSID_WICImagingFactory2, Platform::MakeImagingFactory);
