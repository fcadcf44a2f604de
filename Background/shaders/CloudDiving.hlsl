// Seven octaves of a gyroid behind a perspective divide, shaded by their gradient.
#include "PixelProgram.hlsli"

static const int kOctaves = 7;

// `drift` is how far time moves each octave: it adds up.
float Field(float3 place, float drift) {
    float sum = 0.0;
    float amplitude = 0.5;
    [unroll] for (int i = 0; i < kOctaves; ++i) {
        place += 0.1 * sum;
        place.z += drift;
        const float3 turns = place * (1.0 / (kTurn * amplitude));
        const float3 cosine = TurnedSine(turns + 0.25);
        const float3 sine = TurnedSine(turns);
        sum += abs(amplitude * dot(cosine, sine.yzx));
        amplitude *= 0.5882353;
    }
    return sum;
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float aspect = size.x / size.y;
    const float2 q = ((2.0 * PixelPosition(input) - size) / size.y - 0.5) * 0.25;
    const float3 direction = normalize(float3(q, 0.3));
    const float drift = 0.0041625 * input.pictureTerms.w;
    const float here = Field(direction, drift);
    const float right = Field(direction + float3(0.1 * aspect, 0.0, 0.0), drift);
    const float above = Field(direction + float3(0.0, 0.1 * aspect, 0.0), drift);
    const float3 normal = normalize(float3(here - right, here - above, here - 1.0));
    const float3 color = 0.5 + 0.5 * cos(float3(5.9, 11.3, 16.7) - normal.x);
    return Finish(input, color * Smooth(saturate((1.0 - normal.z) * 0.5)));
}
