// The order in which "Quiet Gold Sunrise" is painted. Needs PixelProgram.hlsli, QuietGoldSunriseLight.hlsli and a
// function Filaments(color, place, terms), which lays the fine lines over the wash.
float4 PaintSunrise(Interpolants input) {
    const float2 pixel = PixelPosition(input);
    const float2 place = SunrisePlace(pixel, input);
    float3 color = Filaments(BaseWash(place), place, input);
    color = TwistColor(color + BreathingBlot(place, input), place, input);
    // Light is laid over as if through a screen: it never reaches white, however strong the glow.
    color = 1.0 - (1.0 - color) * exp2(-kBinary * input.sunriseSun.w * SunLight(place, input));
    return Finish(input, saturate(color + 0.005882353 * Grain(floor(pixel), input)));
}
