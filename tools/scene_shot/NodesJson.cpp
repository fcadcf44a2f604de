#include "tools/scene_shot/NodesJson.h"

#include "Platform/Text/Unicode.h"
#include "Scene/Button.h"
#include "Scene/EllipsePrimitive.h"
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"

#include <cxxabi.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <typeinfo>

namespace SceneShot {

namespace {

using namespace Tamborel;

std::string Number(float value) {
    if (!std::isfinite(value)) return "null";
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

std::string Quoted(std::string_view utf8) {
    std::string quoted = "\"";
    for (const char each : utf8) {
        if (each == '"' || each == '\\') {
            quoted += '\\';
            quoted += each;
        } else if (static_cast<unsigned char>(each) < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(each));
            quoted += escape.data();
        } else {
            quoted += each;
        }
    }
    quoted += '"';
    return quoted;
}

/// "Namespace::Class" without its namespaces. Names of templates don't occur.
std::string ClassName(const SceneNode& node) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> demangled(
        abi::__cxa_demangle(typeid(node).name(), nullptr, nullptr, &status), &std::free);
    const std::string name = status == 0 ? demangled.get() : typeid(node).name();
    const std::size_t colon = name.rfind(':');
    return colon == std::string::npos ? name : name.substr(colon + 1);
}

/// One object being written.
class Object {
public:
    explicit Object(std::string& out) : out_(out) { out_ += '{'; }
    ~Object() { out_ += '}'; }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void Raw(std::string_view name, std::string_view value) {
        if (!first_) out_ += ',';
        first_ = false;
        out_ += Quoted(name);
        out_ += ':';
        out_ += value;
    }
    void Add(std::string_view name, bool value) { Raw(name, value ? "true" : "false"); }
    void Add(std::string_view name, float value) { Raw(name, Number(value)); }
    void Add(std::string_view name, std::uint32_t value) { Raw(name, std::to_string(value)); }
    void Add(std::string_view name, const std::wstring& value) { Raw(name, Quoted(Platform::Utf8FromWide(value))); }
    void Add(std::string_view name, std::initializer_list<float> values) {
        std::string list = "[";
        for (const float value : values) {
            if (list.size() > 1) list += ',';
            list += Number(value);
        }
        list += ']';
        Raw(name, list);
    }
    void Add(std::string_view name, const Rect& r) { Add(name, {r.left, r.top, r.right, r.bottom}); }
    void Add(std::string_view name, const Color& c) { Add(name, {c.r, c.g, c.b, c.a}); }

private:
    std::string& out_;
    bool first_ = true;
};

void AddPaint(Object& object, const Color& fill, const Color& stroke, float strokeWidth) {
    object.Add("fill", fill);
    object.Add("stroke", stroke);
    object.Add("strokeWidth", strokeWidth);
}

void AddFont(Object& object, const std::wstring& family, float size, std::uint32_t weight) {
    object.Add("fontFamily", family);
    object.Add("fontSize", size);
    object.Add("fontWeight", weight);
}

void AddFields(Object& object, const RectangleNode& node) {
    object.Add("rect", node.rect);
    object.Add("cornerRadius", {node.radiusX, node.radiusY});
    AddPaint(object, node.fillColor, node.strokeColor, node.strokeWidth);
}

void AddFields(Object& object, const EllipsePrimitive& node) {
    object.Add("center", {node.center.x, node.center.y});
    object.Add("radius", {node.radiusX, node.radiusY});
    AddPaint(object, node.fillColor, node.strokeColor, node.strokeWidth);
}

void AddFields(Object& object, const TextPrimitive& node) {
    object.Add("rect", node.bounds);
    object.Add("text", node.text);
    object.Add("color", node.color);
    AddFont(object, node.fontFamily, node.fontSize, node.fontWeight);
    object.Add("textAlignment", node.textAlignment);
    object.Add("paragraphAlignment", node.paragraphAlignment);
}

void AddFields(Object& object, const ImagePrimitive& node) {
    object.Add("rect", node.rect);
}

void AddFields(Object& object, const Button& node) {
    object.Add("rect", node.rect);
    object.Add("cornerRadius", {node.cornerRadius, node.cornerRadius});
    object.Add("label", node.label);
    object.Add("enabled", node.enabled);
    object.Add("normalColor", node.normalColor);
    object.Add("hoverColor", node.hoverColor);
    object.Add("pressedColor", node.pressedColor);
    object.Add("disabledColor", node.disabledColor);
    object.Add("disabledTextColor", node.disabledTextColor);
    object.Add("textColor", node.textColor);
    AddFont(object, node.fontFamily, node.fontSize, node.fontWeight);
}

template <class Node>
void AddFieldsIf(Object& object, const SceneNode& node) {
    if (const auto* const one = dynamic_cast<const Node*>(&node)) AddFields(object, *one);
}

std::string ListOf(std::span<const std::shared_ptr<SceneNode>> nodes);

void Append(std::string& out, const SceneNode& node) {
    Object object(out);
    object.Raw("type", Quoted(ClassName(node)));
    object.Add("visible", node.visible);
    const Matrix3x2& m = node.worldTransform;
    object.Add("worldTransform", {m.m11, m.m12, m.m21, m.m22, m.dx, m.dy});
    AddFieldsIf<RectangleNode>(object, node);
    AddFieldsIf<EllipsePrimitive>(object, node);
    AddFieldsIf<TextPrimitive>(object, node);
    AddFieldsIf<ImagePrimitive>(object, node);
    AddFieldsIf<Button>(object, node);
    object.Raw("children", ListOf(node.children));
}

std::string ListOf(std::span<const std::shared_ptr<SceneNode>> nodes) {
    std::string list = "[";
    for (const auto& node : nodes) {
        if (list.size() > 1) list += ',';
        Append(list, *node);
    }
    return list + ']';
}

}  // namespace

std::string NodesJson(std::span<const std::shared_ptr<SceneNode>> nodes) {
    return R"({"nodes":)" + ListOf(nodes) + "}\n";
}

std::string NodesJson(const SceneNode& root) {
    std::string out = R"({"nodes":[)";
    Append(out, root);
    return out + "]}\n";
}

}  // namespace SceneShot
