// What the vertex program hands to every pixel program. Both sides include this file, so the order of the members, which
// is what numbers the locations in SPIR-V, can't drift apart.
struct Interpolants {
    float4 position : SV_POSITION;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;
};
