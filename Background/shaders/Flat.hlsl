// A still, dark, even background. It serves every kind that has no program of its own yet (see ShaderPrograms.cpp).
#include "Interpolants.hlsli"

float4 main(Interpolants input) : SV_TARGET { return float4(0.03, 0.04, 0.05, 1.0); }
