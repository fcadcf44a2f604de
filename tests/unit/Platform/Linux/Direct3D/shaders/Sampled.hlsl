// A texture, tinted.
Texture2D Source : register(t0);
SamplerState PointSampler : register(s0);

cbuffer Constants : register(b1) {
    float4 tint;
};

float4 main(float4 position : SV_POSITION, float2 textureCoordinate : TEXCOORD) : SV_TARGET {
    return Source.Sample(PointSampler, textureCoordinate) * tint;
}
