// A lit height field made of two layers of hexagonal Truchet tiles that drift across each other.
//
// What costs is the tiles: two layers at five places for one pixel, its own and one pixel to each side. So the tiles are
// asked once, for their value and how it changes, and the neighbours follow from that: each layer's by Taylor, the rest as
// it stands. Arcs meet the tiles' borders at right angles and at the same places from both sides, so that is right there
// too, up to terms of second order.
#include "LiquidMetalLights.hlsli"
#include "PixelProgram.hlsli"

static const float2 kPeriod = float2(1.0, 1.732051);  // of each of the two lattices of hexagon centres
static const float2 kPerPeriod = 1.0 / kPeriod;
static const float2 kHalf = float2(0.5, 0.8660254);
static const float kArcRadius = 0.2886751;
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
    const float2 firstCell = trunc(first * kPerPeriod);
    const float2 secondCell = trunc(z * kPerPeriod);
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

// A value, and how it changes within one pixel to the right and up: half the difference between both sides' values, and
// what their mean lies above it.
struct Rise {
    float value;
    float2 slope;
    float2 bow;
};

// The band along the nearest arc, 0 to 1. Of the three arcs' centres that one is nearest which has the largest product
// with the place. `step` is a pixel in the tiles' measure.
Rise Band(TilePlace place, float step) {
    const float aside = abs(place.local.x);
    const bool lowest = -0.5773503 * place.local.y > 0.5 * aside + 0.2886751 * place.local.y;
    const float2 from = float2(lowest ? aside : aside - 0.5, place.local.y + (lowest ? 0.5773503 : -0.2886751));
    const float square = max(dot(from, from), 1e-6);
    const float perRadius = rsqrt(square);
    const float fromArc = square * perRadius - kArcRadius;
    const float b = saturate(1.1 - 8.0 * abs(fromArc));
    Rise rise;
    rise.value = b * b * b * (b * (6.0 * b - 15.0) + 10.0);
    // The first three derivatives, by Taylor, none of them where b stops.
    const float bb = b - b * b;
    const float steep = (fromArc > 0.0 ? -8.0 : 8.0) * step * place.turn * perRadius;
    const float2 grows = steep * float2(place.local.x < 0.0 ? -from.x : from.x, from.y);
    const float2 square2 = grows * grows;
    const float third = bb > 0.0 ? 10.0 - 60.0 * bb : 0.0;
    rise.slope = grows * (30.0 * bb * bb + third * square2);
    rise.bow = (30.0 * bb * (1.0 - 2.0 * b)) * square2;
    return rise;
}

// |x|, but for a parabola around 0, less 0.05.
float4 SoftAbsolute(float4 x) {
    const float4 low = min(abs(x), 0.1);
    return abs(x) + low * (5.0 * low - 1.0);
}

// tanh(atan2(y, x)) for the two soft absolutes of a mixed pair of layers. With n = y - x and d = y + x the angle is
// pi / 4 + atan(n / d). The hyperbolic tangent of the second part is close to t (p + q t^2) / (1 + r t^2 + s t^4) for
// t = n / d, which never leaves +-0.94; that of a sum follows from those of its parts. With everything multiplied by
// d^4 one division is left.
float Crest(float2 soft) {
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
    const float2 q = 2.0 * PixelPosition(input) * input.pixelTerms.xy - 1.0;
    const float2 place = float2(input.metalTerms.z * q.x, q.y);
    const float fade = 1.0 - 0.7071068 * length(q);
    const float4 mouse = input.mouseTerms;

    const float2 v = float2(place.x, place.y + 0.5 * mouse.z) + input.metalPans.xy;
    const float step = 2.0 * input.pixelTerms.y;  // of the slope: one pixel
    const Rise a = Band(FindTile(0.3125 * v), 0.3125 * step);
    const Rise b = Band(FindTile(0.25 * v + input.metalPans.zw), 0.25 * step);
    const float2 arm = fade * input.metalTerms.xy;
    const float2 mixed = float2(arm.x * a.value + arm.y * b.value, arm.x * b.value - arm.y * a.value);
    const float4 middle = mixed.xxyy + float4(arm.x * a.bow + arm.y * b.bow, arm.x * b.bow - arm.y * a.bow);
    const float4 reach = float4(arm.x * a.slope + arm.y * b.slope, arm.x * b.slope - arm.y * a.slope);
    const float4 after = SoftAbsolute(middle + reach);
    const float4 before = SoftAbsolute(middle - reach);

    const float height = 0.375 * Crest(SoftAbsolute(mixed.xxyy).xz) + 0.375;
    const float3 normal = normalize(float3(0.375 * (Crest(after.xz) - Crest(before.xz)), -2.0 * step,
                                           0.375 * (Crest(after.yw) - Crest(before.yw))));

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
