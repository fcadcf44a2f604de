// The colour grade: hue in degrees, saturation, brightness, contrast. Neutral is 0, 1, 0, 1.
//
// All its steps are linear, so together they are one matrix and an offset. These depend on constants alone: the vertex
// program works them out, and a single pixel is left with three products of three factors each.

#ifndef COLOR_GRADE_HLSLI
#define COLOR_GRADE_HLSLI

static const float kGradeTolerance = 1e-5;
static const float kRadiansPerDegree = 0.01745329;

struct Grading {
    float3x3 turn;
    float3 offset;
};

bool IsNeutral(float4 grade) { return all(abs(grade - float4(0.0, 1.0, 0.0, 1.0)) <= kGradeTolerance); }

// Turns the colour about the luma axis of YIQ. The matrices to YIQ and back are rounded: they make no identity at an
// angle of 0, where the turn is left out.
float3x3 HueTurn(float degrees) {
    static const float3x3 toYiq = {{0.299, 0.587, 0.114}, {0.596, -0.274, -0.322}, {0.211, -0.523, 0.312}};
    static const float3x3 fromYiq = {{1.0, 0.956, 0.621}, {1.0, -0.272, -0.647}, {1.0, -1.106, 1.703}};
    static const float3x3 none = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    const float cosine = cos(degrees * kRadiansPerDegree);
    const float sine = sin(degrees * kRadiansPerDegree);
    const float3x3 turn = {{1.0, 0.0, 0.0}, {0.0, cosine, -sine}, {0.0, sine, cosine}};
    const float3x3 turned = mul(fromYiq, mul(turn, toYiq));
    const bool turns = abs(degrees) > kGradeTolerance;
    const float3x3 result = {turns ? turned[0] : none[0], turns ? turned[1] : none[1], turns ? turned[2] : none[2]};
    return result;
}

// Hue, then saturation about the Rec. 709 luma, then brightness, then contrast about one half. Exactly nothing for a
// neutral grade.
Grading GradingOf(float4 grade) {
    const float3x3 hue = HueTurn(grade.x);
    const float3 luma = mul(float3(0.2126, 0.7152, 0.0722), hue);
    const bool neutral = IsNeutral(grade);
    Grading grading;
    [unroll] for (int i = 0; i < 3; ++i) {
        const float3 row = grade.w * (luma + grade.y * (hue[i] - luma));
        grading.turn[i] = neutral ? float3(i == 0, i == 1, i == 2) : row;
    }
    const float offset = (grade.z - 0.5) * grade.w + 0.5;
    grading.offset = neutral ? float3(0.0, 0.0, 0.0) : float3(offset, offset, offset);
    return grading;
}

// Not clamped.
float3 GradeColor(float3 color, Grading grading) { return mul(grading.turn, color) + grading.offset; }

#endif
