// Four flat bands with sharp, light rims over a diagonal gradient.
#include "PixelProgram.hlsli"

// A slow rise, a bright edge, a hard stop.
float Profile(float v) {
    if (v < 0.0 || v > 1.0) return 0.0;
    if (v <= 0.86) return 0.1162791 * v;
    if (v <= 0.955) return 0.1 + 3.157896 * (v - 0.86);
    if (v <= 0.99) return 0.4 + 17.14285 * (v - 0.955);
    return 1.0 - 100.0001 * (v - 0.99);
}

// `wave` and `swell`: frequency, rate, offset.
float Band(float base, float x, float3 wave, float3 swell) {
    const float height = 0.5 + 0.06 * sin(wave.x * (x + wave.y * iTime + wave.z)) +
                         0.05 * sin(swell.x * (x + swell.y * iTime + swell.z));
    return Profile(base / height);
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float2 uv = PixelPosition(input) / size;
    const float up = uv.y - 0.25;
    const float down = 0.75 - uv.y;
    const float bands = Band(up, uv.x, float3(8.0, 0.03, 0.0), float3(3.7, 0.06, 0.02)) +
                        Band(up, uv.x, float3(6.7, 0.04, 0.16), float3(2.89, 0.07, -0.37)) +
                        Band(down, uv.x, float3(7.4, 0.035, -0.09), float3(2.51, 0.055, 0.27)) +
                        Band(down, uv.x, float3(6.5, 0.032, 0.08), float3(3.89, 0.09, -0.22));
    const float3 color =
        0.27 * bands + (uv.x - uv.y + 1.0) * float3(0.0275, 0.33, 0.3025) + float3(0.05, 0.05, 0.3);
    return Finish(input, color);
}
