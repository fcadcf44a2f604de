// Red runs to the right, green downwards.
float4 main(float4 position : SV_POSITION, float2 textureCoordinate : TEXCOORD) : SV_TARGET {
    return float4(textureCoordinate, 0.0, 1.0);
}
