// The place on the cube's face at the middle of each pixel, and the height of the block there, and the random
// number that it was made from.
#include "../../../../Background/shaders/PixelProgram.hlsli"

#include "../../../../Background/shaders/CyberspaceField.hlsli"

float4 main(Interpolants input) : SV_TARGET {
    const HexagonCell cell = FindHexagon(FieldPointAt(PixelPosition(input), iResolution.xy, iTime).place);
    const CubeFace face = FindFace(cell.local);
    const float2 position = frac(FacePosition(face, cell.local));
    const float2 tile = floor(kFaceGrid * position);
    const float random = Hash(20.0 * cell.id);
    return float4(position, BlockHeight(tile, random, face.number, iTime), random);
}
