// "Cyberspace": an endless field of cubes, their faces tiled with rising and sinking blocks.
//
// Sixteen samples make a pixel. Nearly all of a pixel's samples share a tile, so the blocks that can cover a tile are
// worked out once for all samples on it, and a pixel takes as many turns as there are tiles in it. Blocks are steel of
// different brightness, and glowing rims: a sample's colour is two numbers.
#include "PixelProgram.hlsli"

#include "CyberspaceField.hlsli"

static const float3 kSteel = float3(0.26, 0.4, 0.6);
static const float3 kGlow = float3(1.8, 3.0, 3.8);
static const float kRimSteel = 0.1;
static const float kRim = 0.05;  // of a tile: a line inside every edge
static const int kSamples = 16;

// A share of steel and one of glow.
struct Paint {
    float steel;
    float glow;
};

struct Block {
    float height;   // all lengths in sides of a tile times `sharpness`
    float glow;     // of its rims: the higher a block, the more
    float topOver;  // its top's steel beyond that of a rim
};

Block BlockOn(float2 tile, float cell, float face, float time, float sharpness) {
    const float height = BlockHeight(tile, cell, face, time);
    Block block;
    block.height = height * sharpness;
    block.glow = saturate(height);
    block.topOver = 4.0 * (height * height + height) + 0.4 - kRimSteel;
    return block;
}

float Edge(float inside) { return Smooth(saturate(inside)); }

// Paints a block over what lies behind it. `body` and `top` are how far inside its outline and inside its top's the
// sample lies, `slant` how far from the edge between its two sides, `side` what these have of steel.
Paint PaintBlock(Paint behind, Block block, float body, float top, float slant, float side, float rim) {
    const float inBody = Edge(body);
    const float inSide = Edge(min(body, 0.5 * slant) - rim);
    const float onTop = Edge(top);
    const float inTop = Edge(top - rim);
    Paint paint;
    paint.steel = lerp(behind.steel, kRimSteel + inSide * (side - kRimSteel), inBody);
    paint.glow = lerp(behind.glow, block.glow - inSide * block.glow, inBody);
    paint.steel = lerp(paint.steel, kRimSteel + inTop * block.topOver, onTop);
    paint.glow = lerp(paint.glow, block.glow - inTop * block.glow, onTop);
    return paint;
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float time = input.pictureTerms.w;
    const FieldPoint center = FieldPointAt(PixelPosition(input), size, time);
    // A pixel is so small that the lens is straight within it.
    const float2 across = 0.25 * center.across;
    const float2 up = 0.25 * center.up;
    const float2 first = center.place - 1.5 * (across + up);
    // Edges are soft over this part of a tile's side. What is measured in tiles is multiplied with it from the start.
    const float sharpness = size.y / 3.0;
    const float rim = kRim * sharpness;

    float steel = 0.0;
    float glow = 0.0;
    uint painted = 0u;  // a bit for each sample
    int next = 0;       // the first one not yet painted
    [loop] while (next < kSamples) {
        const int nextRow = next >> 2;
        const float2 fromFirst = float2(next - 4 * nextRow, nextRow);
        const float2 place = first + fromFirst.x * across + fromFirst.y * up;
        const HexagonCell hexagon = FindHexagon(place);
        const CubeFace face = FindFace(hexagon.local);
        const float2 inGrid = kFaceGrid * FacePosition(face, hexagon.local);
        const float2 corner = floor(inGrid);
        // Faces are counted anew from each of their edges.
        const float2 tile = corner - kFaceGrid * floor(corner / kFaceGrid);
        const float cell = Hash(20.0 * hexagon.id);
        const Block own = BlockOn(tile, cell, face.number, time, sharpness);
        const Block right = BlockOn(tile + float2(1.0, 0.0), cell, face.number, time, sharpness);
        const Block below = BlockOn(tile + float2(0.0, 1.0), cell, face.number, time, sharpness);
        const Block diagonal = BlockOn(tile + float2(1.0, 1.0), cell, face.number, time, sharpness);

        // The first sample in the hexagon and on the tile, and the steps from one to the next.
        const float2 local = hexagon.local - fromFirst.x * across - fromFirst.y * up;
        const float grid = kFaceGrid * sharpness;
        const float2 onTile = sharpness * (kFaceGrid * FacePosition(face, local) - corner);
        const float2 tileAcross = grid * FacePosition(face, across);
        const float2 tileUp = grid * FacePosition(face, up);

        const int start = next;
        next = kSamples;
        Paint sum = {0.0, 0.0};
        [loop] for (int index = 0; index < kSamples; ++index) {
            const int row = index >> 2;
            const float column = float(index - 4 * row);
            const float2 here = local + column * across + float(row) * up;
            const float2 at = onTile + column * tileAcross + float(row) * tileUp;
            const float low = min(at.x, at.y);
            const float high = max(at.x, at.y);

            // Of this tile? Half a hexagon's width is 0.5, along three axes.
            const float2 slanted = float2(0.5 * here.x, 0.8660254 * here.y);
            const float outward = max(abs(here.x), max(abs(slanted.x + slanted.y), abs(slanted.x - slanted.y)));
            const uint bit = 1u << uint(index);
            const bool open = (painted & bit) == 0u;
            const bool inside = low >= 0.0 && high < sharpness && outward <= 0.5 && FaceNumber(here) == face.number;
            const bool mine = open && (inside || index == start);
            painted = mine ? painted | bit : painted;
            next = open && !mine ? min(next, index) : next;

            // From the farthest to the nearest block. Of the two in the middle, the one towards which the sample lies
            // is the other's mirror image: `low` and `high` say all about it.
            const bool towardsRight = at.x > at.y;
            const float slant = high - low;
            Paint paint = {0.0, 0.0};
            const float ownLow = low + own.height;
            paint = PaintBlock(paint, own, min(ownLow, sharpness - high), min(ownLow, sharpness - high - own.height),
                               slant, towardsRight ? 0.7 : 0.2, rim);
            Block middle;
            middle.height = towardsRight ? right.height : below.height;
            middle.glow = towardsRight ? right.glow : below.glow;
            middle.topOver = towardsRight ? right.topOver : below.topOver;
            const float middleLow = high - sharpness + middle.height;
            paint = PaintBlock(paint, middle, min(middleLow, slant), min(middleLow, sharpness - low - middle.height),
                               sharpness - slant, towardsRight ? 0.2 : 0.7, rim);
            const float diagonalLow = low - sharpness + diagonal.height;
            const float diagonalTop = min(diagonalLow, 2.0 * sharpness - high - diagonal.height);
            paint = PaintBlock(paint, diagonal, diagonalLow, diagonalTop, slant, towardsRight ? 0.7 : 0.2, rim);
            sum.steel += mine ? paint.steel : 0.0;
            sum.glow += mine ? paint.glow : 0.0;
        }
        const float light = 0.05 * ((4.0 - face.number) * 2.2 + 0.8) * (1.0 + 0.75 * cell);
        steel += light * sum.steel;
        glow += light * sum.glow;
    }
    return Finish(input, 0.0625 * kSteel * (steel + glow * kGlow));
}
