// The yardstick: one texture fetch, and nothing else, as plainly as anybody would write it. What the background's own
// programs gain by (Background/shaders/Interpolants.hlsli) doesn't make it quicker, so that ratios to it stay comparable.
struct Vertex {
    float4 position : SV_POSITION;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;
};

Texture2D<float4> SourceTex : register(t0);
SamplerState LinearSampler : register(s0);

float4 main(Vertex input) : SV_TARGET { return SourceTex.Sample(LinearSampler, input.textureCoordinate); }
