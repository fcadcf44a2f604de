// What the cube field says about the middle of each pixel: the hexagon, its face, its random number.
#include "../../../../Background/shaders/PixelProgram.hlsli"

#include "../../../../Background/shaders/CyberspaceField.hlsli"

float4 main(Interpolants input) : SV_TARGET {
    const HexagonCell cell = FindHexagon(FieldPointAt(PixelPosition(input), iResolution.xy, iTime).place);
    return float4(cell.id, FaceNumber(cell.local), Hash(20.0 * cell.id));
}
