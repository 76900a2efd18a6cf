#pragma once

#include <linux/updater/FeedUpdater.h>

#include <linux/updater/UpdateMemory.h>
#include <tests/linux/updater/support/ScriptedReleases.h>
#include <tests/support/ScriptedLog.h>
#include <tests/support/VirtualLoop.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace orrivane {

inline constexpr double day = FeedUpdater::checkInterval;

/// The updater on a virtual clock, with a source and a window that do what a test says.
struct UpdaterWorld {
    QTemporaryDir folder;
    VirtualLoop loop;
    ScriptedReleases releases;
    ScriptedPresenter window;
    UpdateMemory memory{folder.filePath("updates").toStdString()};
    ScriptedLog log;
    std::vector<std::string> opened;
    bool opens = true;
    FeedUpdater body{{loop, releases, window, memory, log}, "1.0", [this](const std::string& path) {
                         opened.push_back(path);
                         return opens;
                     }};

    UpdaterWorld() { loop.setNow(1.7e9); }

    Updater& updater() { return body; }
    bool changeCanCheck() {
        if (body.canCheckForUpdates())
            body.checkForUpdates();
        else
            window.close();
        return true;
    }
    bool findScheduledUpdate(const std::string& version) {
        body.setAutomaticallyChecksForUpdates(true);
        loop.advance(FeedUpdater::firstLook);
        releases.offer(version);
        body.checkForUpdates();
        window.press("Remind Me Later");
        return true;
    }
    bool pumpUntil(const std::function<bool()>& holds) {
        loop.runUntilIdle();
        return holds();
    }
};

/// Remembers what it is asked and told.
struct UpdaterDelegateLog : UpdaterDelegate {
    bool gentle = true;
    std::vector<std::string> calls;

    bool supportsGentleScheduledUpdateReminders() override { return gentle; }
    bool shouldHandleShowingScheduledUpdate(bool focus) override {
        calls.emplace_back(focus ? "should, focus" : "should, no focus");
        return focus;
    }
    void willHandleShowingUpdate(bool handled, const std::string& version) override {
        calls.push_back((handled ? "updater shows " : "program shows ") + version);
    }
    void didReceiveUserAttention() override { calls.emplace_back("attention"); }
    void willFinishUpdateSession() override { calls.emplace_back("finish"); }
};

struct FeedUpdaterTest : ::testing::Test, UpdaterWorld {
    UpdaterDelegateLog delegate;
    using Calls = std::vector<std::string>;

    void SetUp() override { body.create(delegate); }

    /// A scheduled check that found `version`.
    void announce(const std::string& version) {
        body.setAutomaticallyChecksForUpdates(true);
        loop.advance(FeedUpdater::firstLook);
        ASSERT_EQ(releases.checks.size(), 1U);
        releases.offer(version);
    }
    void offer(const std::string& version) {
        body.checkForUpdates();
        releases.offer(version);
    }
    std::string headline() const { return window.page ? window.page->headline : "no window"; }
};

} // namespace orrivane
