// One triangle that covers the whole target; the scissor cuts out what is painted.
float4 main(uint vertex : SV_VertexID) : SV_POSITION {
    return float4(vertex == 1 ? 3.0 : -1.0, vertex == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
