// The order in which "Quiet Gold Sunrise" is painted. Needs PixelProgram.hlsli,
// QuietGoldSunriseLight.hlsli and a function Filaments(color, place, pixel),
// which lays the fine lines over the wash.
float4 PaintSunrise(float2 pixelPlace) {
    const float2 place = SunrisePlace(pixelPlace / iResolution.xy, iTime);
    const float pixel = 1.0 / iResolution.x;
    float3 color = Filaments(BaseWash(place), place, pixel);
    color = TwistColor(color + BreathingBlot(place, iTime), place, iTime);
    // Light is laid over as if through a screen: it never reaches white, however strong the glow.
    color = 1.0 - (1.0 - color) * exp(-SunLight(place, iTime, pixel) * sunriseGlow);
    return Finish(saturate(color + 0.005882353 * Grain(floor(pixelPlace), iTime, iFrame)));
}
