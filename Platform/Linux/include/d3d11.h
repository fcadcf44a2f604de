// Direct3D 11, as far as it has a caller here. Implemented in Platform/Linux/Direct3D over Vulkan.
//
// Interfaces hold the methods that are used, in the order of the system's own; they are not binary compatible with
// Windows. Shaders are SPIR-V whose resources all lie in descriptor set 0: constant buffers b0.. at bindings 0..,
// textures t0.. at 16.., samplers s0.. at 32.., unordered access textures u0.. at 48..; a vertex program's inputs have
// locations in the order of the input layout. Clip space is Direct3D's: y runs up.
#pragma once

#include <d3dcommon.h>
#include <dxgi.h>

#include <cfloat>

constexpr UINT D3D11_SDK_VERSION = 7;
constexpr FLOAT D3D11_FLOAT32_MAX = FLT_MAX;
constexpr UINT D3D11_COMMONSHADER_CONSTANT_BUFFER_API_SLOT_COUNT = 14;
constexpr UINT D3D11_COMMONSHADER_INPUT_RESOURCE_SLOT_COUNT = 128;
constexpr UINT D3D11_COMMONSHADER_SAMPLER_SLOT_COUNT = 16;
constexpr UINT D3D11_DEFAULT_SAMPLE_MASK = 0xffffffff;
constexpr UINT D3D11_APPEND_ALIGNED_ELEMENT = 0xffffffff;
constexpr UINT D3D11_REQ_TEXTURE2D_U_OR_V_DIMENSION = 16384;
constexpr UINT D3D11_SIMULTANEOUS_RENDER_TARGET_COUNT = 8;

using D3D11_PRIMITIVE_TOPOLOGY = D3D_PRIMITIVE_TOPOLOGY;
using D3D11_SRV_DIMENSION = D3D_SRV_DIMENSION;

enum D3D11_CREATE_DEVICE_FLAG {
    D3D11_CREATE_DEVICE_SINGLETHREADED = 0x1,
    D3D11_CREATE_DEVICE_DEBUG = 0x2,
    D3D11_CREATE_DEVICE_BGRA_SUPPORT = 0x20,
};

enum D3D11_BIND_FLAG {
    D3D11_BIND_VERTEX_BUFFER = 0x1,
    D3D11_BIND_INDEX_BUFFER = 0x2,
    D3D11_BIND_CONSTANT_BUFFER = 0x4,
    D3D11_BIND_SHADER_RESOURCE = 0x8,
    D3D11_BIND_RENDER_TARGET = 0x20,
    D3D11_BIND_DEPTH_STENCIL = 0x40,
    D3D11_BIND_UNORDERED_ACCESS = 0x80,
};

enum D3D11_CPU_ACCESS_FLAG {
    D3D11_CPU_ACCESS_WRITE = 0x10000,
    D3D11_CPU_ACCESS_READ = 0x20000,
};

enum D3D11_USAGE {
    D3D11_USAGE_DEFAULT = 0,
    D3D11_USAGE_IMMUTABLE = 1,
    D3D11_USAGE_DYNAMIC = 2,
    D3D11_USAGE_STAGING = 3,
};

enum D3D11_MAP {
    D3D11_MAP_READ = 1,
    D3D11_MAP_WRITE = 2,
    D3D11_MAP_READ_WRITE = 3,
    D3D11_MAP_WRITE_DISCARD = 4,
    D3D11_MAP_WRITE_NO_OVERWRITE = 5,
};

enum D3D11_RESOURCE_DIMENSION {
    D3D11_RESOURCE_DIMENSION_UNKNOWN = 0,
    D3D11_RESOURCE_DIMENSION_BUFFER = 1,
    D3D11_RESOURCE_DIMENSION_TEXTURE2D = 3,
};

enum D3D11_RTV_DIMENSION {
    D3D11_RTV_DIMENSION_UNKNOWN = 0,
    D3D11_RTV_DIMENSION_TEXTURE2D = 4,
};

enum D3D11_UAV_DIMENSION {
    D3D11_UAV_DIMENSION_UNKNOWN = 0,
    D3D11_UAV_DIMENSION_TEXTURE2D = 4,
};

enum D3D11_DEVICE_CONTEXT_TYPE {
    D3D11_DEVICE_CONTEXT_IMMEDIATE = 0,
    D3D11_DEVICE_CONTEXT_DEFERRED = 1,
};

enum D3D11_INPUT_CLASSIFICATION {
    D3D11_INPUT_PER_VERTEX_DATA = 0,
    D3D11_INPUT_PER_INSTANCE_DATA = 1,
};

enum D3D11_FILTER {
    D3D11_FILTER_MIN_MAG_MIP_POINT = 0x0,
    D3D11_FILTER_MIN_MAG_LINEAR_MIP_POINT = 0x14,
    D3D11_FILTER_MIN_MAG_MIP_LINEAR = 0x15,
};

enum D3D11_TEXTURE_ADDRESS_MODE {
    D3D11_TEXTURE_ADDRESS_WRAP = 1,
    D3D11_TEXTURE_ADDRESS_MIRROR = 2,
    D3D11_TEXTURE_ADDRESS_CLAMP = 3,
    D3D11_TEXTURE_ADDRESS_BORDER = 4,
};

enum D3D11_COMPARISON_FUNC {
    D3D11_COMPARISON_NEVER = 1,
    D3D11_COMPARISON_LESS = 2,
    D3D11_COMPARISON_EQUAL = 3,
    D3D11_COMPARISON_LESS_EQUAL = 4,
    D3D11_COMPARISON_GREATER = 5,
    D3D11_COMPARISON_NOT_EQUAL = 6,
    D3D11_COMPARISON_GREATER_EQUAL = 7,
    D3D11_COMPARISON_ALWAYS = 8,
};

enum D3D11_FILL_MODE {
    D3D11_FILL_WIREFRAME = 2,
    D3D11_FILL_SOLID = 3,
};

enum D3D11_CULL_MODE {
    D3D11_CULL_NONE = 1,
    D3D11_CULL_FRONT = 2,
    D3D11_CULL_BACK = 3,
};

enum D3D11_BLEND {
    D3D11_BLEND_ZERO = 1,
    D3D11_BLEND_ONE = 2,
    D3D11_BLEND_SRC_COLOR = 3,
    D3D11_BLEND_INV_SRC_COLOR = 4,
    D3D11_BLEND_SRC_ALPHA = 5,
    D3D11_BLEND_INV_SRC_ALPHA = 6,
    D3D11_BLEND_DEST_ALPHA = 7,
    D3D11_BLEND_INV_DEST_ALPHA = 8,
    D3D11_BLEND_DEST_COLOR = 9,
    D3D11_BLEND_INV_DEST_COLOR = 10,
};

enum D3D11_BLEND_OP {
    D3D11_BLEND_OP_ADD = 1,
};

enum D3D11_COLOR_WRITE_ENABLE {
    D3D11_COLOR_WRITE_ENABLE_RED = 1,
    D3D11_COLOR_WRITE_ENABLE_GREEN = 2,
    D3D11_COLOR_WRITE_ENABLE_BLUE = 4,
    D3D11_COLOR_WRITE_ENABLE_ALPHA = 8,
    D3D11_COLOR_WRITE_ENABLE_ALL = 15,
};

enum D3D11_DEPTH_WRITE_MASK {
    D3D11_DEPTH_WRITE_MASK_ZERO = 0,
    D3D11_DEPTH_WRITE_MASK_ALL = 1,
};

enum D3D11_STENCIL_OP {
    D3D11_STENCIL_OP_KEEP = 1,
};

struct D3D11_BOX {
    UINT left;
    UINT top;
    UINT front;
    UINT right;
    UINT bottom;
    UINT back;
};

struct D3D11_VIEWPORT {
    FLOAT TopLeftX;
    FLOAT TopLeftY;
    FLOAT Width;
    FLOAT Height;
    FLOAT MinDepth;
    FLOAT MaxDepth;
};

struct D3D11_SUBRESOURCE_DATA {
    const void* pSysMem;
    UINT SysMemPitch;
    UINT SysMemSlicePitch;
};

struct D3D11_MAPPED_SUBRESOURCE {
    void* pData;
    UINT RowPitch;
    UINT DepthPitch;
};

struct D3D11_BUFFER_DESC {
    UINT ByteWidth;
    D3D11_USAGE Usage;
    UINT BindFlags;
    UINT CPUAccessFlags;
    UINT MiscFlags;
    UINT StructureByteStride;
};

struct D3D11_TEXTURE2D_DESC {
    UINT Width;
    UINT Height;
    UINT MipLevels;
    UINT ArraySize;
    DXGI_FORMAT Format;
    DXGI_SAMPLE_DESC SampleDesc;
    D3D11_USAGE Usage;
    UINT BindFlags;
    UINT CPUAccessFlags;
    UINT MiscFlags;
};

struct D3D11_TEX2D_RTV {
    UINT MipSlice;
};

struct D3D11_TEX2D_SRV {
    UINT MostDetailedMip;
    UINT MipLevels;
};

struct D3D11_TEX2D_UAV {
    UINT MipSlice;
};

struct D3D11_RENDER_TARGET_VIEW_DESC {
    DXGI_FORMAT Format;
    D3D11_RTV_DIMENSION ViewDimension;
    union {
        D3D11_TEX2D_RTV Texture2D;
    };
};

struct D3D11_SHADER_RESOURCE_VIEW_DESC {
    DXGI_FORMAT Format;
    D3D11_SRV_DIMENSION ViewDimension;
    union {
        D3D11_TEX2D_SRV Texture2D;
    };
};

struct D3D11_UNORDERED_ACCESS_VIEW_DESC {
    DXGI_FORMAT Format;
    D3D11_UAV_DIMENSION ViewDimension;
    union {
        D3D11_TEX2D_UAV Texture2D;
    };
};

struct D3D11_INPUT_ELEMENT_DESC {
    LPCSTR SemanticName;
    UINT SemanticIndex;
    DXGI_FORMAT Format;
    UINT InputSlot;
    UINT AlignedByteOffset;
    D3D11_INPUT_CLASSIFICATION InputSlotClass;
    UINT InstanceDataStepRate;
};

struct D3D11_SAMPLER_DESC {
    D3D11_FILTER Filter;
    D3D11_TEXTURE_ADDRESS_MODE AddressU;
    D3D11_TEXTURE_ADDRESS_MODE AddressV;
    D3D11_TEXTURE_ADDRESS_MODE AddressW;
    FLOAT MipLODBias;
    UINT MaxAnisotropy;
    D3D11_COMPARISON_FUNC ComparisonFunc;
    FLOAT BorderColor[4];
    FLOAT MinLOD;
    FLOAT MaxLOD;
};

struct D3D11_RASTERIZER_DESC {
    D3D11_FILL_MODE FillMode;
    D3D11_CULL_MODE CullMode;
    BOOL FrontCounterClockwise;
    INT DepthBias;
    FLOAT DepthBiasClamp;
    FLOAT SlopeScaledDepthBias;
    BOOL DepthClipEnable;
    BOOL ScissorEnable;
    BOOL MultisampleEnable;
    BOOL AntialiasedLineEnable;
};

struct D3D11_RENDER_TARGET_BLEND_DESC {
    BOOL BlendEnable;
    D3D11_BLEND SrcBlend;
    D3D11_BLEND DestBlend;
    D3D11_BLEND_OP BlendOp;
    D3D11_BLEND SrcBlendAlpha;
    D3D11_BLEND DestBlendAlpha;
    D3D11_BLEND_OP BlendOpAlpha;
    UINT8 RenderTargetWriteMask;
};

struct D3D11_BLEND_DESC {
    BOOL AlphaToCoverageEnable;
    BOOL IndependentBlendEnable;
    D3D11_RENDER_TARGET_BLEND_DESC RenderTarget[8];
};

struct D3D11_DEPTH_STENCILOP_DESC {
    D3D11_STENCIL_OP StencilFailOp;
    D3D11_STENCIL_OP StencilDepthFailOp;
    D3D11_STENCIL_OP StencilPassOp;
    D3D11_COMPARISON_FUNC StencilFunc;
};

struct D3D11_DEPTH_STENCIL_DESC {
    BOOL DepthEnable;
    D3D11_DEPTH_WRITE_MASK DepthWriteMask;
    D3D11_COMPARISON_FUNC DepthFunc;
    BOOL StencilEnable;
    UINT8 StencilReadMask;
    UINT8 StencilWriteMask;
    D3D11_DEPTH_STENCILOP_DESC FrontFace;
    D3D11_DEPTH_STENCILOP_DESC BackFace;
};

struct ID3D11Device;
struct ID3D11DeviceContext;

/// `GetX(X**)` methods hand out a reference that the caller releases.
struct ID3D11DeviceChild : public IUnknown {
    virtual void STDMETHODCALLTYPE GetDevice(ID3D11Device** ppDevice) = 0;
};
VELORINTH_DECLARE_IID(ID3D11DeviceChild, 0x1841e5c8, 0x16b0, 0x489b, 0xbc, 0xc8, 0x44, 0xcf, 0xb0, 0xd5, 0xde, 0xae);

struct ID3D11DepthStencilState : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11DepthStencilState, 0x03823efb, 0x8d8f, 0x4e1c, 0x9a, 0xa2, 0xf6, 0x4b, 0xb2, 0xcb, 0xfd,
                      0xf1);

struct ID3D11BlendState : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11BlendState, 0x75b68faa, 0x347d, 0x4159, 0x8f, 0x45, 0xa0, 0x64, 0x0f, 0x01, 0xcd, 0x9a);

struct ID3D11RasterizerState : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11RasterizerState, 0x9bb4ab81, 0xab1a, 0x4d8f, 0xb5, 0x06, 0xfc, 0x04, 0x20, 0x0b, 0x6e,
                      0xe7);

struct ID3D11Resource : public ID3D11DeviceChild {
    virtual void STDMETHODCALLTYPE GetType(D3D11_RESOURCE_DIMENSION* pResourceDimension) = 0;
};
VELORINTH_DECLARE_IID(ID3D11Resource, 0xdc8e63f3, 0xd12b, 0x4952, 0xb4, 0x7b, 0x5e, 0x45, 0x02, 0x6a, 0x86, 0x2d);

struct ID3D11Buffer : public ID3D11Resource {
    virtual void STDMETHODCALLTYPE GetDesc(D3D11_BUFFER_DESC* pDesc) = 0;
};
VELORINTH_DECLARE_IID(ID3D11Buffer, 0x48570b85, 0xd1ee, 0x4fcd, 0xa2, 0x50, 0xeb, 0x35, 0x07, 0x22, 0xb0, 0x37);

struct ID3D11Texture2D : public ID3D11Resource {
    virtual void STDMETHODCALLTYPE GetDesc(D3D11_TEXTURE2D_DESC* pDesc) = 0;
};
VELORINTH_DECLARE_IID(ID3D11Texture2D, 0x6f15aaf2, 0xd208, 0x4e89, 0x9a, 0xb4, 0x48, 0x95, 0x35, 0xd3, 0x4f, 0x9c);

struct ID3D11View : public ID3D11DeviceChild {
    virtual void STDMETHODCALLTYPE GetResource(ID3D11Resource** ppResource) = 0;
};
VELORINTH_DECLARE_IID(ID3D11View, 0x839d1216, 0xbb2e, 0x412b, 0xb7, 0xf4, 0xa9, 0xdb, 0xeb, 0xe0, 0x8e, 0xd1);

struct ID3D11ShaderResourceView : public ID3D11View {};
VELORINTH_DECLARE_IID(ID3D11ShaderResourceView, 0xb0e06fe0, 0x8192, 0x4e1a, 0xb1, 0xca, 0x36, 0xd7, 0x41, 0x47, 0x10,
                      0xb2);

struct ID3D11RenderTargetView : public ID3D11View {};
VELORINTH_DECLARE_IID(ID3D11RenderTargetView, 0xdfdba067, 0x0b8d, 0x4865, 0x87, 0x5b, 0xd7, 0xb4, 0x51, 0x6c, 0xc1,
                      0x64);

struct ID3D11DepthStencilView : public ID3D11View {};
VELORINTH_DECLARE_IID(ID3D11DepthStencilView, 0x9fdac92a, 0x1876, 0x48c3, 0xaf, 0xad, 0x25, 0xb9, 0x4f, 0x84, 0xa9,
                      0xb6);

struct ID3D11UnorderedAccessView : public ID3D11View {};
VELORINTH_DECLARE_IID(ID3D11UnorderedAccessView, 0x28acf509, 0x7f5c, 0x48f6, 0x86, 0x11, 0xf3, 0x16, 0x01, 0x0a, 0x63,
                      0x80);

struct ID3D11VertexShader : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11VertexShader, 0x3b301d64, 0xd678, 0x4289, 0x88, 0x97, 0x22, 0xf8, 0x92, 0x8b, 0x72, 0xf3);

struct ID3D11PixelShader : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11PixelShader, 0xea82e40d, 0x51dc, 0x4f33, 0x93, 0xd4, 0xdb, 0x7c, 0x91, 0x25, 0xae, 0x8c);

struct ID3D11ComputeShader : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11ComputeShader, 0x4f5b196e, 0xc2bd, 0x495e, 0xbd, 0x01, 0x1f, 0xde, 0xd3, 0x8e, 0x49, 0x69);

struct ID3D11InputLayout : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11InputLayout, 0xe4819ddc, 0x4cf0, 0x4025, 0xbd, 0x26, 0x5d, 0xe8, 0x2a, 0x3e, 0x07, 0xb7);

struct ID3D11SamplerState : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11SamplerState, 0xda6fea51, 0x564c, 0x4487, 0x98, 0x10, 0xf0, 0xd0, 0xf9, 0xb4, 0xe3, 0xa5);

struct ID3D11ClassInstance : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11ClassInstance, 0xa6cd7faa, 0xb0b7, 0x4a2f, 0x94, 0x36, 0x86, 0x62, 0xa6, 0x57, 0x97, 0xcb);

struct ID3D11ClassLinkage : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11ClassLinkage, 0xddf57cba, 0x9543, 0x46e4, 0xa1, 0x2b, 0xf2, 0x07, 0xa0, 0xfe, 0x7f, 0xed);

struct ID3D11CommandList : public ID3D11DeviceChild {};
VELORINTH_DECLARE_IID(ID3D11CommandList, 0xa24bc4d1, 0x769e, 0x43f7, 0x80, 0x13, 0x98, 0xff, 0x56, 0x6c, 0x18, 0xe2);

/// Takes commands: the immediate context plays them on the device, a deferred one records them into a command list.
/// A deferred context belongs to one thread at a time.
struct ID3D11DeviceContext : public ID3D11DeviceChild {
    virtual void STDMETHODCALLTYPE VSSetConstantBuffers(UINT StartSlot, UINT NumBuffers,
                                                        ID3D11Buffer* const* ppConstantBuffers) = 0;
    virtual void STDMETHODCALLTYPE PSSetShaderResources(UINT StartSlot, UINT NumViews,
                                                        ID3D11ShaderResourceView* const* ppShaderResourceViews) = 0;
    virtual void STDMETHODCALLTYPE PSSetShader(ID3D11PixelShader* pPixelShader,
                                               ID3D11ClassInstance* const* ppClassInstances,
                                               UINT NumClassInstances) = 0;
    virtual void STDMETHODCALLTYPE PSSetSamplers(UINT StartSlot, UINT NumSamplers,
                                                 ID3D11SamplerState* const* ppSamplers) = 0;
    virtual void STDMETHODCALLTYPE VSSetShader(ID3D11VertexShader* pVertexShader,
                                               ID3D11ClassInstance* const* ppClassInstances,
                                               UINT NumClassInstances) = 0;
    virtual void STDMETHODCALLTYPE Draw(UINT VertexCount, UINT StartVertexLocation) = 0;
    /// D3D11_MAP_READ of a staging texture waits until the device has finished what writes it (immediate context only);
    /// D3D11_MAP_WRITE_DISCARD gives fresh memory of a dynamic buffer. `Subresource` is 0.
    virtual HRESULT STDMETHODCALLTYPE Map(ID3D11Resource* pResource, UINT Subresource, D3D11_MAP MapType, UINT MapFlags,
                                          D3D11_MAPPED_SUBRESOURCE* pMappedResource) = 0;
    virtual void STDMETHODCALLTYPE Unmap(ID3D11Resource* pResource, UINT Subresource) = 0;
    virtual void STDMETHODCALLTYPE PSSetConstantBuffers(UINT StartSlot, UINT NumBuffers,
                                                        ID3D11Buffer* const* ppConstantBuffers) = 0;
    virtual void STDMETHODCALLTYPE IASetInputLayout(ID3D11InputLayout* pInputLayout) = 0;
    virtual void STDMETHODCALLTYPE IASetVertexBuffers(UINT StartSlot, UINT NumBuffers,
                                                      ID3D11Buffer* const* ppVertexBuffers, const UINT* pStrides,
                                                      const UINT* pOffsets) = 0;
    virtual void STDMETHODCALLTYPE IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY Topology) = 0;
    virtual void STDMETHODCALLTYPE OMSetRenderTargets(UINT NumViews, ID3D11RenderTargetView* const* ppRenderTargetViews,
                                                      ID3D11DepthStencilView* pDepthStencilView) = 0;
    virtual void STDMETHODCALLTYPE OMSetBlendState(ID3D11BlendState* pBlendState, const FLOAT BlendFactor[4],
                                                   UINT SampleMask) = 0;
    virtual void STDMETHODCALLTYPE OMSetDepthStencilState(ID3D11DepthStencilState* pDepthStencilState,
                                                          UINT StencilRef) = 0;
    virtual void STDMETHODCALLTYPE Dispatch(UINT ThreadGroupCountX, UINT ThreadGroupCountY, UINT ThreadGroupCountZ) = 0;
    virtual void STDMETHODCALLTYPE RSSetState(ID3D11RasterizerState* pRasterizerState) = 0;
    virtual void STDMETHODCALLTYPE RSSetViewports(UINT NumViewports, const D3D11_VIEWPORT* pViewports) = 0;
    virtual void STDMETHODCALLTYPE CopySubresourceRegion(ID3D11Resource* pDstResource, UINT DstSubresource, UINT DstX,
                                                         UINT DstY, UINT DstZ, ID3D11Resource* pSrcResource,
                                                         UINT SrcSubresource, const D3D11_BOX* pSrcBox) = 0;
    virtual void STDMETHODCALLTYPE CopyResource(ID3D11Resource* pDstResource, ID3D11Resource* pSrcResource) = 0;
    virtual void STDMETHODCALLTYPE ClearRenderTargetView(ID3D11RenderTargetView* pRenderTargetView,
                                                         const FLOAT ColorRGBA[4]) = 0;
    /// On the immediate context only. With `RestoreContextState` FALSE the context's state is the default one after.
    virtual void STDMETHODCALLTYPE ExecuteCommandList(ID3D11CommandList* pCommandList, BOOL RestoreContextState) = 0;
    virtual void STDMETHODCALLTYPE CSSetShaderResources(UINT StartSlot, UINT NumViews,
                                                        ID3D11ShaderResourceView* const* ppShaderResourceViews) = 0;
    virtual void STDMETHODCALLTYPE CSSetUnorderedAccessViews(UINT StartSlot, UINT NumUAVs,
                                                             ID3D11UnorderedAccessView* const* ppUnorderedAccessViews,
                                                             const UINT* pUAVInitialCounts) = 0;
    virtual void STDMETHODCALLTYPE CSSetShader(ID3D11ComputeShader* pComputeShader,
                                               ID3D11ClassInstance* const* ppClassInstances,
                                               UINT NumClassInstances) = 0;
    virtual void STDMETHODCALLTYPE CSSetSamplers(UINT StartSlot, UINT NumSamplers,
                                                 ID3D11SamplerState* const* ppSamplers) = 0;
    virtual void STDMETHODCALLTYPE CSSetConstantBuffers(UINT StartSlot, UINT NumBuffers,
                                                        ID3D11Buffer* const* ppConstantBuffers) = 0;
    virtual void STDMETHODCALLTYPE ClearState() = 0;
    virtual void STDMETHODCALLTYPE Flush() = 0;
    virtual D3D11_DEVICE_CONTEXT_TYPE STDMETHODCALLTYPE GetType() = 0;
    /// On a deferred context only: DXGI_ERROR_INVALID_CALL on the immediate one.
    virtual HRESULT STDMETHODCALLTYPE FinishCommandList(BOOL RestoreDeferredContextState,
                                                        ID3D11CommandList** ppCommandList) = 0;
};
VELORINTH_DECLARE_IID(ID3D11DeviceContext, 0xc0bfa96c, 0xe089, 0x44fb, 0x8e, 0xaf, 0x26, 0xf8, 0x79, 0x61, 0x90, 0xda);

/// Makes objects. Any thread. A null out pointer asks only whether the arguments are good (S_FALSE).
struct ID3D11Device : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateBuffer(const D3D11_BUFFER_DESC* pDesc,
                                                   const D3D11_SUBRESOURCE_DATA* pInitialData,
                                                   ID3D11Buffer** ppBuffer) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTexture2D(const D3D11_TEXTURE2D_DESC* pDesc,
                                                      const D3D11_SUBRESOURCE_DATA* pInitialData,
                                                      ID3D11Texture2D** ppTexture2D) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateShaderResourceView(ID3D11Resource* pResource,
                                                               const D3D11_SHADER_RESOURCE_VIEW_DESC* pDesc,
                                                               ID3D11ShaderResourceView** ppSRView) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateUnorderedAccessView(ID3D11Resource* pResource,
                                                                const D3D11_UNORDERED_ACCESS_VIEW_DESC* pDesc,
                                                                ID3D11UnorderedAccessView** ppUAView) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRenderTargetView(ID3D11Resource* pResource,
                                                             const D3D11_RENDER_TARGET_VIEW_DESC* pDesc,
                                                             ID3D11RenderTargetView** ppRTView) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* pInputElementDescs,
                                                        UINT NumElements, const void* pShaderBytecodeWithInputSignature,
                                                        SIZE_T BytecodeLength, ID3D11InputLayout** ppInputLayout) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateVertexShader(const void* pShaderBytecode, SIZE_T BytecodeLength,
                                                         ID3D11ClassLinkage* pClassLinkage,
                                                         ID3D11VertexShader** ppVertexShader) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePixelShader(const void* pShaderBytecode, SIZE_T BytecodeLength,
                                                        ID3D11ClassLinkage* pClassLinkage,
                                                        ID3D11PixelShader** ppPixelShader) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateComputeShader(const void* pShaderBytecode, SIZE_T BytecodeLength,
                                                          ID3D11ClassLinkage* pClassLinkage,
                                                          ID3D11ComputeShader** ppComputeShader) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBlendState(const D3D11_BLEND_DESC* pBlendStateDesc,
                                                       ID3D11BlendState** ppBlendState) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* pDepthStencilDesc,
                                                              ID3D11DepthStencilState** ppDepthStencilState) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRasterizerState(const D3D11_RASTERIZER_DESC* pRasterizerDesc,
                                                            ID3D11RasterizerState** ppRasterizerState) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateSamplerState(const D3D11_SAMPLER_DESC* pSamplerDesc,
                                                         ID3D11SamplerState** ppSamplerState) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDeferredContext(UINT ContextFlags,
                                                            ID3D11DeviceContext** ppDeferredContext) = 0;
    virtual D3D_FEATURE_LEVEL STDMETHODCALLTYPE GetFeatureLevel() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDeviceRemovedReason() = 0;
    virtual void STDMETHODCALLTYPE GetImmediateContext(ID3D11DeviceContext** ppImmediateContext) = 0;
};
VELORINTH_DECLARE_IID(ID3D11Device, 0xdb6f6ddb, 0xac77, 0x4e88, 0x82, 0x53, 0x81, 0x9d, 0xf9, 0xbb, 0xf1, 0x40);

/// Makes a device on the machine's best Vulkan driver: hardware first, a software one otherwise. `pAdapter` and
/// `Software` are null. DXGI_ERROR_UNSUPPORTED, and a line on standard error that says what to install, when there is
/// no usable driver. Any thread.
HRESULT WINAPI D3D11CreateDevice(IDXGIAdapter* pAdapter, D3D_DRIVER_TYPE DriverType, HMODULE Software, UINT Flags,
                                 const D3D_FEATURE_LEVEL* pFeatureLevels, UINT FeatureLevels, UINT SDKVersion,
                                 ID3D11Device** ppDevice, D3D_FEATURE_LEVEL* pFeatureLevel,
                                 ID3D11DeviceContext** ppImmediateContext) noexcept;
