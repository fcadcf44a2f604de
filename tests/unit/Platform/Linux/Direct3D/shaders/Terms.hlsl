// The strip of Corner.hlsl, which also works out things that few pixel programs read.
cbuffer Constants : register(b0) {
    float4 color;
};

struct Vertex {
    float2 position : POSITION;
    float2 textureCoordinate : TEXCOORD;
};

struct Interpolants {
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
    nointerpolation float4 wave : TERM0;
    nointerpolation float4 turned : TERM1;
};

Interpolants main(Vertex vertex) {
    Interpolants result;
    result.position = float4(vertex.position, 0.0, 1.0);
    result.textureCoordinate = vertex.textureCoordinate;
    float4 wave = color;
    [loop] for (int i = 0; i < int(color.a * 4.0); ++i) wave = sin(wave * 1.5 + color);
    result.wave = wave;
    float2x2 turns[2] = {float2x2(color), float2x2(color.wzyx)};
    turns[color.r > 0.5 ? 1 : 0][0][1] = 2.0;
    result.turned = float4(mul(turns[0], color.xy), mul(turns[1], color.zw));
    return result;
}
