// A lit height field made of two layers of hexagonal Truchet tiles that drift across each other.
//
// What costs is the tiles: two layers at five places for one pixel. So each pixel finds the hexagon and draws its lot
// once for a layer, and looks at its four neighbours from within the same hexagon. That is right up to terms of second
// order even where the border runs between them: arcs meet borders at right angles and at the same places from both
// sides, so the tiles are smooth across.
#include "LiquidMetalLights.hlsli"
#include "PixelProgram.hlsli"

static const float2 kPeriod = float2(1.0, 1.732051);  // of each of the two lattices of hexagon centres
static const float2 kHalf = float2(0.5, 0.8660254);
static const float kArcRadius = 0.2886751;
static const float kArcDistance2 = 0.3333333;  // of an arc's centre from the hexagon's, squared
static const float3 kBackdrop = float3(0.03, 0.04, 0.05);

// The place in its hexagon, turned so that the arcs' centres are (+-0.5, 0.2886751) and (0, -0.5773503).
struct TilePlace {
    float2 local;
    float turn;  // 1 or -1: what a step in the plane is to be multiplied with
};

// The lots are turns by sixths. Two sixths bring the three arcs onto each other, so even lots leave the tile as it is
// and odd ones are a half turn.
TilePlace FindTile(float2 z) {
    const float2 first = z - kHalf;
    const float2 firstCell = trunc(first / kPeriod);
    const float2 secondCell = trunc(z / kPeriod);
    const float2 fromFirst = first - firstCell * kPeriod - kHalf;
    const float2 fromSecond = z - secondCell * kPeriod - kHalf;
    const bool second = dot(fromSecond, fromSecond) < dot(fromFirst, fromFirst);
    const float2 local = second ? fromSecond : fromFirst;

    const float2 id = round(10.0 * (local - z));
    precise const float along = id.x * 12.9898;
    precise const float across = id.y * 58.233;
    precise const float angle = along + across;
    precise const float scaled = ExactSine(angle) * 13758.54;
    const float lot = floor(6.0 * frac(scaled));

    TilePlace place;
    place.turn = frac(0.5 * lot) == 0.0 ? 1.0 : -1.0;
    place.local = place.turn * local;
    return place;
}

// The band along the nearest arc, 0 to 1. Of the three squared distances |z|^2 + |c|^2 - 2 z.c the smallest is that with
// the largest product z.c.
float Band(float2 z) {
    const float nearest = max(0.5 * abs(z.x) + 0.2886751 * z.y, -0.5773503 * z.y);
    const float radius = sqrt(max(dot(z, z) + kArcDistance2 - 2.0 * nearest, 0.0));
    const float b = saturate(1.1 - 8.0 * abs(radius - kArcRadius));
    return b * b * b * (b * (6.0 * b - 15.0) + 10.0);
}

// What the tiles' layers become: faded and turned into each other.
float2 Mix(float2 layers, float4 turn) {
    return float2(dot(layers, turn.xy), dot(layers, turn.zw));
}

// |x|, but for a parabola around 0, less 0.05.
float2 SoftAbsolute(float2 x) {
    const float2 low = min(abs(x), 0.1);
    return abs(x) + low * (5.0 * low - 1.0);
}

// tanh(atan2(y, x)) for the two soft absolutes of a mixed pair of layers. With n = y - x and d = y + x the angle is
// pi / 4 + atan(n / d). The hyperbolic tangent of the second part is close to t (p + q t^2) / (1 + r t^2 + s t^4) for
// t = n / d, which never leaves +-0.94; that of a sum follows from those of its parts. With everything multiplied by
// d^4 one division is left. The slope, which is what the light sees, is right to 0.002.
float Crest(float2 mixed) {
    const float2 soft = SoftAbsolute(mixed);
    const float n = soft.y - soft.x;
    const float d = soft.y + soft.x + 0.1;
    const float n2 = n * n;
    const float d2 = d * d;
    const float below = d2 * (d2 + 1.18091277 * n2) + 0.130500312 * n2 * n2;
    const float above = n * d * (0.999937462 * d2 + 0.515728698 * n2);
    const float quarter = 0.655794203;  // tanh(pi / 4)
    return (quarter * below + above) / (below + quarter * above);
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 size = input.pictureTerms.xy;
    const float2 q = 2.0 * PixelPosition(input) / size - 1.0;
    const float2 place = float2(input.metalTerms.z * q.x, q.y);
    const float step = input.metalTerms.w;  // of the slope: one pixel
    const float fade = 1.0 - 0.7071068 * length(q);
    const float2 arm = fade * input.metalTerms.xy;
    const float4 mixing = float4(arm.x, arm.y, -arm.y, arm.x);
    const float4 mouse = input.mouseTerms;

    const float2 lifted = float2(place.x, place.y + 0.5 * mouse.z);
    const float2 v = lifted + input.metalPans.xy;
    const TilePlace a = FindTile(0.3125 * v);
    const TilePlace b = FindTile(0.25 * v + input.metalPans.zw);
    const float stepA = 0.3125 * step * a.turn;
    const float stepB = 0.25 * step * b.turn;
    const float right = Crest(Mix(float2(Band(a.local + float2(stepA, 0.0)), Band(b.local + float2(stepB, 0.0))), mixing));
    const float left = Crest(Mix(float2(Band(a.local - float2(stepA, 0.0)), Band(b.local - float2(stepB, 0.0))), mixing));
    const float above = Crest(Mix(float2(Band(a.local + float2(0.0, stepA)), Band(b.local + float2(0.0, stepB))), mixing));
    const float below = Crest(Mix(float2(Band(a.local - float2(0.0, stepA)), Band(b.local - float2(0.0, stepB))), mixing));
    const float own = Crest(Mix(float2(Band(a.local), Band(b.local)), mixing));

    const float height = 0.375 * own + 0.375;
    const float3 normal = normalize(float3(0.375 * (right - left), -2.0 * step, 0.375 * (above - below)));

    const float3 surface = float3(place.x, height, q.y);
    const float3 view = normalize(float3(0.0, -2.0, 0.0) - surface);
    const Shine key = ShineOf(normalize(float3(0.8, -0.75, 0.8) - surface), normal, view);
    const float3 secondLight = float3(0.2 * mouse.x, 0.2 * mouse.y - 1.5, -1.0);
    const Shine fill = ShineOf(normalize(secondLight - surface), normal, view);
    const float3 color = min(KeyLight(key) + WarmFill(fill), 1.0);

    // How deep the metal is decides how much of the backdrop shows: exp(-2 smooth(s)), s = sat((height + 0.1) / 0.15).
    // No height is below 0.375, so s is 1 everywhere.
    const float depth = 1.0 - (1.0 - 0.5 * key.diffuse) * 0.1353352832;
    return Finish(input, lerp(kBackdrop, color, depth));
}
