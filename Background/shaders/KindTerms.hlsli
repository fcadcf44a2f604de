// What follows from a kind's constants alone, worked out once for a corner of the picture instead of for each pixel.
#define CONSTANTS_REGISTER b2
#include "ColorGrade.hlsli"
#include "Constants.hlsli"
#include "Finish.hlsli"
#include "Interpolants.hlsli"
#include "Numbers.hlsli"

#include "QuietGoldSunriseTerms.hlsli"

void WriteKindTerms(inout Interpolants result) {
    const Finishing finishing = FinishingOfConstants();
    result.finishRed = finishing.red;
    result.finishGreen = finishing.green;
    result.finishBlue = finishing.blue;
    result.pictureTerms = float4(iResolution.xy, finishing.alpha, iTime);
    // Floats carry whole numbers of 24 bits: the seed goes in halves.
    const uint seed = GrainSeed(iTime, iFrame);
    result.pixelTerms = float4(1.0 / iResolution.xy, float(seed & 0xFFFFu), float(seed >> 16));

    // The metal's two slow pans, and how its layers are turned into each other.
    const float cosine = Cosine(0.0008 * iTime);
    const float sine = Sine(0.0008 * iTime);
    result.metalPans = float4(100.0 + 5.0 * Cosine(0.004 * iTime), 100.0 + 5.0 * Sine(0.002828427 * iTime),
                              7.601398 * (cosine + sine), 7.601398 * (cosine - sine));
    const float turned = 1.0 + 0.06 * iTime;
    result.metalTerms = float4(Cosine(turned), Sine(turned), iResolution.x / iResolution.y, 0.0);
    result.mouseTerms = iMouse;

    WriteSunriseTerms(result, iTime, sunriseGlow);
}
