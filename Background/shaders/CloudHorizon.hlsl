// A glow gathered in a hundred steps through folded clouds over a bent ground.
#include "PixelProgram.hlsli"

static const int kSteps = 100;
static const int kRounds = 4;

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float2 sway = float2(0.3 * cos(0.06 * iTime), 0.1 * cos(0.12 * iTime));
    const float2 q = (2.0 * PixelPosition(input) - size) / size.y + sway;
    const float k = 0.15 * iTime;
    const float bow = cos(0.5 * q.x);
    const float3 band = float3(0.2, 0.4, 0.8) / max(abs(2.5 * q.y + 1.0 - bow), 0.02);
    const float bend = 30.0 * bow;

    // The band is the same at every step: it is added once, a hundredfold.
    float glow = 0.0;
    float depth = 0.0;
    for (int i = 0; i < kSteps; ++i) {
        const float3 place = float3(depth * q, depth + 1.5 * iTime);
        float value = 0.7 * place.y - bend + 40.0;
        float3 fold = float3(place.x, 0.7 * place.y, place.z) + 0.1 * Cosine(float3(0.35, 0.5, 0.5) * place.yzx + k);
        float frequency = 1.5;
        float amplitude = 0.2;
        [unroll] for (int j = 0; j < kRounds; ++j) {
            const float drift = 0.05 * fold.z + k;
            const float3 wave = Sine(frequency * fold + drift);
            value -= amplitude * abs(wave.x + wave.y + wave.z);
            if (j + 1 < kRounds) fold += 0.1 * Cosine(0.5 * fold.yzx + k);
            frequency *= 0.5;
            amplitude *= 2.0;
        }
        const float distance = 0.2 + 0.2 * abs(value);
        depth += distance;
        glow += 1.0 / distance;
    }
    const float3 light = glow + float(kSteps) * band;
    const float r = max(length(q - 0.7), 0.02);
    return Finish(input, tanh(min(light * (0.005 / r), 16.0)));
}
