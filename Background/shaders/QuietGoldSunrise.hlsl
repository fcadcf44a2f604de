// "Quiet Gold Sunrise": soft light on folds that are edged with fine gold lines.
#include "PixelProgram.hlsli"

#include "QuietGoldSunriseLight.hlsli"

#include "QuietGoldSunriseFilaments.hlsli"

#include "QuietGoldSunriseBody.hlsli"

float4 main(Interpolants input) : SV_TARGET { return PaintSunrise(input); }
