// The layer has the target's size: each pixel takes its own, and blending does the rest.
Texture2D Layer : register(t0);

float4 main(float4 position : SV_POSITION) : SV_TARGET {
    return Layer.Load(int3(position.xy, 0));
}
