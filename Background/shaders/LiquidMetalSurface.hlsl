// The picture from the grid of colours: a cubic B-spline. Sixteen texels have a say in each pixel; the sampler blends
// them in fours when it is asked at the right places between them.
#include "Interpolants.hlsli"
#include "LiquidMetalConstants.hlsli"

Texture2D<float4> SurfaceGrid : register(t0);
SamplerState LinearSampler : register(s0);

// One axis: where the two fetches lie, in texels, and what they weigh.
struct Taps {
    float2 first;
    float2 second;
    float2 firstWeight;
    float2 secondWeight;
};

Taps TapsAt(float2 g) {
    const float2 cell = floor(g);
    const float2 f = g - cell;
    const float2 rest = 1.0 - f;
    const float2 w0 = rest * rest * rest / 6.0;
    const float2 w1 = (f * f * (3.0 * f - 6.0) + 4.0) / 6.0;
    const float2 w3 = f * f * f / 6.0;
    Taps taps;
    taps.firstWeight = w0 + w1;
    taps.secondWeight = 1.0 - taps.firstWeight;
    taps.first = cell + w1 / taps.firstWeight + 0.5;
    taps.second = cell + w3 / taps.secondWeight + 2.5;
    return taps;
}

float4 Fetch(float x, float y) { return SurfaceGrid.SampleLevel(LinearSampler, float2(x, y), 0.0); }

float4 main(Interpolants input) : SV_TARGET {
    // Row 0 of the grid is the picture's lower edge.
    const float2 pixel = float2(input.position.x, input.pictureTerms.y - input.position.y) - 0.5;
    Taps taps = TapsAt(pixel * (1.0 / sampleSpacing));
    // gridDimensions, for less than the reading of a constant.
    uint2 grid;
    SurfaceGrid.GetDimensions(grid.x, grid.y);
    const float2 texel = 1.0 / float2(int2(grid));
    taps.first *= texel;
    taps.second *= texel;
    const float4 lower = taps.firstWeight.x * Fetch(taps.first.x, taps.first.y) +
                         taps.secondWeight.x * Fetch(taps.second.x, taps.first.y);
    const float4 upper = taps.firstWeight.x * Fetch(taps.first.x, taps.second.y) +
                         taps.secondWeight.x * Fetch(taps.second.x, taps.second.y);
    return taps.firstWeight.y * lower + taps.secondWeight.y * upper;
}
