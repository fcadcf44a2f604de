// Plays the blit program or a kind's alone, or the whole renderer, on the real device and reads the picture back as
// floats.
#pragma once

#include "Background/BackgroundRenderer.h"
#include "Background/ShaderConstants.h"
#include "Background/ShaderPrograms.h"
#include "BlitReference.h"

#include <d3d11_4.h>
#include <wrl/client.h>
#include <vector>

/// A picture, first row on top.
struct FloatPicture {
    UINT width = 0;
    UINT height = 0;
    std::vector<std::array<float, 4>> texels;

    const std::array<float, 4>& At(UINT x, UINT y) const { return texels[y * width + x]; }
};

/// A device with the blit's fixed state. Throws std::runtime_error with the call's name where one fails.
class ShaderBench {
public:
    ShaderBench();

    /// The picture of the source's size that the blit makes of `source`.
    FloatPicture Draw(const Tamborel::BlitConstants& constants, const FloatPicture& source);

    /// The next picture of the renderer, on a surface of `width` by `height`.
    FloatPicture Draw(Tamborel::BackgroundRenderer& renderer, const Tamborel::BlitFrameRecord& record, UINT width,
                      UINT height);

    /// The picture of iResolution's size that a pixel program makes with these constants.
    FloatPicture Draw(Tamborel::ShaderBytecode program, const Tamborel::Constants& constants);

    /// What a kind's pixel program draws on a target of any size. Nothing of `constants` is filled in.
    FloatPicture DrawKind(Tamborel::BackgroundKind kind, const Tamborel::Constants& constants, UINT width, UINT height);

    ID3D11Device* Device() const { return device_.Get(); }

private:
    template <class Interface>
    using ComPtr = Microsoft::WRL::ComPtr<Interface>;

    FloatPicture DrawProgram(Tamborel::ShaderBytecode code, const Tamborel::Constants& constants, UINT width,
                             UINT height);

    /// Draws the strip with `program`, which may read `source`, on a target of the size's own.
    FloatPicture DrawStrip(ID3D11PixelShader* program, const void* constants, std::size_t bytes, ID3D11Buffer* buffer,
                           ID3D11ShaderResourceView* source, const FloatPicture& size);
    ComPtr<ID3D11Texture2D> MakeTexture(const FloatPicture& size, D3D11_USAGE usage, UINT bind, UINT access,
                                        const void* texels);
    FloatPicture ReadBack(ID3D11Texture2D* target, const FloatPicture& size);

    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    ComPtr<ID3D11VertexShader> vertexShader_;
    ComPtr<ID3D11PixelShader> pixelShader_;
    ComPtr<ID3D11InputLayout> layout_;
    ComPtr<ID3D11Buffer> vertices_;
    ComPtr<ID3D11Buffer> constants_;
    ComPtr<ID3D11Buffer> kindConstants_;
    ComPtr<ID3D11SamplerState> sampler_;
    ComPtr<ID3D11RasterizerState> rasterizer_;
};

/// Constants as the renderer writes them for a picture of this size.
Tamborel::Constants ConstantsFor(UINT width, UINT height, float seconds, std::int32_t frame = 0, float glow = 0.0F);
