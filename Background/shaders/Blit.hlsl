// Brings the background, or a flat fill, to the window's image: grade, white scale, the frame's fills, dither. What its
// constants decide comes from the vertex program (BlitTerms.hlsli).
//
// There are no branches: some devices carry out both sides of one for every pixel.
#include "Interpolants.hlsli"
#include "Numbers.hlsli"

Texture2D<float4> SourceTex : register(t0);
SamplerState LinearSampler : register(s0);

// `pixel` is the whole-numbered position in the image.
float3 PaintChrome(float3 color, float2 pixel, Interpolants terms) {
    const float2 inside = pixel + terms.edgeTerms.xy;
    const float2 beyond = pixel + terms.edgeTerms.zw;
    const float border = terms.moreTerms.x;
    const bool below = beyond.y >= 0.0;
    const bool above = inside.y < 0.0;
    const bool beside = inside.x < 0.0 || beyond.x >= 0.0;
    const bool near = min(inside.x, inside.y) < border || max(beyond.x, beyond.y) >= -border;

    float4 coat = float4(0.0, 0.0, 0.0, 1.0);
    coat = near ? terms.borderCoat : coat;
    coat = above ? terms.titleCoat : coat;
    coat = below || (beside && !above) ? terms.frameCoat : coat;
    return coat.a * color + coat.rgb;
}

// Noise of one step of `width`, the same on all channels, so that slow gradients show no bands.
float3 Dither(float3 color, float2 pixel, float width) {
    precise const float across = pixel.x * 127.1;
    precise const float along = pixel.y * 311.7;
    precise const float angle = across + along;
    const float noise = frac(ExactSine(angle) * 43758.55) - 0.5;
    return width > 0.0 ? saturate(color + noise * width) : color;
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 pixel = floor(input.position.xy);
    const float4 source = SourceTex.Sample(LinearSampler, input.textureCoordinate);
    float3 color = float3(dot(input.redTerms.rgb, source.rgb) + input.redTerms.a,
                          dot(input.greenTerms.rgb, source.rgb) + input.greenTerms.a,
                          dot(input.blueTerms.rgb, source.rgb) + input.blueTerms.a);
    color = clamp(color, input.levelTerms.x, input.levelTerms.y) * input.levelTerms.z;
    color = PaintChrome(color, pixel, input);
    color = Dither(color, pixel, input.levelTerms.w);
    return float4(color, source.a * input.moreTerms.y + input.moreTerms.z);
}
