// The constant buffer that the pixel programs of the kinds 0 to 7 share. Tamborel::Constants is its mirror: names, order
// and offsets are the same. The vertex program has it too, in another register.
cbuffer Constants : register(CONSTANTS_REGISTER) {
    float4 iResolution;
    float4 iChannelResolution[4];
    float4 rangeMin;
    float4 rangeMax;
    float4 diffuseColor;
    float4 iMouse;
    float iTime;
    float opacity;
    float colorHueDegrees;
    float colorSaturation;
    float colorBrightness;
    float colorContrast;
    int iFrame;
    float sunriseGlow;
    int pad4;
    int pad5;
    int pad6;
    int pad7;
};
