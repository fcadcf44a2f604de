// A glow gathered in a hundred steps through folded clouds over a bent ground.
#include "PixelProgram.hlsli"

static const int kSteps = 100;
static const int kRounds = 4;

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float time = input.pictureTerms.w;
    const float2 sway = float2(0.3 * cos(0.06 * time), 0.1 * cos(0.12 * time));
    const float2 q = (2.0 * PixelPosition(input) - size) / size.y + sway;
    const float bow = cos(0.5 * q.x);
    const float3 band = float3(0.2, 0.4, 0.8) / max(abs(2.5 * q.y + 1.0 - bow), 0.02);
    const float ground = 40.0 - 30.0 * bow;

    // The clouds' domain and the angles in it are counted in turns. Nearly two thousand sines make a pixel: rough ones are
    // good to some thousandths of a step's length, which come out even.
    const float k = frac(0.15 / kTurn * time);
    const float3 toward = float3(q.x, 0.7 * q.y, 1.0) / kTurn;
    const float travelled = 1.5 / kTurn * time;

    // The band is the same at every step: it is added once, a hundredfold.
    float glow = 0.0;
    float depth = 0.0;
    [loop] for (int i = 0; i < kSteps; ++i) {
        float3 place = depth * toward;
        float value = 0.7 * q.y * depth + ground;
        place.z += travelled;
        // The domain is folded four times, always by a tenth of the cosine of half of what is there. The halves move by a
        // twentieth each time: the later cosines follow from the first by Taylor.
        const float3 angle = 0.5 * place.yzx + k;
        const float3 sine = RoughSine(angle);
        const float3 cosine = RoughSine(angle + 0.25);
        float3 folds = cosine;
        float frequency = 1.5;
        float amplitude = 0.2;
        [unroll] for (int j = 0; j < kRounds; ++j) {
            const float3 folded = place + 0.1 / kTurn * folds;
            const float3 wave = RoughSine(frequency * folded + (0.05 * folded.z + k));
            value -= amplitude * abs(wave.x + wave.y + wave.z);
            const float3 moved = 0.05 * folds.yzx;
            folds += cosine - moved * (sine + 0.5 * moved * cosine);
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
