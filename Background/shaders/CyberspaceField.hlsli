// Where a sample lands in the cube field, and how high the blocks around it stand. Needs Numbers.hlsli.
// Plane coordinates are those of the
// picture turned by half: x grows to the left, y downward, and the picture's height spans two units before the zoom.

static const float2 kHexagonPeriod = float2(1.0, 1.732051);
static const float kFaceGrid = 10.0;  // tiles on each side of a cube's face

// The place in the plane that a point of the picture, in pixels, shows at `time`: zoom, lens, pan.
float2 FieldPlace(float2 pixel, float2 size, float time) {
    const float2 q = (2.0 * pixel - size) / -size.y;
    const float swing = sin(0.045 * time);
    const float2 x = (0.8 + 0.25 * swing) * q;
    // Far outside any window that people have, the lens stops growing: cells would otherwise get numbers beyond what
    // a float can tell apart, and their hash beyond what a device's sine takes.
    const float bulge = 0.025 * pow(min(length(x), 16.0), 2.5 - 0.5 * swing);
    return x - (bulge * x + float2(0.03 * time, cos(0.03 * time)));
}

struct HexagonCell {
    float2 id;     // the centre, counted in periods
    float2 local;  // from the centre
};

// Two rectangular lattices, each at the middles of the other, carry the hexagons' centres: the nearer one has the point.
HexagonCell FindHexagon(float2 place) {
    const float2 first = floor(place / kHexagonPeriod) + 0.5;
    const float2 second = floor((place - float2(0.5, 1.0)) / kHexagonPeriod) + 1.0;
    const float2 fromFirst = place - first * kHexagonPeriod;
    const float2 fromSecond = place - second * kHexagonPeriod;
    HexagonCell cell;
    if (dot(fromFirst, fromFirst) < dot(fromSecond, fromSecond)) {
        cell.id = first;
        cell.local = fromFirst;
    } else {
        cell.id = second;
        cell.local = fromSecond;
    }
    return cell;
}

struct CubeFace {
    float number;     // 1 left, 2 right, 3 top
    float2 position;  // 0 to 1 on both axes; smaller numbers lie where the face looks to
};

// The hexagon is a cube's outline. With the axes swapped, x down and y to the left, three spokes at 0, 120 and 240
// degrees are its visible edges. On all three faces a step outward is a step of the same length against both axes of
// the face, which is what lets one rule extrude the blocks of every face.
CubeFace FindFace(float2 local) {
    const float x = local.y;
    const float y = local.x;
    CubeFace face;
    if (x < -0.57777 * abs(y)) {
        face.number = 3.0;
        face.position = frac(float2(y + 1.72 * x, 1.72 * x - y));
    } else if (y > 0.0) {
        face.number = 1.0;
        face.position = frac(float2(-2.0 * y, -1.73 * (x + 0.5780347 * y)));
    } else {
        face.number = 2.0;
        face.position = frac(float2(2.0 * y, -1.73 * (x - 0.5780347 * y)));
    }
    return face;
}

// Noise with one random number per whole place and a smooth way between them.
float ValueNoise(float2 place) {
    const float2 corner = floor(place);
    const float2 way = Smooth(place - corner);
    const float upper = lerp(Hash(corner), Hash(corner + float2(1.0, 0.0)), way.x);
    const float lower = lerp(Hash(corner + float2(0.0, 1.0)), Hash(corner + float2(1.0, 1.0)), way.x);
    return lerp(upper, lower, way.y);
}

// Height of the block on `tile`, in sides of a tile. `cell` is the cube's random number. The blocks fade towards the
// face's rim, so none reaches over its edge.
float BlockHeight(float2 tile, float cell, float face, float time) {
    const float peaks = ValueNoise(cell * tile * face + 0.15 * time * (0.75 + 0.15 * Hash(tile)));
    const float peaks2 = peaks * peaks;
    const float peaks4 = peaks2 * peaks2;
    const float rolling = ValueNoise(0.2 * tile + 0.075 * time * (0.5 + cell * face));
    const float height = 2.0 * peaks4 * peaks4 + rolling - 0.1;
    return min(height * Smooth(saturate((length(tile - 4.5) - 6.0) * -0.25)), 0.95);
}
