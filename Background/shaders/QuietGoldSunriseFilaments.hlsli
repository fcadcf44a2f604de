// The folds and fine lines of "Quiet Gold Sunrise". Each is a curve x = g(y) in the plane, y running downward; a sheet
// lies to the right of its curve.

// What the lines have in common at one point of the plane.
struct Strings {
    float2 place;
    float pixel;   // a pixel's width
    float2 wave;   // sine and cosine of the curves' sway along y
    float2 beat;   // those of its strength
    float4 glint;  // those of the glints' places and widths
};

Strings StringsAt(float2 place, Interpolants terms) {
    Strings strings;
    strings.place = place;
    strings.pixel = terms.pixelTerms.x;
    const float turns = 2.4 / kTurn * place.y + terms.sunriseTwist.z;
    strings.wave = float2(TurnedSine(turns), TurnedSine(turns + 0.25));
    strings.beat = terms.sunriseBeat.xy;
    strings.glint = terms.sunriseGlint;
    return strings;
}

// The reciprocal of a line's half width, which is never less than 0.7 pixels.
float Sharpness(Strings strings, float least) { return 1.0 / max(0.7 * strings.pixel, least); }

// How much of a sheet covers a point that lies `inside` it.
float Sheet(float inside, float sharpness) { return Smooth(saturate(0.5 + 0.5 * sharpness * inside)); }

// Close to exp(-4.35 square), and nothing beyond 1.
float Hump(float square) {
    const float low = saturate(1.0 - square);
    const float low2 = low * low;
    return low2 * low2;
}

// A line of about the half width that `sharpness` stands for, with a faint halo of eight times that.
float Thread(float aside, float sharpness) {
    const float scaled = aside * (0.48 * sharpness);
    const float square = scaled * scaled;
    return Hump(square) + 0.16 * Hump(0.015625 * square);
}

// The glint that travels along the `number`th line: a Gaussian in y, right to 0.02 of its height. Its place,
// 0.5 + 0.66 sin(0.0423 t - 0.8 n), and its width, 0.15 + 0.025 sin(1.7 n + 0.0171 t), come from the sines of time alone.
float Sparkle(Strings strings, float number) {
    const float4 glint = strings.glint;
    const float center = 0.5 + 0.66 * (glint.x * cos(0.8 * number) - glint.y * sin(0.8 * number));
    const float width = 0.15 + 0.025 * (glint.w * sin(1.7 * number) + glint.z * cos(1.7 * number));
    const float scaled = (strings.place.y - center) / width;
    float low = saturate(1.0 - 0.0625 * scaled * scaled);
    low *= low;
    low *= low;
    low *= low;
    return 0.75 * low * low;
}

// Curves bend a little by themselves, each at its own pace: 0.012 sin(2.4 y + 0.9 n + 0.031 t) sin(0.043 t + 1.3 n).
float Sway(Strings strings, float number) {
    const float wave = strings.wave.x * cos(0.9 * number) + strings.wave.y * sin(0.9 * number);
    const float beat = strings.beat.x * cos(1.3 * number) + strings.beat.y * sin(1.3 * number);
    return 0.012 * wave * beat;
}

// The curve's x at the strings' y, before it sways.
float Parabola(Strings strings, float start, float slope, float bend) {
    return start + strings.place.y * (slope + bend * strings.place.y);
}

// Two wide, translucent veils, cool above and warm below, brightest behind their edge.
float3 Veils(float3 color, Strings strings) {
    const float sharpness = Sharpness(strings, 0.001);
    const float3 tint =
        lerp(float3(0.3, 0.39, 0.46), float3(0.66, 0.47, 0.2), Smooth(saturate(0.15 + strings.place.y)));
    [unroll] for (int i = 0; i < 2; ++i) {
        const float number = 3.0 + float(i);
        const float curve = Parabola(strings, 0.3 + 0.18 * i, 0.22, -0.34 + 0.1 * i) + Sway(strings, number);
        const float inside = strings.place.x - curve;
        const float cover = Sheet(inside, sharpness);
        // Behind the edge the veil fades; before it a shadow lets it float. Either is all there is on its side.
        const float fade = exp2(kBinary * (inside > 0.0 ? inside * (-1.0 / (0.16 - 0.03 * i)) : inside * (1.0 / 0.07)));
        const float bright = inside > 0.0 ? fade : 1.0;
        const float shaded = inside > 0.0 ? 1.0 : fade;
        color += tint * (cover * bright * (0.16 - 0.03 * i));
        color *= 1.0 - 0.2 * shaded * (1.0 - cover);
        color += tint * (Thread(inside, sharpness) * (0.1 + Sparkle(strings, number)));
    }
    return color;
}

// Three ribbons of cloth: lit along the left edge, dark towards the right one.
float3 Ribbons(float3 color, Strings strings) {
    const float sharpness = Sharpness(strings, 0.0012);
    const float3 tint = float3(0.16, 0.125, 0.052);
    [unroll] for (int i = 0; i < 3; ++i) {
        const float number = float(i);
        const float sway = Sway(strings, number);
        const float left = Parabola(strings, 0.901 + 0.042 * i, -0.62 + 0.06 * i, 0.5 - 0.02 * i) + sway;
        const float right = Parabola(strings, 1.19 + 0.045 * i, -0.46 + 0.05 * i, 0.32) + sway;
        const float inside = strings.place.x - left;
        const float beyond = right - strings.place.x;
        const float cover = Sheet(inside, sharpness) * Sheet(beyond, sharpness);
        const float across = saturate(inside / (right - left));
        color *= 1.0 - cover * (0.06 + 0.34 * across);
        color += tint * (cover * exp2(inside * (-kBinary / 0.11)) * 1.2 +
                         Thread(inside, sharpness) * (0.6 + 4.0 * Sparkle(strings, number)) +
                         Thread(beyond, sharpness) * (0.3 + 2.0 * Sparkle(strings, number + 0.5)));
    }
    return color;
}

// Six threads that follow the ribbons loosely.
float3 Strands(float3 color, Strings strings) {
    static const float starts[6] = {0.904, 0.95, 0.913, 0.746, 0.923, 0.897};
    static const float slopes[6] = {-0.56, -0.51, -0.5, -0.3, -0.68, -0.42};
    static const float bends[6] = {0.44, 0.4, 0.28, 0.12, 0.6, 0.16};
    const float sharpness = Sharpness(strings, 0.0015);
    float light = 0.0;
    [unroll] for (int i = 0; i < 6; ++i) {
        const float number = 5.0 + float(i);
        const float curve = Parabola(strings, starts[i], slopes[i], bends[i]) + 1.5 * Sway(strings, number);
        const float strength = i < 3 ? 1.0 : 0.15;
        light += strength * (0.12 + Sparkle(strings, number)) * Thread(strings.place.x - curve, sharpness);
    }
    return color + light * float3(0.85, 0.6, 0.26);
}

// Three arcs low on the right, seen only around one place.
float3 Arcs(float3 color, Strings strings) {
    const float sharpness = Sharpness(strings, 0.00065);
    const float window = Bell(strings.place - float2(0.87, 0.8), float2(0.18, 0.14));
    float soft = 0.0;
    float bright = 0.0;
    [unroll] for (int i = 0; i < 3; ++i) {
        const float number = 11.0 + float(i);
        const float curve = Parabola(strings, 1.2 - 0.035 * i, 0.02 * i, -0.48) + 0.5 * Sway(strings, number);
        const float inside = strings.place.x - curve;
        soft += Sheet(inside, sharpness) * exp2(inside * (-kBinary / 0.09));
        bright += Thread(inside, sharpness) * (0.12 + 0.6 * Sparkle(strings, number));
    }
    return color + (window * soft) * float3(0.13, 0.088, 0.036) + (window * bright) * float3(0.75, 0.45, 0.16);
}

float3 Filaments(float3 color, float2 place, Interpolants terms) {
    const Strings strings = StringsAt(place, terms);
    color = Veils(color, strings);
    color = Ribbons(color, strings);
    color = Strands(color, strings);
    return Arcs(color, strings);
}
