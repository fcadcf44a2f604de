// Reads the first of what Terms.hlsl works out.
struct Interpolants {
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
    nointerpolation float4 wave : TERM0;
};

float4 main(Interpolants input) : SV_TARGET {
    return abs(input.wave);
}
