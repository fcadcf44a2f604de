// What the blit is told. Tamborel::BlitConstants is the mirror of this buffer. The vertex program reads it, at b1, and
// hands on what follows from it: see BlitTerms.hlsli.
cbuffer BlitConstants : register(b1) {
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
