// What the vertex program hands to every pixel program. Both sides include this file, so the order of the members, which
// is what numbers the locations in SPIR-V, can't drift apart. A pixel program need not read all of it.
#ifndef INTERPOLANTS_HLSLI
#define INTERPOLANTS_HLSLI

struct Interpolants {
    float4 position : SV_POSITION;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;

    // All that depends on constants and on no pixel. For the kinds' programs: see KindTerms.hlsli.
    nointerpolation float4 finishRed : KIND0;
    nointerpolation float4 finishGreen : KIND1;
    nointerpolation float4 finishBlue : KIND2;
    nointerpolation float4 pictureTerms : KIND3;  // width, height, alpha, seconds
    nointerpolation float4 metalPans : KIND4;
    nointerpolation float4 metalTerms : KIND5;  // cosine and sine of the layers' turn, aspect, slope's step
    nointerpolation float4 mouseTerms : KIND6;

    // For the blit: see BlitTerms.hlsli.
    nointerpolation float4 redTerms : BLIT0;
    nointerpolation float4 greenTerms : BLIT1;
    nointerpolation float4 blueTerms : BLIT2;
    nointerpolation float4 levelTerms : BLIT3;
    nointerpolation float4 edgeTerms : BLIT4;
    nointerpolation float4 titleCoat : BLIT5;
    nointerpolation float4 frameCoat : BLIT6;
    nointerpolation float4 borderCoat : BLIT7;
    nointerpolation float4 moreTerms : BLIT8;
};

#endif
