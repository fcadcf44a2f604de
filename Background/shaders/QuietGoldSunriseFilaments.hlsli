// The folds and fine lines of "Quiet Gold Sunrise". Each is a curve x = g(y) in the plane, y running downward; a sheet
// lies to the right of its curve.

// How much of a sheet covers a point that lies `inside` it.
float Sheet(float inside, float edge) { return Smooth(saturate(0.5 + 0.5 * inside / edge)); }

// A line of about `edge` half width, with a faint halo of eight times that.
float Thread(float aside, float edge) {
    const float scaled = aside / edge;
    const float halo = 0.125 * scaled;
    return exp(-scaled * scaled) + 0.16 * exp(-halo * halo);
}

// The glint that travels along the `number`th line.
float Sparkle(float y, float number, float time) {
    const float center = 0.5 + 0.66 * sin(0.0423 * time - 0.8 * number);
    const float width = 0.15 + 0.025 * sin(1.7 * number + 0.0171 * time);
    const float scaled = (y - center) / width;
    return 0.75 * exp(-scaled * scaled);
}

// Curves bend a little by themselves, each at its own pace.
float Sway(float y, float number, float time) {
    return 0.012 * sin(2.4 * y + 0.9 * number + 0.031 * time) * sin(0.043 * time + 1.3 * number);
}

// Two wide, translucent veils, cool above and warm below, brightest behind their edge.
float3 Veils(float3 color, float2 place, float pixel) {
    const float edge = max(0.7 * pixel, 0.001);
    [unroll] for (int i = 0; i < 2; ++i) {
        const float number = 3.0 + float(i);
        const float y = place.y;
        const float curve = 0.3 + 0.18 * i + 0.22 * y - (0.34 - 0.1 * i) * y * y + Sway(y, number, iTime);
        const float inside = place.x - curve;
        const float3 tint = lerp(float3(0.3, 0.39, 0.46), float3(0.66, 0.47, 0.2), Smooth(saturate(0.15 + y)));
        const float fall = exp(-max(inside, 0.0) / (0.16 - 0.03 * i));
        color += tint * Sheet(inside, edge) * fall * (0.16 - 0.03 * i);
        // The shadow before the edge lets the veil float.
        color *= 1.0 - 0.2 * exp(min(inside, 0.0) / 0.07) * (1.0 - Sheet(inside, edge));
        color += tint * Thread(inside, edge) * (0.1 + Sparkle(y, number, iTime));
    }
    return color;
}

// Three ribbons of cloth: lit along the left edge, dark towards the right one.
float3 Ribbons(float3 color, float2 place, float pixel) {
    const float edge = max(0.7 * pixel, 0.0012);
    const float3 tint = float3(0.16, 0.125, 0.052);
    [unroll] for (int i = 0; i < 3; ++i) {
        const float number = float(i);
        const float y = place.y;
        const float sway = Sway(y, number, iTime);
        const float left = 0.901 + 0.042 * i - (0.62 - 0.06 * i) * y + (0.5 - 0.02 * i) * y * y + sway;
        const float right = 1.19 + 0.045 * i - (0.46 - 0.05 * i) * y + 0.32 * y * y + sway;
        const float inside = place.x - left;
        const float cover = Sheet(inside, edge) * Sheet(right - place.x, edge);
        const float across = saturate(inside / max(right - left, 0.05));
        color *= 1.0 - cover * (0.06 + 0.34 * across);
        color += tint * cover * exp(-max(inside, 0.0) / 0.11) * 1.2;
        color += tint * Thread(inside, edge) * (0.6 + 4.0 * Sparkle(y, number, iTime));
        color += tint * Thread(right - place.x, edge) * (0.3 + 2.0 * Sparkle(y, number + 0.5, iTime));
    }
    return color;
}

// Six threads that follow the ribbons loosely.
float3 Strands(float3 color, float2 place, float pixel) {
    static const float starts[6] = {0.904, 0.95, 0.913, 0.746, 0.923, 0.897};
    static const float slopes[6] = {-0.56, -0.51, -0.5, -0.3, -0.68, -0.42};
    static const float bends[6] = {0.44, 0.4, 0.28, 0.12, 0.6, 0.16};
    const float edge = max(0.7 * pixel, 0.0015);
    const float y = place.y;
    [unroll] for (int i = 0; i < 6; ++i) {
        const float number = 5.0 + float(i);
        const float curve = starts[i] + slopes[i] * y + bends[i] * y * y + 1.5 * Sway(y, number, iTime);
        const float strength = i < 3 ? 1.0 : 0.15;
        const float glint = 0.12 + Sparkle(y, number, iTime);
        color += strength * glint * Thread(place.x - curve, edge) * float3(0.85, 0.6, 0.26);
    }
    return color;
}

// Three arcs low on the right, seen only around one place.
float3 Arcs(float3 color, float2 place, float pixel) {
    const float edge = max(0.7 * pixel, 0.00065);
    const float window = Bell(place - float2(0.87, 0.8), float2(0.18, 0.14));
    const float y = place.y;
    [unroll] for (int i = 0; i < 3; ++i) {
        const float number = 11.0 + float(i);
        const float curve = 1.2 - 0.48 * y * y - 0.035 * i + 0.02 * i * y + 0.5 * Sway(y, number, iTime);
        const float inside = place.x - curve;
        color += window * float3(0.13, 0.088, 0.036) * Sheet(inside, edge) * exp(-max(inside, 0.0) / 0.09);
        color += window * float3(0.75, 0.45, 0.16) * Thread(inside, edge) * (0.12 + 0.6 * Sparkle(y, number, iTime));
    }
    return color;
}

float3 Filaments(float3 color, float2 place, float pixel) {
    color = Veils(color, place, pixel);
    color = Ribbons(color, place, pixel);
    color = Strands(color, place, pixel);
    return Arcs(color, place, pixel);
}
