// The metal surface's first stage: marches to a rippling height field once for each point of a coarse grid and stores
// the finished colour.
#include "LiquidMetalConstants.hlsli"
#include "Numbers.hlsli"

#include "LiquidMetalField.hlsli"
#include "LiquidMetalLights.hlsli"

[[spv::format_rgba16f]] RWTexture2D<float4> SurfaceGrid : register(u0);

static const int kSteps = 250;
static const float kStart = -1.608;  // above the highest crest
static const float kStride = 0.4;    // of the distance that is safe to go
static const float kNear = 0.0006;
static const float kFar = 1000000.0;

struct Hit {
    bool found;
    float3 place;
};

// Straight down: the direction is the same for every pixel.
Hit March(float2 surface, Phases phases) {
    const Ray ray = RayThrough(surface, phases);
    float z = kStart;
    float distance = 0.0;
    Hit hit;
    hit.found = false;
    [loop] for (int i = 0; i < kSteps; ++i) {
        z += kStride * distance;
        distance = min(DistanceOnRay(ray, z, phases, fineDetail), kFar);
        if (distance < kNear) {
            hit.found = true;
            break;
        }
    }
    hit.place = float3(surface, z);
    return hit;
}

Shine ShineFrom(float3 light, float3 place, float3 normal) {
    return ShineOf(normalize(light - place), normal, float3(0.0, 0.0, -1.0));
}

float3 Ember(Shine shine) {
    const float diffuse2 = Power2(shine.diffuse);
    const float specular8 = Power8(shine.specular);
    const float specular24 = specular8 * specular8 * specular8;
    const float specular70 = Power2(specular24 * specular8 * Power2(shine.specular) * shine.specular);
    return (0.55 * Power4(diffuse2) * diffuse2 + 0.045 * diffuse2 * shine.diffuse) * float3(1.0, 0.36, 0.085) +
           specular24 * float3(1.0, 0.56, 0.22) + specular70 * float3(0.65, 0.559, 0.403);
}

float3 PointerLight(Shine shine) {
    return (0.025 * Power16(shine.diffuse) + 0.65 * Power16(Power4(shine.specular) * shine.specular)) *
           float3(1.0, 0.83, 0.64);
}

// In the middle while there is no pointer.
float3 PointerPlace() {
    const float2 place = pointerPositionUV.z > 0.0 ? saturate(pointerPositionUV.xy) - 0.5 : float2(0.0, 0.0);
    return float3(5.0 * iResolution.x / iResolution.y * place.x, 5.0 * place.y, -3.5);
}

float Openness(float3 place, float3 direction, float reach, float scale, Phases phases) {
    const float distance = DistanceAt(place + reach * direction, phases, fineDetail);
    return distance > kFar ? 1.0 : saturate(distance * scale);
}

// How much of the sky a point sees, by four probes between the normal and a fixed direction.
float Occlusion(float3 place, float3 normal, Phases phases) {
    const float3 direction = normalize(lerp(normal, float3(-0.9539981, 0.2119996, -0.2119996), 0.6));
    return Openness(place, direction, 0.5, 2.0, phases) * Openness(place, direction, 0.2, 5.0, phases) *
           Openness(place, direction, 0.04, 25.0, phases) * Openness(place, direction, 1.54, 0.6493506, phases);
}

float3 Light(float3 place, Phases phases) {
    const float3 gradient = GradientAt(place, phases, fineDetail);
    const float3 normal = normalize(float3(-0.24 * gradient.x, -0.4 * gradient.y, -1.0 - 0.4 * gradient.z));
    const float3 lights = KeyLight(ShineFrom(float3(-3.0, 2.5, -4.0), place, normal)) +
                          WarmFill(ShineFrom(float3(3.0, -2.0, -3.0), place, normal)) +
                          emberStrength * Ember(ShineFrom(float3(3.5, 3.0, -4.0), place, normal)) +
                          pointerStrength * PointerLight(ShineFrom(PointerPlace(), place, normal));
    return lights * (0.65 * Occlusion(place, normal, phases) + 0.35) + float3(0.006, 0.008, 0.011);
}

float3 Tone(float3 color) {
    const float3 root = sqrt(saturate(color));
    const float3 c = root * sqrt(root);  // to the power of 0.75
    const float3 toned = 0.6 * c + 0.4 * Smooth(c);
    return toned - 0.4 * (dot(toned, float3(0.33, 0.33, 0.33)) - toned);
}

float Vignette(float2 n) {
    const float v = max(19.0 * n.x * n.y * (1.0 - n.x) * (1.0 - n.y), 0.0);
    return (0.5 * pow(v, 0.7) + 0.5) * 0.88;
}

[numthreads(8, 8, 1)] void main(uint3 id : SV_DispatchThreadID) {
    if (any(float2(id.xy) >= gridDimensions)) return;
    const float2 pixel = (float2(id.xy) - 1.0) * sampleSpacing + 0.5;
    const float2 surface = (pixel - 0.5 * iResolution) / iResolution.y * viewScale;
    const Phases phases = PhasesAt(iTime);

    const Hit hit = March(surface, phases);
    float3 color = 0.0;
    if (hit.found) color = Light(hit.place, phases);
    color = saturate(Tone(color) * Vignette(pixel / iResolution));
    SurfaceGrid[id.xy] = float4(color, 1.0);
}
