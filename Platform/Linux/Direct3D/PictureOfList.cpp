#include "Platform/Linux/Direct3D/PictureOfList.h"

#include <algorithm>
#include <utility>

namespace Platform::Direct3D {

namespace {

// What is drawn in one step at the most, in pixels: a few milliseconds' work for the costliest programs. Each step
// costs as much as some ten thousand pixels. Its rows are a multiple of the squares that the processors share out among
// them.
constexpr UINT stepArea = 240 * 1024;
constexpr UINT squareSide = 64;

UINT RowsOfStep(const VkExtent2D& size) {
    const UINT steps = size.width * size.height / stepArea + 1;
    return (size.height / steps / squareSide + 1) * squareSide;
}

Texture2D* DrawnOn(const Command& command) {
    if (const auto* const draw = std::get_if<DrawCommand>(&command))
        return draw->state->target ? &draw->state->target->Target() : nullptr;
    if (const auto* const clear = std::get_if<ClearCommand>(&command)) return &clear->target->Target();
    return nullptr;
}

bool Reads(const GraphicsState& state, const Texture2D* texture) {
    return std::ranges::any_of(state.pixel.textures,
                               [&](const auto& each) { return each && &each->Target() == texture; });
}

/// Whether what `texture` held ahead of the list has no part in what the list draws.
bool IsClearedBeforeUse(const std::vector<Command>& commands, const Texture2D* texture) {
    for (const Command& each : commands) {
        if (std::holds_alternative<ClearCommand>(each) && DrawnOn(each) == texture) return true;
        if (DrawnOn(each) == texture) return false;
        if (const auto* const draw = std::get_if<DrawCommand>(&each); draw && Reads(*draw->state, texture))
            return false;
    }
    return true;
}

/// A swap chain's buffer beside the one that is drawn on, or that one itself: which image it stands for changes with
/// the next present.
bool ReadsABuffer(const Command& command) {
    const auto* const draw = std::get_if<DrawCommand>(&command);
    return draw && std::ranges::any_of(draw->state->pixel.textures, [](const auto& each) {
               return each && each->Target().Image() && each->Target().Image()->Pixels();
           });
}

bool IsPicture(const std::vector<Command>& commands) {
    if (commands.empty() || !std::holds_alternative<DrawCommand>(commands.back())) return false;
    const Texture2D* const buffer = DrawnOn(commands.back());
    if (!buffer || !buffer->Image() || !buffer->Image()->Pixels()) return false;
    return std::ranges::all_of(commands, [&](const Command& each) {
        if (std::holds_alternative<WriteCommand>(each)) return true;
        if (!std::holds_alternative<DrawCommand>(each) && !std::holds_alternative<ClearCommand>(each)) return false;
        const Texture2D* const target = DrawnOn(each);
        if (!target || !target->Image() || ReadsABuffer(each)) return false;
        return target == buffer || (!target->Image()->Pixels() && IsClearedBeforeUse(commands, target));
    });
}

}  // namespace

Texture2D* DrawnLast(const CommandList& list) {
    return list.Commands().empty() ? nullptr : DrawnOn(list.Commands().back());
}

std::optional<UnfinishedPicture> PictureOf(CommandList& list, Player& player) {
    const std::vector<Command>& commands = list.Commands();
    if (!IsPicture(commands)) return std::nullopt;

    std::vector<UnfinishedPicture::Drawing> drawings;
    for (const Command& each : commands) {
        if (Texture2D* const target = DrawnOn(each))
            drawings.push_back({std::holds_alternative<ClearCommand>(each), target});
    }
    UnfinishedPicture picture(DrawnOn(commands.back())->Image(), std::move(drawings));
    // A buffer's texture stands for another image by the time of the last step, so each step has its image. A clear is
    // too little for a step and goes with the next drawing: whatever lies between the two only writes into buffers.
    const ComPtr<CommandList> kept(&list);
    UnfinishedPicture::Function clears = [] {};
    for (const Command& each : commands) {
        if (const auto* const write = std::get_if<WriteCommand>(&each)) {
            picture.AddOther([kept, write] { write->target->Write(write->bytes); });
        } else if (const auto* const clear = std::get_if<ClearCommand>(&each)) {
            clears = [before = std::move(clears), kept, clear, &player, image = DrawnOn(each)->Image()] {
                before();
                player.Clear(image, clear->color.data());
            };
        } else {
            const auto* const draw = std::get_if<DrawCommand>(&each);
            const std::shared_ptr<Texture>& image = DrawnOn(each)->Image();
            const VkExtent2D size = image->Size();
            const UINT rows = RowsOfStep(size);
            for (UINT top = 0; top < size.height; top += rows) {
                const PixelRect area{0, top, size.width, std::min(rows, size.height - top)};
                picture.AddDrawing([before = std::exchange(clears, [] {}), kept, draw, &player, image, area] {
                    before();
                    player.Draw(*draw->state, draw->vertexCount, draw->firstVertex, image, area);
                });
            }
        }
    }
    return picture;
}

}  // namespace Platform::Direct3D
