// Stores each thread's place, plus an offset, in a grid of 16-bit floats.
[[spv::format_rgba16f]] RWTexture2D<float4> Grid : register(u0);

cbuffer Constants : register(b0) {
    float4 offset;
};

[numthreads(8, 8, 1)]
void main(uint3 thread : SV_DispatchThreadID) {
    Grid[thread.xy] = float4(thread.xy, 0.0, 1.0) + offset;
}
