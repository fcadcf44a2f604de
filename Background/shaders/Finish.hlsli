// What every kind does to its colour in the end: the grade, which the renderer keeps neutral here, the tint, the range,
// and the alpha multiplied in. All of it is linear in the colour: factors of its channels, then what is added.
struct Finishing {
    float4 red;
    float4 green;
    float4 blue;
    float alpha;
};

Finishing FinishingOfConstants() {
    const Grading grading = GradingOf(float4(colorHueDegrees, colorSaturation, colorBrightness, colorContrast));
    const float4 range = rangeMax - rangeMin;
    Finishing finishing;
    finishing.alpha = rangeMin.a + range.a * diffuseColor.a;
    const float3 scale = finishing.alpha * range.rgb * diffuseColor.rgb;
    const float3 offset = finishing.alpha * rangeMin.rgb + scale * grading.offset;
    finishing.red = float4(scale.r * grading.turn[0], offset.r);
    finishing.green = float4(scale.g * grading.turn[1], offset.g);
    finishing.blue = float4(scale.b * grading.turn[2], offset.b);
    return finishing;
}

float4 FinishWith(Finishing finishing, float3 color) {
    return float4(dot(finishing.red.rgb, color) + finishing.red.a, dot(finishing.green.rgb, color) + finishing.green.a,
                  dot(finishing.blue.rgb, color) + finishing.blue.a, finishing.alpha);
}
