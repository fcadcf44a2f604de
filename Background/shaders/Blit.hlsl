// Brings the background, or a flat fill, to the window's image: grade, white scale, the frame's fills, dither.
#include "ColorGrade.hlsli"
#include "Interpolants.hlsli"

// Tamborel::BlitConstants is the mirror of this buffer.
cbuffer BlitConstants : register(b0) {
    float SdrWhiteScale;
    float UseThemeBackground;  // 0 flat, 1 background, 2 background that brings its own noise
    float IsMaximized;
    float MaximizedChromePolicy;  // 0 no frame, 1 all kept, 2 nothing kept
    float4 WindowMetrics;         // window width and height, then the image's place in the window
    float4 ChromeMetrics;         // frame, title and inner border, then 1 where the inner border shows
    float4 ClientFrameExtension;  // left, top, right, bottom
    float4 TitleBarFill;
    float4 FrameFill;
    float4 InnerBorderColor;
    float4 FlatInteriorFill;
    float4 ColorGrade;
};

Texture2D<float4> SourceTex : register(t0);
SamplerState LinearSampler : register(s0);

float3 MixFill(float3 color, float4 fill) { return lerp(color, fill.rgb, saturate(fill.a)); }

// `pixel` is the whole-numbered position in the image.
float3 PaintChrome(float3 color, float2 pixel) {
    const float2 place = pixel + WindowMetrics.zw;
    float frame = max(ChromeMetrics.x, 0.0);
    float title = max(ChromeMetrics.y, 0.0);
    float border = max(ChromeMetrics.z, 0.0);
    float4 extension = max(ClientFrameExtension, 0.0);
    if (IsMaximized > 0.5) {
        const float policy = clamp(floor(MaximizedChromePolicy + 0.5), 0.0, 2.0);
        if (policy < 0.5) {
            frame = 0.0;
            border = 0.0;
        } else if (policy > 1.5) {
            frame = 0.0;
            title = 0.0;
            border = 0.0;
            extension = 0.0;
        }
    }

    const float2 first = float2(extension.x + frame, extension.y + title);
    const float2 last = WindowMetrics.xy - frame - extension.zw;
    const bool belowClient = place.y >= last.y;
    const bool aboveClient = place.y < first.y;
    const bool besideClient = place.x < first.x || place.x >= last.x;
    if (belowClient || (!aboveClient && besideClient)) {
        color = MixFill(color, FrameFill);
    } else if (aboveClient) {
        color = MixFill(color, TitleBarFill);
    } else if (ChromeMetrics.w > 0.5 && border > 0.0) {
        if (any(place < first + border) || any(place >= last - border)) color = MixFill(color, InnerBorderColor);
    }
    return color;
}

// Noise of one 8-bit step, the same on all channels, so that slow gradients show no bands.
float3 Dither(float3 color, float2 pixel) {
    const float noise = frac(sin(dot(pixel, float2(127.1, 311.7))) * 43758.55) - 0.5;
    return saturate(color + noise / 255.0);
}

float4 main(Interpolants input) : SV_TARGET {
    const float2 pixel = floor(input.position.xy);
    const bool theme = UseThemeBackground > 0.5;
    float4 source = FlatInteriorFill;
    if (theme) source = SourceTex.Sample(LinearSampler, input.textureCoordinate);

    float3 color = source.rgb;
    if (theme && !IsNeutral(ColorGrade)) color = saturate(GradeColor(color, ColorGrade));
    color *= SdrWhiteScale;
    if (all(WindowMetrics.xy > 0.0)) color = PaintChrome(color, pixel);
    if (UseThemeBackground < 1.5) color = Dither(color, pixel);
    return float4(color, source.a);
}
