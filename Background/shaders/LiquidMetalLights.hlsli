// The two lights that both metals have.

// How much of a light a surface sends to the eye: spread, and mirrored.
struct Shine {
    float diffuse;
    float specular;
};

float Power2(float x) { return x * x; }
float Power4(float x) { return Power2(Power2(x)); }
float Power8(float x) { return Power2(Power4(x)); }
float Power16(float x) { return Power2(Power8(x)); }
float Power25(float x) { return Power16(x) * Power8(x) * x; }
float Power50(float x) { return Power2(Power25(x)); }

// `view` points from the surface to the eye. All directions have length 1.
Shine ShineOf(float3 toLight, float3 normal, float3 view) {
    const float facing = dot(toLight, normal);
    Shine shine;
    shine.diffuse = max(facing, 0.0);
    shine.specular = max(2.0 * facing * dot(normal, view) - dot(toLight, view), 0.0);  // dot(reflect(-toLight, n), view)
    return shine;
}

float3 KeyLight(Shine shine) {
    const float diffuse4 = Power4(shine.diffuse);
    // (0.6, 0.8, 1) of the sixteenth power, and a tenth of that of the fourth.
    return (Power4(diffuse4) + 0.1 * diffuse4) * float3(0.6, 0.8, 1.0) +
           Power50(shine.specular) * float3(0.7745967, 0.8944272, 1.0);
}

float3 WarmFill(Shine shine) {
    const float diffuse2 = Power2(shine.diffuse);
    return (Power4(diffuse2) + 0.1 * diffuse2) * float3(0.15, 0.1341641, 0.1161895) +
           Power25(shine.specular) * float3(1.0, 0.9457416, 0.8801118);
}
