#pragma once

#include "TestActions.h"

#include "Background/BackgroundRenderer.h"
#include "Scene/InputRouter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A screen without a window.
class SceneTest : public testing::Test {
protected:
    std::shared_ptr<TestActions> actions_ = std::make_shared<TestActions>();
    std::shared_ptr<LauncherScene> scene_;
    Tamborel::BackgroundRenderer renderer_;

    /// Makes the screen from the actions' settings and runs its first frame.
    LauncherScene& Show(bool developerControls = false, bool simulate = false) {
        scene_ = std::make_shared<LauncherScene>(nullptr, &renderer_, developerControls, simulate, actions_);
        Frame();
        return *scene_;
    }
    /// A screen on an installation that is valid.
    LauncherScene& ShowReady() {
        actions_->settings.Folder = L"/games/quake2";
        actions_->validFolders = {L"/games/quake2"};
        return Show();
    }
    void Frame() { scene_->Update(0.016F); }

    template <class Node>
    std::vector<Node*> All() const {
        std::vector<Node*> found;
        for (const auto& child : scene_->children) {
            if (auto* node = dynamic_cast<Node*>(child.get())) found.push_back(node);
        }
        return found;
    }
    std::vector<std::wstring> Texts() const {
        std::vector<std::wstring> texts;
        for (const auto* node : All<DecorationText>()) texts.push_back(node->text);
        return texts;
    }
    bool Shows(const std::wstring& text) const {
        for (const std::wstring& shown : Texts()) {
            if (shown == text) return true;
        }
        return false;
    }
    Tamborel::Button* ButtonNamed(const std::wstring& label) const {
        for (auto* button : All<Tamborel::Button>()) {
            if (button->label == label) return button;
        }
        return nullptr;
    }
    /// The frontmost button at a place on the canvas.
    Tamborel::Button* ButtonOver(Tamborel::Point place) const {
        Tamborel::Button* found = nullptr;
        for (auto* button : All<Tamborel::Button>()) {
            if (button->HitTest(place)) found = button;
        }
        return found;
    }

    void Point(Tamborel::InputEventKind kind, Tamborel::Point canvas, std::uint32_t buttons) {
        const Tamborel::Point pixel = Transform(scene_->worldTransform, canvas);
        Tamborel::InputEvent event;
        event.kind = kind;
        event.x = pixel.x;
        event.y = pixel.y;
        event.buttons = buttons;
        router_.Route(scene_, event);
    }
    /// A click of the left button at a place on the canvas, and the frame after it.
    void Click(Tamborel::Point canvas) {
        Point(Tamborel::InputEventKind::PointerMove, canvas, 0);
        Point(Tamborel::InputEventKind::PointerDown, canvas, 1);
        Point(Tamborel::InputEventKind::PointerUp, canvas, 0);
        Frame();
    }

    Tamborel::InputRouter router_;
};

// Places on the canvas.
inline constexpr Tamborel::Point kFind{100, 340};
inline constexpr Tamborel::Point kBrowse{270, 340};
inline constexpr Tamborel::Point kModernCard{300, 500};
inline constexpr Tamborel::Point kOriginalCard{700, 500};
inline constexpr Tamborel::Point kResolution{200, 625};
inline constexpr Tamborel::Point kFullscreen{450, 622};
inline constexpr Tamborel::Point kLaunch{680, 730};
