// A full-screen strip whose texture coordinates start at the top left.
struct Vertex {
    float2 position : POSITION;
    float2 textureCoordinate : TEXCOORD;
};

struct Interpolants {
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
};

Interpolants main(Vertex vertex) {
    Interpolants result;
    result.position = float4(vertex.position, 0.0, 1.0);
    result.textureCoordinate = vertex.textureCoordinate;
    return result;
}
