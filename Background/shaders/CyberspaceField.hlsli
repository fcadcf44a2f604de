// Where a sample lands in the cube field, and how high the blocks around it stand. Needs Numbers.hlsli. Plane coordinates
// are those of the picture turned by half: x grows to the left, y downward, and the picture's height spans two units
// before the zoom.

static const float2 kHexagonPeriod = float2(1.0, 1.732051);
static const float kFaceGrid = 10.0;  // tiles on each side of a cube's face

// Where a point of the picture lies in the plane, and how far one pixel to the right and one upward are from it there.
struct FieldPoint {
    float2 place;
    float2 across;
    float2 up;
};

// Zoom, lens, pan. `pixel` and `size` are in pixels.
FieldPoint FieldPointAt(float2 pixel, float2 size, float time) {
    const float2 q = (2.0 * pixel - size) / -size.y;
    const float swing = sin(0.045 * time);
    const float zoom = 0.8 + 0.25 * swing;
    const float2 x = zoom * q;
    // Far outside any window that people have, the lens stops growing: cells would otherwise get numbers beyond what
    // a float can tell apart, and their hash beyond what a device's sine takes.
    const float exponent = 2.5 - 0.5 * swing;
    const float square = dot(x, x);
    const float bent = min(square, 256.0);
    const float slope = 0.025 * pow(max(bent, 1e-12), 0.5 * exponent - 1.0);
    const float bulge = slope * bent;
    const float2 steep = square < 256.0 ? exponent * slope * x : float2(0.0, 0.0);
    const float pixelSide = -2.0 * zoom / size.y;

    FieldPoint result;
    result.place = x - (bulge * x + float2(0.03 * time, cos(0.03 * time)));
    result.across = pixelSide * (float2(1.0 - bulge, 0.0) - steep.x * x);
    result.up = pixelSide * (float2(0.0, 1.0 - bulge) - steep.y * x);
    return result;
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

// One of a hexagon's three faces, numbered 1 left, 2 right, 3 top. Its coordinates, 0 to 1 after frac(), smaller numbers
// where the face looks to, are linear in the place in the hexagon.
struct CubeFace {
    float number;
    float2 byX;  // both coordinates' growth with local.x
    float2 byY;  // and with local.y
};

float FaceNumber(float2 local) {
    return local.y < -0.57777 * abs(local.x) ? 3.0 : (local.x > 0.0 ? 1.0 : 2.0);
}

// The hexagon is a cube's outline. With the axes swapped, x down and y to the left, three spokes at 0, 120 and 240
// degrees are its visible edges. On all three faces a step outward is a step of the same length against both axes of
// the face, which is what lets one rule extrude the blocks of every face.
CubeFace FindFace(float2 local) {
    CubeFace face;
    face.number = FaceNumber(local);
    const bool top = face.number == 3.0;
    const float side = face.number == 1.0 ? 1.0 : -1.0;
    face.byX = top ? float2(1.0, -1.0) : float2(-2.0 * side, -1.73 * 0.5780347 * side);
    face.byY = top ? float2(1.72, 1.72) : float2(0.0, -1.73);
    return face;
}

float2 FacePosition(CubeFace face, float2 local) { return face.byX * local.x + face.byY * local.y; }

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
