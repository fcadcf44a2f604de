// A short march through nested sines, coloured by how the field changes along the diagonal.
#include "PixelProgram.hlsli"

static const int kSteps = 4;

struct Turn {
    float angle;
    float cosine;
    float sine;
};

float Field(float3 place, Turn turn) {
    const float a = turn.cosine * place.x - turn.sine * place.y;
    const float3 y = float3(turn.cosine * a - turn.sine * place.z, turn.sine * place.x - turn.cosine * place.y,
                            turn.sine * a - turn.cosine * place.z);
    const float inner = sin(2.0 * y.z + turn.angle);
    const float middle = sin(2.0 * y.y + turn.angle + inner);
    return length(y + turn.sine) + 0.5 * sin(2.0 * y.x + turn.angle + middle);
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float2 uv = PixelPosition(input) / size;
    const float3 direction = normalize(float3(uv.x - 1.0, uv.y - 0.5, -1.0));
    Turn turn;
    turn.angle = 0.01 * iTime;
    turn.cosine = cos(turn.angle);
    turn.sine = sin(turn.angle);
    const float cap = 100.0 + 0.01 * iTime;

    float depth = 2.5;
    float3 color = 0.0;
    for (int i = 0; i < kSteps; ++i) {
        const float3 place = direction * depth + float3(0.0, 0.0, 1.0);
        const float field = Field(place, turn);
        const float distance = field - 2.0;
        const float ahead = Field(place + 0.1, turn) - 2.0;
        const float3 tint = clamp((distance - ahead) * 0.5, -0.5, 1.0) * 3.2 + float3(0.3738235, 0.3404902, 0.5640196);
        const float fog = 0.4 * Smooth(saturate((field - 7.0) * (-1.0 / 3.0)));
        color = color * tint + tint * fog;
        depth += min(cap, distance);
    }

    const float k = 0.75 + 0.25 * (sin(cap) + 1.0);
    float ripple = 15.0 * cos(10.0 * uv.x + 0.01 * sin(0.1 * iTime) + 0.1 * iTime) * (1.5 - uv.y) * 0.4 +
                   10.0 * sin(uv.x + 0.1 * iTime);
    ripple *= k * (1.0 - uv.y);
    color -= 0.004 * ripple;
    color.r -= 0.1 * k * (1.0 - uv.y);
    color -= 0.125 * uv.y;
    color *= pow(15.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.25);
    return Finish(input, color);
}
