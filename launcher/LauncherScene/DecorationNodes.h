// Nodes that are seen and never touched: the pointer goes to what lies beneath them.
#pragma once

#include "Scene/EllipsePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"

/// Text over a control.
class DecorationText : public Tamborel::TextPrimitive {
public:
    bool HitTest(Tamborel::Point) const override { return false; }
};

/// A radio mark, a knob.
class DecorationEllipse : public Tamborel::EllipsePrimitive {
public:
    bool HitTest(Tamborel::Point) const override { return false; }
};

/// The border of a button.
class DecorationRectangle : public Tamborel::RectangleNode {
public:
    bool HitTest(Tamborel::Point) const override { return false; }
};
