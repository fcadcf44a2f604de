// "Quiet Gold Sunrise" without its fine lines: what a second, independent calculation can follow.
#include "../../../../Background/shaders/PixelProgram.hlsli"

#include "../../../../Background/shaders/QuietGoldSunriseLight.hlsli"

float3 Filaments(float3 color, float2 place, Interpolants terms) { return color; }

#include "../../../../Background/shaders/QuietGoldSunriseBody.hlsli"

float4 main(Interpolants input) : SV_TARGET { return PaintSunrise(input); }
