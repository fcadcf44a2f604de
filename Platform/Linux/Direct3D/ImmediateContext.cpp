#include "Platform/Linux/Direct3D/ImmediateContext.h"

#include "Platform/Linux/Direct3D/PictureOfList.h"

#include <cstdio>

namespace Platform::Direct3D {

namespace {

/// A context's calls have no result: a failure leaves a trace, once for each kind.
void TraceOnce(std::atomic_flag& written, const char* line) noexcept {
    if (!written.test_and_set()) std::fputs(line, stderr);
}

/// Plays one command; the caller holds the device's lock.
struct Visitor {
    Player& player;

    void operator()(const DrawCommand& draw) const { player.Draw(*draw.state, draw.vertexCount, draw.firstVertex); }
    void operator()(const DispatchCommand& dispatch) const {
        player.Dispatch(*dispatch.state, dispatch.x, dispatch.y, dispatch.z);
    }
    void operator()(const ClearCommand& clear) const {
        player.Clear(clear.target->Target().Image(), clear.color.data());
    }
    void operator()(const CopyCommand& copy) const {
        player.Copy(*copy.target.Get(), copy.x, copy.y, *copy.source.Get(), copy.rect);
    }
    void operator()(const CopyBufferCommand& copy) const { copy.target->Write(copy.source->Bytes()); }
    void operator()(const WriteCommand& write) const { write.target->Write(write.bytes); }
};

}  // namespace

ImmediateContext::ImmediateContext(IGraphicsObject& owner, GraphicsDevice& device)
    : Context(owner), device_(device), player_(device) {}

HRESULT ImmediateContext::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == __uuidof(IUnknown) || iid == __uuidof(ID3D11DeviceChild) || iid == __uuidof(ID3D11DeviceContext) ||
        iid == __uuidof(ID3D11DeviceContext1) || iid == __uuidof(ID3D11DeviceContext2) ||
        iid == __uuidof(ID3D11DeviceContext3) || iid == __uuidof(ID3D11DeviceContext4)) {
        *object = static_cast<ID3D11DeviceContext4*>(this);
    } else if (iid == __uuidof(ID3D11Multithread)) {
        *object = static_cast<ID3D11Multithread*>(this);
    } else {
        return NoInterface("ID3D11DeviceContext", iid);
    }
    AddRef();
    return S_OK;
}

ULONG ImmediateContext::AddRef() {
    const ULONG references = references_.fetch_add(1, std::memory_order_relaxed) + 1;
    if (references == 1) Owner().AddRef();
    return references;
}

ULONG ImmediateContext::Release() {
    const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        FinishAtLast();
        ClearState();
        Owner().Release();  // may end the device and this with it
    }
    return left;
}

HRESULT ImmediateContext::Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP type, UINT,
                              D3D11_MAPPED_SUBRESOURCE* mapped) try {
    if (!resource || subresource != 0 || !mapped) return E_INVALIDARG;
    *mapped = {};
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    resource->GetType(&dimension);
    const auto lock = device_.Lock();
    device_.FinishPicture();
    if (dimension == D3D11_RESOURCE_DIMENSION_BUFFER) {
        auto* const buffer = static_cast<Buffer*>(resource);
        if (!buffer->IsDynamic() || (type != D3D11_MAP_WRITE_DISCARD && type != D3D11_MAP_WRITE_NO_OVERWRITE))
            return E_INVALIDARG;
        *mapped = {buffer->Rewrite(), buffer->Size(), buffer->Size()};
        return S_OK;
    }
    auto* const texture = static_cast<Texture2D*>(resource);
    const UINT access = texture->Desc().CPUAccessFlags;
    const bool isAllowed =
        (type == D3D11_MAP_READ && access & D3D11_CPU_ACCESS_READ) ||
        (type == D3D11_MAP_WRITE && access & D3D11_CPU_ACCESS_WRITE) ||
        (type == D3D11_MAP_READ_WRITE && access & D3D11_CPU_ACCESS_READ && access & D3D11_CPU_ACCESS_WRITE);
    if (!texture->Staging() || !isAllowed) return E_INVALIDARG;
    device_.Finish();
    *mapped = {texture->Staging()->Data(), texture->StagingPitch(), texture->StagingPitch() * texture->Desc().Height};
    return S_OK;
} catch (...) {
    return CurrentFailure();
}

void ImmediateContext::ExecuteCommandList(ID3D11CommandList* list, BOOL restore) {
    if (list) {
        const auto lock = device_.Lock();
        auto& commands = *static_cast<CommandList*>(list);
        if (!PutOff(commands)) {
            for (const Command& each : commands.Commands()) Play(each);
        }
    }
    if (!restore) ClearState();
}

void ImmediateContext::FinishAtLast() noexcept {
    try {
        device_.FinishPicture();
    } catch (...) {
        // There is nobody to tell, and a picture that refers to the device would keep it.
        device_.DropPicture();
    }
}

bool ImmediateContext::PutOff(CommandList& list) noexcept try {
    std::optional<UnfinishedPicture> picture = PictureOf(list, player_);
    if (!picture) return false;
    device_.PutOff(std::move(*picture));
    if (!DrawnLast(list)->IsOutdated()) device_.BeginPicture();
    return true;
} catch (...) {
    return false;
}

void ImmediateContext::Play(const Command& command) noexcept {
    const auto lock = device_.Lock();
    try {
        device_.FinishPicture();
        std::visit(Visitor{player_}, command);
    } catch (...) {
        static std::atomic_flag written;
        TraceOnce(written, "Direct3D: a command failed and was left out.\n");
    }
}

void ImmediateContext::Flush() {
    try {
        device_.Flush();
    } catch (...) {
        static std::atomic_flag written;
        TraceOnce(written, "Direct3D: the device did not take its commands.\n");
    }
}

HRESULT ImmediateContext::FinishCommandList(BOOL, ID3D11CommandList** list) {
    if (list) *list = nullptr;
    return DXGI_ERROR_INVALID_CALL;
}

BOOL ImmediateContext::SetMultithreadProtected(BOOL protect) {
    return isProtected_.exchange(protect != FALSE) ? TRUE : FALSE;
}

}  // namespace Platform::Direct3D
