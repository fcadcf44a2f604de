// Brings the background, or a flat fill, to the window's image: grade, white scale, the frame's fills, dither. What its
// constants decide comes from the vertex program (BlitTerms.hlsli).
//
// There are no branches: some devices carry out both sides of one for every pixel. What doesn't need the source comes
// before it is read, so that a processor has something to do meanwhile.
#include "Interpolants.hlsli"
#include "Numbers.hlsli"

Texture2D<float4> SourceTex : register(t0);
SamplerState LinearSampler : register(s0);

// What of the frame lies over a pixel with this middle: what it adds, and what it keeps of the colour.
float4 CoatAt(float2 middle, Interpolants terms) {
    const float2 inner = abs(middle - terms.innerRectangle.xy);
    const bool near = inner.x > terms.innerRectangle.z || inner.y > terms.innerRectangle.w;
    const bool beside = abs(middle.x - terms.clientRectangle.x) > terms.clientRectangle.z;
    const bool above = middle.y < terms.levelTerms.x;
    const bool below = middle.y > terms.levelTerms.y;

    float4 coat = near ? terms.borderCoat : float4(0.0, 0.0, 0.0, terms.alphaTerms.z);
    coat = above ? terms.titleCoat : coat;
    return below || (beside && !above) ? terms.frameCoat : coat;
}

// Noise from -0.5 to 0.5, the same on all channels, so that slow gradients show no bands. `pixel` is the whole-numbered
// position in the image.
float Noise(float2 pixel) {
    precise const float across = pixel.x * 127.1;
    precise const float along = pixel.y * 311.7;
    precise const float angle = across + along;
    return frac(ExactSine(angle) * 43758.55) - 0.5;
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 middle = input.position.xy;
    const float width = input.levelTerms.w;
    const float noise = Noise(middle - 0.5) * width;
    const float4 coat = CoatAt(middle, input);
    const float4 source = SourceTex.Sample(LinearSampler, input.textureCoordinate);
    float3 color = float3(dot(input.redTerms.rgb, source.rgb) + input.redTerms.a,
                          dot(input.greenTerms.rgb, source.rgb) + input.greenTerms.a,
                          dot(input.blueTerms.rgb, source.rgb) + input.blueTerms.a);
    color = input.levelTerms.z > 0.0 ? saturate(color) : color;
    color = coat.a * color + coat.rgb;
    color = width > 0.0 ? saturate(color + noise) : color;
    return float4(color, source.a * input.alphaTerms.x + input.alphaTerms.y);
}
