// The constant buffer of the metal surface's two programs. Tamborel::LiquidMetalConstants is its mirror.
cbuffer LiquidMetalConstants : register(b0) {
    float2 iResolution;
    float2 gridDimensions;
    float4 pointerPositionUV;
    float iTime;
    float emberStrength;
    float pointerStrength;
    float viewScale;
    float fineDetail;
    float sampleSpacing;
    float2 reserved;
};
