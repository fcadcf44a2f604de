// The rippling height field: four octaves of sines of sines, each in a domain that those before it have bent.

static const int kOctaves = 4;
static const float kFirstFrequency = 1.4;
static const float kFrequencyGain = 1.25;
static const float kAmplitudeGain = 0.55;
static const float kWarp = 0.45;
static const float kScale = 1.4;
static const float3x3 kRotation = {{0.4472136, 0.0, 0.8944272},
                                   {-0.7807201, 0.48795, 0.39036},
                                   {-0.4364358, -0.8728716, 0.2182179}};
static const float3x3 kStep = kScale * kRotation;

// Angles, and with them the whole domain, are counted in turns.
static const float kWarpTurns = kWarp / kTurn;

// How fast time moves each axis, in turns, wrapped into one for each octave, so that sines keep their digits.
struct Phases {
    float3 octave[kOctaves];
};

Phases PhasesAt(float time) {
    const float3 drift = float3(0.1 * Sine(-0.0875 * time), 0.021875 * time, 0.035 * time);
    Phases phases;
    float frequency = kFirstFrequency;
    [unroll] for (int i = 0; i < kOctaves; ++i) {
        // The bent domain is asked at f * (w - 2) + phase: what doesn't depend on the place goes in here.
        phases.octave[i] = frac(drift * (frequency / kTurn)) - 2.0 * frequency / kTurn;
        frequency *= kFrequencyGain;
    }
    return phases;
}

float OctaveWeight(int octave, float detail) { return octave < 2 ? 1.0 : detail; }

// The sine of what lies between -1.5 and 1.5: nothing has to be taken away.
float SmallSine(float x) {
    const float square = x * x;
    return x * (0.999997648 + square * (-0.166652661 + square * (0.00831078135 - 0.000184897226 * square)));
}

float Ripple(float3 u) { return SmallSine(TurnedSine(u.x + u.z) + 0.5 * TurnedSine(2.0 * u.y)); }

// A ray along z moves only one of the three sines that bend the first octave; the other two are the same all along.
struct Ray {
    float2 bent;  // x and y of the bent domain less the first one's bend
    float depth;  // what bends z
};

// 0.25 * the octaves' sum + 0.5 where the first octave's bent domain is u.
float HeightOf(float3 u, Phases phases, float detail) {
    float sum = Ripple(u);
    float amplitude = 1.0;
    float frequency = kFirstFrequency;
    [unroll] for (int i = 1; i < kOctaves; ++i) {
        const float3 w = mul(kStep, u);
        frequency *= kFrequencyGain;
        amplitude *= kAmplitudeGain;
        u = w + kWarpTurns * TurnedSine(frequency * w.zxy + phases.octave[i]);
        sum += amplitude * OctaveWeight(i, detail) * Ripple(u);
    }
    return 0.25 * sum + 0.5;
}

Ray RayThrough(float2 surface, Phases phases) {
    const float2 place = float2(0.6 * surface.x, surface.y) / kTurn;
    const float2 bend = kWarpTurns * TurnedSine(float3(kFirstFrequency * place + phases.octave[0].yz, 0.0)).xy;
    Ray ray;
    ray.bent = float2(place.x, place.y + bend.x);
    ray.depth = bend.y;
    return ray;
}

// Signed distance to the surface at the depth z of a ray, as good as the march needs it.
float DistanceOnRay(Ray ray, float z, Phases phases, float detail) {
    const float turns = z / kTurn;
    const float bend = kWarpTurns * TurnedSine(kFirstFrequency * turns + phases.octave[0].x);
    return -1.6 * HeightOf(float3(ray.bent.x + bend, ray.bent.y, turns + ray.depth), phases, detail) - z;
}

float DistanceAt(float3 place, Phases phases, float detail) {
    return DistanceOnRay(RayThrough(place.xy, phases), place.z, phases, detail);
}

// The gradient of the octaves' sum in the domain, whose x is scaled: the derivatives of the bent domain are carried
// along, a column for each axis.
float3 GradientAt(float3 place, Phases phases, float detail) {
    float3 w = float3(0.6 * place.x, place.y, place.z) / kTurn;
    float3x3 slope = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};  // row: component of w; column: by which axis
    float3 gradient = 0.0;
    float amplitude = 1.0;
    float frequency = kFirstFrequency;
    [unroll] for (int i = 0; i < kOctaves; ++i) {
        const float3 turns = frequency * w.zxy + phases.octave[i];
        const float3 u = w + kWarpTurns * TurnedSine(turns);
        const float3 bend = kWarp * frequency * TurnedSine(turns + 0.25);
        const float3x3 bent = {slope[0] + bend.x * slope[2], slope[1] + bend.y * slope[0],
                               slope[2] + bend.z * slope[1]};
        const float outer = Cosine(TurnedSine(u.x + u.z) + 0.5 * TurnedSine(2.0 * u.y));
        gradient += amplitude * OctaveWeight(i, detail) * outer *
                    (TurnedSine(u.x + u.z + 0.25) * (bent[0] + bent[2]) + TurnedSine(2.0 * u.y + 0.25) * bent[1]);
        w = mul(kStep, u);
        slope = mul(kStep, bent);
        frequency *= kFrequencyGain;
        amplitude *= kAmplitudeGain;
    }
    return gradient;
}
