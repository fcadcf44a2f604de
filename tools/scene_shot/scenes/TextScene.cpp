#include "tools/scene_shot/scenes/Parts.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"

#include <utility>

namespace SceneShot {

namespace {

using namespace Tamborel;

constexpr const wchar_t* kSentence = L"Every window starts as an empty page; what is on it is yours.";

/// A text in a box whose edges can be seen.
std::shared_ptr<TextPrimitive> AddBoxed(SceneNode& root, const Rect& box, std::wstring text, float size = 14) {
    AddRectangle(root, box, Colour(0x1D2430));
    return AddText(root, box, std::move(text), size);
}

void AddAlignments(SceneNode& root) {
    AddCaption(root, 20, 10, L"leading, trailing, centre, justified");
    for (std::uint32_t alignment = 0; alignment < 4; ++alignment) {
        const float left = 20 + 190 * static_cast<float>(alignment);
        const auto text = AddBoxed(root, {left, 28, left + 175, 92}, kSentence);
        text->textAlignment = alignment;
        text->wordWrapping = DWRITE_WORD_WRAPPING_WRAP;
    }
    AddCaption(root, 20, 102, L"near, far, centre");
    const wchar_t* const names[] = {L"Near", L"Far", L"Centre"};
    for (std::uint32_t alignment = 0; alignment < 3; ++alignment) {
        const float left = 20 + 190 * static_cast<float>(alignment);
        AddBoxed(root, {left, 120, left + 175, 170}, names[alignment], 16)->paragraphAlignment = alignment;
    }
}

void AddWrapping(SceneNode& root) {
    AddCaption(root, 20, 180, L"wrap, no wrap, emergency break, whole word, character");
    for (std::uint32_t wrapping = 0; wrapping < 5; ++wrapping) {
        const float left = 20 + 152 * static_cast<float>(wrapping);
        const auto text = AddBoxed(root, {left, 198, left + 120, 266}, L"Some words, then Incomprehensibilities.");
        text->wordWrapping = wrapping;
        if (wrapping == DWRITE_WORD_WRAPPING_NO_WRAP) text->clipToBounds = true;
    }
}

void AddClipAndOutline(SceneNode& root) {
    AddCaption(root, 20, 276, L"cut at its box, not cut, outlined, outline alone");
    const auto cut = AddBoxed(root, {20, 294, 195, 320}, L"Typing gjpqy", 26);
    cut->clipToBounds = true;
    AddBoxed(root, {210, 294, 385, 320}, L"Typing gjpqy", 26);
    const auto outlined = AddText(root, {400, 290, 575, 330}, L"Outlined", 30, Colour(0xF2B84B));
    outlined->outlineColor = Colour(0x6B1E2C);
    outlined->outlineWidth = 4;
    outlined->fontWeight = 700;
    const auto hollow = AddText(root, {590, 290, 765, 330}, L"Hollow", 30, {});
    hollow->outlineColor = Colour(0x3A8DDE);
    hollow->outlineWidth = 1.5F;
}

void AddScripts(SceneNode& root) {
    AddCaption(root, 20, 344, L"right to left, mixed, CJK by fallback, combining marks, a family that is missing");
    AddText(root, {20, 362, 195, 390}, L"שלום עולם", 18);
    AddText(root, {210, 362, 385, 390}, L"Level (שלוש) 3 مرحبا", 18);
    AddText(root, {400, 362, 575, 390}, L"日本語 中文", 18);
    AddText(root, {590, 362, 765, 390}, L"Ångström, é, ö̂", 18);
    AddText(root, {20, 392, 385, 420}, L"No such family, but readable", 18)->fontFamily = L"No Such Family 4711";
    AddText(root, {400, 392, 765, 420}, L"Ελληνικά, Кириллица, Tiếng Việt", 18);
}

void AddSizes(SceneNode& root) {
    AddCaption(root, 20, 430, L"sizes, weights");
    float left = 20;
    for (const float size : {9.0F, 11.0F, 14.0F, 18.0F, 24.0F, 36.0F}) {
        const auto text = AddText(root, {left, 446, left + 100, 500}, L"Abg", size);
        text->paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_FAR;
        left += 20 + size * 2.2F;
    }
    for (const std::uint32_t weight : {300U, 400U, 600U, 700U}) {
        AddText(root, {left, 446, left + 90, 500}, std::to_wstring(weight) + L" Abg", 18)->fontWeight = weight;
        left += 90;
    }
}

}  // namespace

Scene TextScene() {
    return {"text", "alignments, wrapping, clip, outline, scripts, a missing family, sizes", [](const View& view) {
                auto root = RootInUnits(view);
                AddAlignments(*root);
                AddWrapping(*root);
                AddClipAndOutline(*root);
                AddScripts(*root);
                AddSizes(*root);
                return root;
            }};
}

}  // namespace SceneShot
