// What follows from the blit's constants alone, worked out once for a corner of the picture instead of for each pixel.
// On a software device that is more than half of the blit: there even reading a constant costs every pixel as much as
// some twenty operations.
#include "BlitConstants.hlsli"
#include "ColorGrade.hlsli"
#include "Interpolants.hlsli"

// The frame's measures as they count at the moment.
struct Chrome {
    float border;
    float2 first;  // the client rectangle's upper left corner, in the window
    float2 last;   // its lower right one
};

Chrome ChromeInForce() {
    float3 widths = max(ChromeMetrics.xyz, 0.0);  // frame, title, inner border
    float4 extension = max(ClientFrameExtension, 0.0);
    const float policy = clamp(floor(MaximizedChromePolicy + 0.5), 0.0, 2.0);
    const bool maximized = IsMaximized > 0.5;
    if (maximized && policy < 0.5) widths.xz = 0.0;
    if (maximized && policy > 1.5) {
        widths = 0.0;
        extension = 0.0;
    }
    Chrome chrome;
    chrome.border = ChromeMetrics.w > 0.5 ? widths.z : 0.0;
    chrome.first = float2(extension.x + widths.x, extension.y + widths.y);
    chrome.last = WindowMetrics.xy - widths.x - extension.zw;
    return chrome;
}

// A fill as what it adds to the colour below it and, last, how much of that it keeps, times the white scale. Without a
// window there is none.
float4 CoatOf(float4 fill) {
    const float alpha = all(WindowMetrics.xy > 0.0) ? saturate(fill.a) : 0.0;
    return float4(alpha * fill.rgb, (1.0 - alpha) * SdrWhiteScale);
}

// A rectangle as its middle and half its sides, from corners in the window. Pixels whose numbers lie from `first` up to
// but not on `last` have their middles in it: corners between two pixels move to the next one.
float4 RectangleOf(float2 first, float2 last) {
    const float2 from = ceil(first - WindowMetrics.zw);
    const float2 to = ceil(last - WindowMetrics.zw);
    return float4(0.5 * (from + to), 0.5 * (to - from));
}

void WriteBlitTerms(inout Interpolants result) {
    const bool theme = UseThemeBackground > 0.5;
    const bool graded = theme && !IsNeutral(ColorGrade);

    // Factors of the source's channels, then what is added: the grade, or the flat fill instead of any source.
    const Grading grading = GradingOf(ColorGrade);
    const float4 none = float4(0.0, 0.0, 0.0, 0.0);
    result.redTerms = theme ? float4(grading.turn[0], grading.offset.r) : float4(none.xyz, FlatInteriorFill.r);
    result.greenTerms = theme ? float4(grading.turn[1], grading.offset.g) : float4(none.xyz, FlatInteriorFill.g);
    result.blueTerms = theme ? float4(grading.turn[2], grading.offset.b) : float4(none.xyz, FlatInteriorFill.b);

    const Chrome chrome = ChromeInForce();
    result.clientRectangle = RectangleOf(chrome.first, chrome.last);
    result.innerRectangle = RectangleOf(chrome.first + chrome.border, chrome.last - chrome.border);
    result.titleCoat = CoatOf(TitleBarFill);
    result.frameCoat = CoatOf(FrameFill);
    result.borderCoat = CoatOf(InnerBorderColor);

    // The client rectangle's upper and lower edge; whether the colour is graded (one that isn't isn't limited either);
    // the dither's width, 0 for none.
    const float4 client = result.clientRectangle;
    const float dither = UseThemeBackground < 1.5 ? 1.0 / 255.0 : 0.0;
    result.levelTerms = float4(client.y - client.w, client.y + client.w, graded ? 1.0 : 0.0, dither);

    // Alpha's factor and what is added to it; what is kept of the colour where there is no coat.
    result.alphaTerms = float4(theme ? 1.0 : 0.0, theme ? 0.0 : FlatInteriorFill.a, SdrWhiteScale, 0.0);
}
