// What "Quiet Gold Sunrise" owes to time alone. Phases are in turns. Needs Numbers.hlsli.

// The edge that the sun climbs along; `bend` is how far it is bent at the moment.
float SunEdge(float y, float bend) {
    return 0.413 + y * (0.175 - 0.26 * y) + bend * TurnedSine((2.8 * y + 0.35) / kTurn) -
           0.014 * TurnedSine((3.2 * y + 1.0) / kTurn);
}

// An angle that grows with time, in turns less the whole ones: what is left has digits enough to add a place to it.
float TurnsAt(float time, float radiansPerSecond) { return frac(time * (radiansPerSecond / kTurn)); }

// sin(radiansPerSecond time) from `start` turns on.
float WaveAt(float time, float radiansPerSecond, float start) {
    return TurnedSine(time * (radiansPerSecond / kTurn) + start);
}

// What sets the grain of a frame apart: another one every sixtieth of a second and every frame.
uint GrainSeed(float time, int frame) { return 104729u * uint(int(floor(60.0 * time))) + 26699u * uint(frame); }

void WriteSunriseTerms(inout Interpolants result, float time, float glow) {
    // The plane's turn, as its sine and cosine times the scale, and where its middle comes to lie.
    const float angle = 0.0144 * time + 0.4 * WaveAt(time, 0.0279, 0.0);
    const float scale = 1.1 + 0.12 * WaveAt(time, 0.0243, 0.0);
    result.sunriseTurn = float4(scale * Sine(angle), scale * Cosine(angle), 0.6 + 0.1 * WaveAt(time, 0.0306, 0.0),
                                0.48 + 0.09 * WaveAt(time, 0.0207, 0.0));
    // Strength and phase of the plane's first two waves.
    result.sunriseWarp = float4(0.18 * WaveAt(time, 0.0342, 0.0), TurnsAt(time, 0.0252),
                                0.08 * WaveAt(time, 0.027, 0.0), TurnsAt(time, -0.0153));
    // Strength of the third one, and a shift down; the blot's x and strength.
    const float drift = 0.025 * WaveAt(time, 0.09, 0.0);
    result.sunriseDrift = float4(drift, 0.012 * WaveAt(time, 0.0657, 0.0), 0.88 + drift, WaveAt(time, 0.1035, 0.0));
    // The colours' turn and how much it varies; the phase of the curves' sway.
    result.sunriseTwist = float4(frac(0.0035 * time), 0.09 * WaveAt(time, 0.0198, 0.0), TurnsAt(time, 0.031), 0.0);
    // The sun's y and x, how its edge is bent, the glow.
    const float height = 0.4 + 0.2 * WaveAt(time, 0.0216, 0.0);
    const float bend = 0.045 * WaveAt(time, 0.0522, 1.4 / kTurn);
    result.sunriseSun = float4(height, SunEdge(height, bend), bend, glow);
    // Sines and cosines of the glints' places, then of their widths.
    result.sunriseGlint = float4(WaveAt(time, 0.0423, 0.0), WaveAt(time, 0.0423, 0.25), WaveAt(time, 0.0171, 0.0),
                                 WaveAt(time, 0.0171, 0.25));
    // Those of the sway's strength.
    result.sunriseBeat = float4(WaveAt(time, 0.043, 0.0), WaveAt(time, 0.043, 0.25), 0.0, 0.0);
}
