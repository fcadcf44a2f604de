// The full-screen strip: passes everything through.
#include "Interpolants.hlsli"

struct Vertex {
    float4 color : COLOR;
    float2 position : POSITION;
    float2 textureCoordinate : TEXCOORD;
};

Interpolants main(Vertex vertex) {
    Interpolants result;
    result.position = float4(vertex.position, 0.0, 1.0);
    result.color = vertex.color;
    result.textureCoordinate = vertex.textureCoordinate;
    return result;
}
