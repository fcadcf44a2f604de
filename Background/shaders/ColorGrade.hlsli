// The colour grade: hue in degrees, saturation, brightness, contrast. Neutral is 0, 1, 0, 1.

static const float kGradeTolerance = 1e-5;
static const float kRadiansPerDegree = 0.01745329;

bool IsNeutral(float4 grade) { return all(abs(grade - float4(0.0, 1.0, 0.0, 1.0)) <= kGradeTolerance); }

// Turns the colour about the luma axis of YIQ.
float3 RotateHue(float3 color, float degrees) {
    const float y = dot(color, float3(0.299, 0.587, 0.114));
    const float i = dot(color, float3(0.596, -0.274, -0.322));
    const float q = dot(color, float3(0.211, -0.523, 0.312));
    const float cosine = cos(degrees * kRadiansPerDegree);
    const float sine = sin(degrees * kRadiansPerDegree);
    const float turnedI = i * cosine - q * sine;
    const float turnedQ = i * sine + q * cosine;
    return float3(y + 0.956 * turnedI + 0.621 * turnedQ, y - 0.272 * turnedI - 0.647 * turnedQ,
                  y - 1.106 * turnedI + 1.703 * turnedQ);
}

// Saturation about the Rec. 709 luma, then brightness, then contrast about one half. Not clamped.
float3 GradeColor(float3 color, float4 grade) {
    if (abs(grade.x) > kGradeTolerance) color = RotateHue(color, grade.x);
    const float luma = dot(color, float3(0.2126, 0.7152, 0.0722));
    color = luma + grade.y * (color - luma);
    color += grade.z;
    return (color - 0.5) * grade.w + 0.5;
}
