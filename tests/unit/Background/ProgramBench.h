// Plays one pixel program of the background alone, on the real device, and reads the picture back as floats.
#pragma once

#include "Background/ShaderConstants.h"
#include "Background/ShaderPrograms.h"
#include "BlitBench.h"

#include <d3d11_4.h>
#include <wrl/client.h>

/// A device with the strip's fixed state. Throws std::runtime_error with the call's name where one fails.
class ProgramBench {
public:
    ProgramBench();

    /// The picture of iResolution's size that the program makes with these constants, in full floats.
    FloatPicture Draw(Tamborel::ShaderBytecode program, const Tamborel::Constants& constants);

    ID3D11Device* Device() const { return device_.Get(); }

private:
    template <class Interface>
    using ComPtr = Microsoft::WRL::ComPtr<Interface>;

    ComPtr<ID3D11Texture2D> MakeTexture(UINT width, UINT height, D3D11_USAGE usage, UINT bind, UINT access);

    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    ComPtr<ID3D11VertexShader> vertexShader_;
    ComPtr<ID3D11InputLayout> layout_;
    ComPtr<ID3D11Buffer> vertices_;
    ComPtr<ID3D11Buffer> constants_;
    ComPtr<ID3D11RasterizerState> rasterizer_;
};

/// Constants as the renderer writes them for a picture of this size.
Tamborel::Constants ConstantsFor(UINT width, UINT height, float seconds, std::int32_t frame = 0, float glow = 0.0F);
