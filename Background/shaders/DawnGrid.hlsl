// A grid on a plane, in perspective, under a sky of slow cosines.
#include "PixelProgram.hlsli"

// Rows of the fixed camera.
static const float3x3 kCamera = {{0.62161, -0.5014737, -0.6017684},
                                 {0.0, 0.7682214, -0.6401843},
                                 {-0.7833269, -0.397945, -0.477534}};

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    float2 q = 2.0 * PixelPosition(input) / size - 1.0;
    q.x *= size.x / size.y;
    const float3 direction = normalize(mul(kCamera, float3(q, 2.0)));

    const float w = 0.4 * direction.y + 0.4;
    float3 color = cos(6.28318 * (w * float3(0.9, 0.6, 0.45) + float3(0.03, 0.15, 0.25))) * float3(0.6, 0.6, 0.5) +
                   float3(0.65, 0.55, 0.65);

    // Beyond the reach of the fog there is nothing to see, and sines of endless numbers are none.
    const float reach = min(-13.0 / direction.y, 1.0e4);
    if (reach > 0.0) {
        const float2 g = (direction.xz * reach + float2(4.699962, 3.72966) + iTime * float2(0.113, -0.3)) * 1.25;
        const float grid = 1.0 - pow(abs(sin(g.x) * cos(g.y)), 0.06125);
        const float fog = exp(-(0.04 * reach) * (0.04 * reach));
        color += grid * fog * float3(0.09, 0.45, 0.342);
    }

    color.r = Smooth(min(0.9803922 * color.r, 1.0));
    color.g = Smooth(min(0.8403361 * (color.g + 0.09), 1.0));
    color.b += 0.015;
    color -= 0.05 * dot(q, q) * float3(0.5, 0.3, 0.6);
    color += (0.5 * q.y + 0.5) * float3(0.003, -0.03, 0.063);
    return Finish(input, color);
}
