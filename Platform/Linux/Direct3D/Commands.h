// What a deferred context records.
#pragma once

#include "Platform/Linux/Direct3D/GraphicsState.h"

#include <memory>
#include <variant>
#include <vector>

namespace Platform::Direct3D {

struct DrawCommand {
    std::shared_ptr<const GraphicsState> state;
    UINT vertexCount;
    UINT firstVertex;
};

struct DispatchCommand {
    std::shared_ptr<const GraphicsState> state;
    UINT x;
    UINT y;
    UINT z;
};

struct ClearCommand {
    ComPtr<RenderTargetView> target;
    std::array<FLOAT, 4> color;
};

struct CopyCommand {
    ComPtr<Texture2D> target;
    UINT x;
    UINT y;
    ComPtr<Texture2D> source;
    PixelRect rect;
};

struct CopyBufferCommand {
    ComPtr<Buffer> target;
    ComPtr<Buffer> source;
};

struct WriteCommand {
    ComPtr<Buffer> target;
    std::vector<std::byte> bytes;
};

using Command = std::variant<DrawCommand, DispatchCommand, ClearCommand, CopyCommand, CopyBufferCommand, WriteCommand>;

/// What was recorded, to be played any number of times.
class CommandList final : public DeviceChild<ID3D11CommandList> {
public:
    CommandList(IGraphicsObject& owner, std::vector<Command> commands)
        : DeviceChild("ID3D11CommandList", owner), commands_(std::move(commands)) {}
    const std::vector<Command>& Commands() const { return commands_; }

private:
    const std::vector<Command> commands_;
};

}  // namespace Platform::Direct3D
