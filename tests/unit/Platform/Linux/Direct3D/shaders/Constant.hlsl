// One colour everywhere.
cbuffer Constants : register(b0) {
    float4 color;
};

float4 main(float4 position : SV_POSITION, float2 textureCoordinate : TEXCOORD) : SV_TARGET {
    return color;
}
