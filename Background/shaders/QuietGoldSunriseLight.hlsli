// The soft parts of "Quiet Gold Sunrise": the plane that everything lies on, the wash of light, the colour's turning, the
// sun, and the grain.

float Bell(float2 offset, float2 sigma) {
    const float2 scaled = offset / sigma;
    return exp(-dot(scaled, scaled));
}

// Where a point of the picture, u to the right and v upward from 0 to 1, lies in the slowly turning and swaying plane.
// The plane's y runs downward.
float2 SunrisePlace(float2 uv, float time) {
    const float angle = 0.0144 * time + 0.4 * sin(0.0279 * time);
    const float cosine = cos(angle);
    const float sine = sin(angle);
    const float2 middle = float2(uv.x - 0.5, 0.5 - uv.y);
    float2 place = float2(cosine * middle.x - sine * middle.y, sine * middle.x + cosine * middle.y);
    place = place * (1.1 + 0.12 * sin(0.0243 * time)) + float2(0.6, 0.48);
    place += float2(0.1 * sin(0.0306 * time), 0.09 * sin(0.0207 * time));
    place.x += 0.18 * sin(0.0342 * time) * sin(3.8 * place.y + 0.0252 * time);
    place.y += 0.08 * sin(0.027 * time) * sin(4.0 * place.x - 0.0153 * time);
    place.x += 0.025 * sin(0.09 * time) * sin(2.6 * (1.0 - uv.y) + 0.3);
    place.y += 0.012 * sin(0.0657 * time);
    return place;
}

// Cool light from above on the left, warm light from the right.
float3 BaseWash(float2 place) {
    float3 color = float3(0.016, 0.025, 0.03);
    color += Bell(place - float2(0.26, -0.08), float2(0.76, 0.47)) * float3(0.12, 0.19, 0.24);
    color += Bell(place - float2(0.29, -0.12), float2(0.32, 0.2)) * float3(0.22, 0.35, 0.44);
    color += Bell(place - float2(0.63, -0.07), float2(0.26, 0.34)) * float3(0.43, 0.43, 0.41);
    color += Bell(place - float2(0.63, 0.27), float2(0.3, 0.37)) * float3(0.15, 0.14, 0.12);
    color += Bell(place - float2(0.93, 0.35), float2(0.23, 0.29)) * float3(0.38, 0.235, 0.11);
    color += Bell(place - float2(0.84, 0.65), float2(0.23, 0.36)) * float3(0.065, 0.038, 0.012);
    color += Bell(place - float2(0.61, -0.055), float2(0.18, 0.18)) * float3(0.13, 0.13, 0.12);
    color += Bell(place - float2(0.88, 0.35), float2(0.085, 0.21)) * float3(0.095, 0.08, 0.025);
    return color;
}

// A warm place that comes and goes, taking light away half of the time.
float3 BreathingBlot(float2 place, float time) {
    const float2 center = float2(0.88 + 0.025 * sin(0.09 * time), 0.38);
    return sin(0.1035 * time) * Bell(place - center, float2(0.17, 0.3)) * float3(0.055, 0.038, 0.012);
}

// Turns the colour about the grey axis, a little differently from place to place.
float3 TwistColor(float3 color, float2 place, float time) {
    const float turns = 0.0035 * time + 0.09 * sin(0.0198 * time) * sin(2.3 * place.y + place.x);
    const float cosine = cos(6.283185 * turns);
    const float sine = sin(6.283185 * turns);
    const float3 axis = float3(0.5773503, 0.5773503, 0.5773503);
    const float3 along = axis * dot(axis, color);
    return saturate(cosine * color + sine * cross(axis, color) + (1.0 - cosine) * along);
}

// The edge that the sun climbs along.
float SunEdge(float y, float time) {
    return 0.48 + 0.175 * y - 0.26 * y * y + 0.045 * sin(1.4 + 0.0522 * time) * sin(2.8 * y + 0.35) - 0.067 -
           0.014 * sin(3.2 * y + 1.0);
}

// The sun's light on its edge and around it. `pixel` is the width of a pixel.
float3 SunLight(float2 place, float time, float pixel) {
    const float height = 0.4 + 0.2 * sin(0.0216 * time);
    const float2 fromSun = place - float2(SunEdge(height, time), height);
    const float square = dot(fromSun, fromSun);
    const float aside = abs(place.x - SunEdge(place.y, time));
    float along = (place.y - 0.43) * 1.176471;
    along *= along;
    const float edge = exp(-along * along);
    const float around = (place.y - height) * 4.545455;
    const float nearSun = exp(-around * around);
    float3 light = exp(-aside / 0.014) * (0.3 + 0.7 * nearSun) * edge * float3(1.0, 0.16, 0.025);
    light += exp(-aside / max(0.7 * pixel, 0.0012)) * (1.2 + 2.0 * nearSun) * edge * float3(1.0, 0.48, 0.13);
    light += exp(-125.0 * square) * float3(1.8, 0.54, 0.081);
    return light + exp(-1538.46 * square) * float3(7.0, 5.32, 2.52);
}

// Film grain, -1 to 1: another at every pixel, every sixtieth of a second and every frame.
float Grain(float2 pixel, float time, int frame) {
    uint hash = 1973u * (uint)(int)pixel.x + 9277u * (uint)(int)pixel.y + 104729u * (uint)(int)floor(60.0 * time) +
                26699u * (uint)frame;
    hash ^= hash >> 16;
    hash *= 0x7FEB352Du;
    hash ^= hash >> 15;
    hash *= 0x846CA68Bu;
    hash ^= hash >> 16;
    return float(hash >> 8) * 1.192093e-07 - 1.0;
}
