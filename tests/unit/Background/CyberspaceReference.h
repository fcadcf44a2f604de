// The cube field of "Cyberspace", calculated on the processor, in doubles but for the hash: where a point lands, in
// which cell and face and on which tile, and how high the block there stands.
#pragma once

struct CyberspaceReference {
    double width = 0.0;
    double height = 0.0;
    double time = 0.0;

    struct Point {
        double place[2];  ///< In the plane.
        double id[2];     ///< Of the hexagon.
        int face;         ///< 1 left, 2 right, 3 top.
        double onFace[2];
        double tile[2];
        double random;  ///< The hexagon's.
        /// How far from the nearest line at which hexagon, face or tile change, in sides of a tile.
        double clearance;
    };

    /// For a point of the picture in pixels, y upward.
    Point At(double x, double y) const;

    /// Height of the block at a point in a hexagon with this random number.
    double BlockHeight(const Point& point, double random) const;

    /// The random number of a place; rounded as floats are at every step.
    static double Hash(double x, double y);
};
