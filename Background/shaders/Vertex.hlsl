// The full-screen strip: passes everything through, and works out what the pixels of a picture have in common. Of the two
// sets of terms a pixel program reads one; the other is then made of whatever its register holds.
#include "BlitTerms.hlsli"
#include "KindTerms.hlsli"

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
    WriteKindTerms(result);
    WriteBlitTerms(result);
    return result;
}
