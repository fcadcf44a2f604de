// Small functions that several programs use.

static const float kPi = 3.14159265;

// The smooth step's curve, for x from 0 to 1.
float Smooth(float x) { return x * x * (3.0 - 2.0 * x); }
float2 Smooth(float2 x) { return x * x * (3.0 - 2.0 * x); }
float3 Smooth(float3 x) { return x * x * (3.0 - 2.0 * x); }

// Sine and cosine by a polynomial, right to about 2e-7 near 0 and to the angle's own last digit further out. Programs that
// take hundreds of them use these instead of the built-in ones: on processors they take half the time.
//
// `rest` is what remains of the angle after whole half turns; an odd number of these changes the sign.
float SineOfRest(float rest, float halfTurns) {
    const float square = rest * rest;
    const float tail =
        square * (-1.66666567e-1 + square * (8.33301028e-3 + square * (-1.98061988e-4 + square * 2.59927111e-6)));
    return asfloat(asuint(rest + rest * tail) ^ (uint(int(halfTurns)) << 31));
}
float3 SineOfRest(float3 rest, float3 halfTurns) {
    const float3 square = rest * rest;
    const float3 tail =
        square * (-1.66666567e-1 + square * (8.33301028e-3 + square * (-1.98061988e-4 + square * 2.59927111e-6)));
    return asfloat(asuint(rest + rest * tail) ^ (uint3(int3(halfTurns)) << 31));
}

float Sine(float x) {
    const float halfTurns = round(x * 0.318309886);
    return SineOfRest(x - halfTurns * kPi, halfTurns);
}
float3 Sine(float3 x) {
    const float3 halfTurns = round(x * 0.318309886);
    return SineOfRest(x - halfTurns * kPi, halfTurns);
}
float2 Sine(float2 x) { return Sine(float3(x, 0.0)).xy; }
// The nearest multiple of pi and a half instead of the nearest multiple of pi.
float Cosine(float x) {
    const float halfTurns = round(x * 0.318309886 - 0.5);
    return -SineOfRest(x - (halfTurns + 0.5) * kPi, halfTurns);
}
float3 Cosine(float3 x) {
    const float3 halfTurns = round(x * 0.318309886 - 0.5);
    return -SineOfRest(x - (halfTurns + 0.5) * kPi, halfTurns);
}

// The sine of so many turns, right to 8e-6: a turn's whole number is all that has to be taken away. With r from -1/2 to
// 1/2 it is odd in v = r (1/2 - |r|), and close to a parabola in it.
static const float kTurn = 2.0 * kPi;
float TurnedSine(float turns) {
    const float r = turns - round(turns);
    const float v = r * (0.5 - abs(r));
    const float size = abs(v);
    return v * (12.5688685 + size * (50.0248963 + size * 77.9392934));
}
float3 TurnedSine(float3 turns) {
    const float3 r = turns - round(turns);
    const float3 v = r * (0.5 - abs(r));
    const float3 size = abs(v);
    return v * (12.5688685 + size * (50.0248963 + size * 77.9392934));
}
// The same right to 8e-4.
float3 RoughSine(float3 turns) {
    const float3 r = turns - round(turns);
    const float3 v = r * (0.5 - abs(r));
    return v * (12.4371269 + 56.8184763 * abs(v));
}

// The sine to the last bit of a float or so. Hashes multiply a sine by thousands and keep what is behind the point: with
// the sines that devices bring along, each would show other cells. Pi is taken away in three parts, of which the first
// two have so few bits that their multiples are exact.
float ExactSine(float x) {
    precise const float halfTurns = round(x * 0.318309886);
    precise float rest = x - halfTurns * 3.140625;
    rest = rest - halfTurns * 0.000967502593994140625;
    rest = rest - halfTurns * 1.50995803e-7;
    return SineOfRest(rest, halfTurns);
}

// A number from 0 to 1 without visible order, the same for the same place. Single operations, so that every machine
// rounds alike.
float Hash(float2 place) {
    precise const float along = place.x * 12.9898;
    precise const float across = place.y * 78.233;
    precise const float angle = along + across;
    precise const float scaled = ExactSine(angle) * 43758.55;
    return frac(scaled);
}
