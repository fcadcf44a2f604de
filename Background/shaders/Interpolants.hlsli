// What the vertex program hands to every pixel program. Both sides include this file, so the order of the members, which
// is what numbers the locations in SPIR-V, can't drift apart. A pixel program need not read all of it. With the position these are 28
// registers of the 32 that Shader Model 4.1 has.
#ifndef INTERPOLANTS_HLSLI
#define INTERPOLANTS_HLSLI

struct Interpolants {
    float4 position : SV_POSITION;
    float4 color : COLOR;
    noperspective float2 textureCoordinate : TEXCOORD;  // the strip isn't tilted, so no depth has to be divided by

    // All that depends on constants and on no pixel. For the kinds' programs: see KindTerms.hlsli.
    nointerpolation float4 finishRed : KIND0;
    nointerpolation float4 finishGreen : KIND1;
    nointerpolation float4 finishBlue : KIND2;
    nointerpolation float4 pictureTerms : KIND3;  // width, height, alpha, seconds
    nointerpolation float4 pixelTerms : KIND4;    // 1 / width, 1 / height; the grain's seed in two halves
    nointerpolation float4 metalPans : KIND5;
    nointerpolation float4 metalTerms : KIND6;  // cosine and sine of the layers' turn, aspect
    nointerpolation float4 mouseTerms : KIND7;
    // For "Quiet Gold Sunrise" alone: see QuietGoldSunriseTerms.hlsli.
    nointerpolation float4 sunriseTurn : KIND8;
    nointerpolation float4 sunriseWarp : KIND9;
    nointerpolation float4 sunriseDrift : KIND10;
    nointerpolation float4 sunriseTwist : KIND11;
    nointerpolation float4 sunriseSun : KIND12;
    nointerpolation float4 sunriseGlint : KIND13;
    nointerpolation float4 sunriseBeat : KIND14;

    // For the blit: see BlitTerms.hlsli.
    nointerpolation float4 redTerms : BLIT0;
    nointerpolation float4 greenTerms : BLIT1;
    nointerpolation float4 blueTerms : BLIT2;
    nointerpolation float4 levelTerms : BLIT3;
    nointerpolation float4 alphaTerms : BLIT4;
    nointerpolation float4 clientRectangle : BLIT5;
    nointerpolation float4 innerRectangle : BLIT6;
    nointerpolation float4 titleCoat : BLIT7;
    nointerpolation float4 frameCoat : BLIT8;
    nointerpolation float4 borderCoat : BLIT9;
};

#endif
