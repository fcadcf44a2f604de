// The place on the cube's face at the middle of each pixel, and the height of the block there, and the random
// number that it was made from.
#include "../../../../Background/shaders/PixelProgram.hlsli"

#include "../../../../Background/shaders/CyberspaceField.hlsli"

float4 main(Interpolants input) : SV_TARGET {
    const HexagonCell cell = FindHexagon(FieldPlace(PixelPosition(input.position), iResolution.xy, iTime));
    const CubeFace face = FindFace(cell.local);
    const float2 tile = floor(kFaceGrid * face.position);
    const float random = Hash(20.0 * cell.id);
    return float4(face.position, BlockHeight(tile, random, face.number, iTime), random);
}
