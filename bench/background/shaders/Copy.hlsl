// The yardstick: one texture fetch, and nothing else.
#include "../../../Background/shaders/Interpolants.hlsli"

Texture2D<float4> SourceTex : register(t0);
SamplerState LinearSampler : register(s0);

float4 main(Interpolants input) : SV_TARGET { return SourceTex.Sample(LinearSampler, input.textureCoordinate); }
