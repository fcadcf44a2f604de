// What the pixel programs of the kinds 0 to 7 have in common: the constants, the place of a pixel, the way out.
#define CONSTANTS_REGISTER b0
#include "ColorGrade.hlsli"
#include "Constants.hlsli"
#include "Finish.hlsli"
#include "Interpolants.hlsli"
#include "Numbers.hlsli"

// The pixel's middle, y running upward from the lower edge. `position` is SV_POSITION.
float2 PixelPosition(float4 position) { return float2(position.x, iResolution.y - position.y); }
float2 PixelPosition(Interpolants input) {
    return float2(input.position.x, input.pictureTerms.y - input.position.y);
}

// The way out, by what the vertex program worked out (KindTerms.hlsli). Light programs take this one.
float4 Finish(Interpolants input, float3 color) {
    Finishing finishing;
    finishing.red = input.finishRed;
    finishing.green = input.finishGreen;
    finishing.blue = input.finishBlue;
    finishing.alpha = input.pictureTerms.z;
    return FinishWith(finishing, color);
}

// The same from the constants.
float4 Finish(float3 color) { return FinishWith(FinishingOfConstants(), color); }
