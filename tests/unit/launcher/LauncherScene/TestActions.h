// What stands for the world around the screen in its tests.
#pragma once

#include "launcher/LauncherScene/LauncherScene.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <vector>

/// Answers as the test says, when the test says so.
class TestActions : public LauncherActions {
public:
    LauncherSettings settings;
    std::vector<LauncherSettings> saved;
    std::vector<std::wstring> judged;
    std::vector<std::wstring> validFolders;
    SceneSurroundings surroundings{.width = 1538, .height = 1505, .dpi = 96, .zoomed = false};
    std::optional<DWORD> exitCode;

    struct Discovery {
        bool browse;
        std::wstring folder;
    };
    struct Launch {
        std::wstring folder;
        bool modern;
        DWORD mode;
        bool fullscreen;
    };

    LauncherSettings Load() override { return settings; }
    void Save(const LauncherSettings& given) override { saved.push_back(given); }
    bool IsValidFolder(const std::wstring& folder) override {
        judged.push_back(folder);
        for (const std::wstring& valid : validFolders) {
            if (valid == folder) return true;
        }
        return false;
    }
    GameDiscovery::Result Discover(bool browse, HWND, const std::wstring& folder) noexcept override {
        std::unique_lock guard(mutex_);
        discoveries_.push_back({browse, folder});
        changed_.notify_all();
        changed_.wait(guard, [&] { return discovered_.has_value(); });
        GameDiscovery::Result result = std::move(*discovered_);
        discovered_.reset();
        return result;
    }
    GameLaunch::Result Start(const std::wstring& folder, bool modern, DWORD mode, bool fullscreen) noexcept override {
        std::unique_lock guard(mutex_);
        starts_.push_back({folder, modern, mode, fullscreen});
        changed_.notify_all();
        changed_.wait(guard, [&] { return started_.has_value(); });
        GameLaunch::Result result = std::move(*started_);
        started_.reset();
        return result;
    }
    std::optional<DWORD> ExitCode(const GameLaunch::Handle&) override { return exitCode; }
    SceneSurroundings Surroundings(const Tamborel::FrameWindow*) override { return surroundings; }

    /// What was saved last; a failure if nothing was.
    LauncherSettings LastSaved() const {
        if (!saved.empty()) return saved.back();
        ADD_FAILURE() << "nothing was saved";
        return {};
    }
    /// Lets the discovery that is at work, or the next one, end with this.
    void FinishDiscovery(GameDiscovery::Result result) {
        const std::lock_guard guard(mutex_);
        discovered_ = std::move(result);
        changed_.notify_all();
    }
    void FinishStart(GameLaunch::Result result) {
        const std::lock_guard guard(mutex_);
        started_ = std::move(result);
        changed_.notify_all();
    }
    /// All that were asked for, once there are `count`.
    std::vector<Discovery> Discoveries(std::size_t count) {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [&] { return discoveries_.size() >= count; });
        return discoveries_;
    }
    std::vector<Launch> Starts(std::size_t count) {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [&] { return starts_.size() >= count; });
        return starts_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<GameDiscovery::Result> discovered_;
    std::optional<GameLaunch::Result> started_;
    std::vector<Discovery> discoveries_;
    std::vector<Launch> starts_;
};
