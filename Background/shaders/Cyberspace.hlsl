// "Cyberspace": an endless field of cubes, their faces tiled with rising and sinking blocks.
#include "PixelProgram.hlsli"

#include "CyberspaceField.hlsli"

static const float3 kSteel = float3(0.26, 0.4, 0.6);
static const float3 kGlow = float3(1.8, 3.0, 3.8);
static const float kRim = 0.05;  // of a tile: a line inside every edge
static const int kSamplesPerSide = 4;

// The four blocks that can cover a point of a tile: its own, and those towards larger coordinates.
struct Blocks {
    float own;
    float right;
    float below;
    float diagonal;
};

Blocks BlocksAround(float2 tile, float cell, float face) {
    Blocks blocks;
    blocks.own = BlockHeight(tile, cell, face, iTime);
    blocks.right = BlockHeight(tile + float2(1.0, 0.0), cell, face, iTime);
    blocks.below = BlockHeight(tile + float2(0.0, 1.0), cell, face, iTime);
    blocks.diagonal = BlockHeight(tile + float2(1.0, 1.0), cell, face, iTime);
    return blocks;
}

float Edge(float inside) { return Smooth(saturate(inside * iResolution.y / 3.0)); }

// Paints a block over what lies behind it. `place` is the point seen from the tile's corner, in tiles. The block's top
// is its tile moved by its height against both axes; what the tile passes over on the way are the sides.
float3 PaintBlock(float3 color, float2 place, float height, float light) {
    const float2 raised = place + height;
    const float slant = place.x - place.y;
    const float body = min(min(min(raised.x, raised.y), min(1.0 - place.x, 1.0 - place.y)), 1.0 - abs(slant));
    const float top = min(min(raised.x, raised.y), min(1.0 - raised.x, 1.0 - raised.y));
    const float3 steel = light * kSteel;
    const float3 side = steel * (slant > 0.0 ? 0.7 : 0.2);
    const float3 face = steel * (4.0 * (height * height + height) + 0.4);
    // The higher a block, the more its edges glow.
    const float3 rim = (0.1 + saturate(height) * kGlow) * steel;
    color = lerp(color, rim, Edge(body));
    color = lerp(color, side, Edge(min(body, 0.5 * abs(slant)) - kRim));
    color = lerp(color, rim, Edge(top));
    return lerp(color, face, Edge(top - kRim));
}

// From the farthest to the nearest. The two in the middle never share a point.
float3 PaintTile(float2 place, Blocks blocks, float light) {
    float3 color = PaintBlock(float3(0.0, 0.0, 0.0), place, blocks.own, light);
    if (place.x > place.y) {
        color = PaintBlock(color, place - float2(1.0, 0.0), blocks.right, light);
    } else {
        color = PaintBlock(color, place - float2(0.0, 1.0), blocks.below, light);
    }
    return PaintBlock(color, place - 1.0, blocks.diagonal, light);
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 center = PixelPosition(input.position);
    float3 sum = float3(0.0, 0.0, 0.0);

    // The samples of a pixel mostly share a tile: its blocks are worked out again only when a sample leaves it.
    float2 knownCell = float2(1e9, 1e9);
    float2 knownTile = float2(0.0, 0.0);
    float knownFace = 0.0;
    float light = 0.0;
    Blocks blocks = {0.0, 0.0, 0.0, 0.0};
    [loop] for (int index = 0; index < kSamplesPerSide * kSamplesPerSide; ++index) {
        const int row = index / kSamplesPerSide;
        const float2 offset = 0.25 * float2(index - row * kSamplesPerSide, row) - 0.375;
        const HexagonCell hexagon = FindHexagon(FieldPlace(center + offset, iResolution.xy, iTime));
        const CubeFace face = FindFace(hexagon.local);
        const float2 inGrid = kFaceGrid * face.position;
        const float2 tile = floor(inGrid);
        if (any(hexagon.id != knownCell) || any(tile != knownTile) || face.number != knownFace) {
            knownCell = hexagon.id;
            knownTile = tile;
            knownFace = face.number;
            const float cell = Hash(20.0 * hexagon.id);
            blocks = BlocksAround(tile, cell, face.number);
            light = 0.05 * ((4.0 - face.number) * 2.2 + 0.8) * (1.0 + 0.75 * cell);
        }
        sum += PaintTile(inGrid - tile, blocks, light);
    }
    return Finish(sum * 0.0625);
}
