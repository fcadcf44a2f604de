// The soft parts of "Quiet Gold Sunrise": the plane that everything lies on, the wash of light, the colour's turning,
// the sun, and the grain. What time alone decides comes from the vertex program (QuietGoldSunriseTerms.hlsli).

static const float kBinary = 1.44269504;  // exp(x) is exp2(kBinary x)

float Bell(float2 offset, float2 sigma) {
    const float2 scaled = offset * (1.201122409 / sigma);  // the root of kBinary
    return exp2(-dot(scaled, scaled));
}

// Where a point of the picture, in pixels, y upward, lies in the slowly turning and swaying plane. The plane's y runs
// downward.
float2 SunrisePlace(float2 pixel, Interpolants terms) {
    const float2 uv = pixel * terms.pixelTerms.xy;
    const float2 middle = float2(uv.x - 0.5, 0.5 - uv.y);
    float2 place = float2(terms.sunriseTurn.y * middle.x - terms.sunriseTurn.x * middle.y,
                          terms.sunriseTurn.x * middle.x + terms.sunriseTurn.y * middle.y) +
                   terms.sunriseTurn.zw;
    place.x += terms.sunriseWarp.x * TurnedSine(3.8 / kTurn * place.y + terms.sunriseWarp.y);
    place.y += terms.sunriseWarp.z * TurnedSine(4.0 / kTurn * place.x + terms.sunriseWarp.w);
    place.x += terms.sunriseDrift.x * TurnedSine(2.9 / kTurn - 2.6 / kTurn * uv.y);
    place.y += terms.sunriseDrift.y;
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
float3 BreathingBlot(float2 place, Interpolants terms) {
    const float2 center = float2(terms.sunriseDrift.z, 0.38);
    return terms.sunriseDrift.w * Bell(place - center, float2(0.17, 0.3)) * float3(0.055, 0.038, 0.012);
}

// Turns the colour about the grey axis, a little differently from place to place.
float3 TwistColor(float3 color, float2 place, Interpolants terms) {
    const float turns =
        terms.sunriseTwist.x + terms.sunriseTwist.y * TurnedSine(2.3 / kTurn * place.y + 1.0 / kTurn * place.x);
    const float grey = (color.r + color.g + color.b) * 0.3333333333;
    const float3 across = 0.5773503 * (color.brg - color.gbr);  // the cross product with the axis
    return saturate(grey + TurnedSine(turns + 0.25) * (color - grey) + TurnedSine(turns) * across);
}

// The sun's light on its edge and around it.
float3 SunLight(float2 place, Interpolants terms) {
    const float4 sun = terms.sunriseSun;
    const float2 fromSun = place - sun.yx;
    const float square = dot(fromSun, fromSun);
    const float y = place.y;
    const float edgeX = 0.413 + y * (0.175 - 0.26 * y) + sun.z * TurnedSine(2.8 / kTurn * y + 0.35 / kTurn) -
                        0.014 * TurnedSine(3.2 / kTurn * y + 1.0 / kTurn);
    const float aside = kBinary * abs(place.x - edgeX);
    float along = (y - 0.43) * 1.176471;
    along *= along;
    const float around = (y - sun.x) * 4.545455;
    const float nearSun = exp2(-kBinary * around * around);
    const float edge = exp2(-kBinary * along * along);
    const float soft = exp2(aside * (-1.0 / 0.014)) * (0.3 + 0.7 * nearSun) * edge;
    const float sharp = exp2(-aside / max(0.7 * terms.pixelTerms.x, 0.0012)) * (1.2 + 2.0 * nearSun) * edge;
    return soft * float3(1.0, 0.16, 0.025) + sharp * float3(1.0, 0.48, 0.13) +
           exp2(-125.0 * kBinary * square) * float3(1.8, 0.54, 0.081) +
           exp2(-1538.46 * kBinary * square) * float3(7.0, 5.32, 2.52);
}

// Film grain, -1 to 1: another at every pixel, every sixtieth of a second and every frame.
float Grain(float2 pixel, Interpolants terms) {
    const uint seed = uint(int(terms.pixelTerms.z)) + (uint(int(terms.pixelTerms.w)) << 16);
    uint hash = 1973u * uint(int(pixel.x)) + 9277u * uint(int(pixel.y)) + seed;
    hash ^= hash >> 16;
    hash *= 0x7FEB352Du;
    hash ^= hash >> 15;
    hash *= 0x846CA68Bu;
    hash ^= hash >> 16;
    return float(int(hash >> 8)) * 1.192093e-07 - 1.0;
}
