#include "Mirror.h"

#include <algorithm>
#include <filesystem>

namespace orrivane::e2e {
namespace {

class Start : public testing::Test {
  protected:
    /// A desktop without a tray.
    Desktop& bare(std::vector<std::string> serverArguments = {}) {
        Desktop::Options options;
        options.host = "";
        options.windowManager = serverArguments.empty();
        options.server.extraArguments = std::move(serverArguments);
        return desktop_.emplace(options);
    }
    ChildProcess& run(const std::vector<std::string>& arguments, const Environment& extra = {},
                      const std::vector<std::string>& removed = {}) {
        std::vector<std::string> all{Desktop::programPath()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        auto environment = desktop_->environment("orrivane");
        for (const auto& [name, value] : extra)
            environment[name] = value;
        for (const auto& name : removed)
            environment.erase(name);
        return desktop_->start(all, environment);
    }
    /// One line, one sentence, status 1.
    void expectSentence(ChildProcess& program, const std::string& part) {
        EXPECT_EQ(program.wait(defaultBound), (ExitStatus{1, {}}));
        const auto log = program.log();
        EXPECT_TRUE(log.starts_with("orrivane: ")) << log;
        EXPECT_NE(log.find(part), std::string::npos) << log;
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    }

    std::optional<Desktop> desktop_;
};

TEST_F(Start, withoutDisplayItSaysSo) {
    bare();
    expectSentence(run({}, {}, {"DISPLAY"}), "DISPLAY is not set");
}

TEST_F(Start, withADisplayThatNobodyServesItSaysSo) {
    bare();
    expectSentence(run({}, {{"DISPLAY", ":9999"}}), "No X server answers");
}

TEST_F(Start, underWaylandAloneItSaysWhyItCannotWork) {
    bare();
    expectSentence(run({}, {{"WAYLAND_DISPLAY", "wayland-0"}}, {"DISPLAY"}),
                   "cannot work under Wayland");
}

class WithoutExtension : public Start, public testing::WithParamInterface<const char*> {};

TEST_P(WithoutExtension, itNamesTheMissingExtension) {
    bare({"-extension", GetParam()});
    expectSentence(run({}), std::string("lacks the extension ") + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Extensions, WithoutExtension,
                         testing::Values("XTEST", "Composite", "X-Resource", "RANDR"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST_F(Start, helpAndVersionNeedNoServer) {
    bare();
    auto& help = run({"--help"}, {}, {"DISPLAY"});
    EXPECT_EQ(help.wait(defaultBound), (ExitStatus{0, {}}));
    EXPECT_NE(help.log().find("--set-notch"), std::string::npos);
    auto& version = run({"--version"}, {}, {"DISPLAY"});
    EXPECT_EQ(version.wait(defaultBound), (ExitStatus{0, {}}));
    EXPECT_TRUE(version.log().starts_with("Orrivane "));
}

TEST_F(Start, anUnknownOptionAndANotchThatMakesNoSenseAreRefused) {
    bare();
    expectSentence(run({"--nonsense"}), "--nonsense");
    expectSentence(run({"--set-notch", "1,2,3"}), "'1,2,3' is no notch");
    EXPECT_FALSE(std::filesystem::exists(desktop_->environment("orrivane").at("XDG_CONFIG_HOME") +
                                         "/orrivane/notch"));
}

TEST_F(Start, aNotchThatCannotBeStoredIsASentence) {
    bare();
    expectSentence(run({"--set-notch", "1,0,3,4"}, {{"XDG_CONFIG_HOME", "/proc/none"}}),
                   "could not be stored");
}

TEST_F(Start, theStoredNotchIsUsedWhereTheDesktopTellsNone) {
    desktop_.emplace(Desktop::Options{});
    desktop_->startClient("parcellite");
    const auto icon = desktop_->settledIcons().at(0).area;
    auto& setting =
        run({"--set-notch", std::to_string(icon.x) + ",0," + std::to_string(icon.width) + ",37"},
            {}, {"DISPLAY"});
    ASSERT_EQ(setting.wait(defaultBound), (ExitStatus{0, {}})) << setting.log();
    desktop_->startProgram();
    EXPECT_TRUE(waitFor("the strip stands left of it", [&] {
        for (const auto& window : desktop_->programWindows())
            if (window.isViewable() &&
                window.area == PixelRect{icon.x - 6 - icon.width, 0, icon.width, 37})
                return true;
        return false;
    }));
}

TEST_F(Start, withoutTrayItRunsAndShowsNothing) {
    bare();
    desktop_->setCutout(660, 850);
    auto& program = desktop_->startProgram();
    EXPECT_TRUE(staysTrue(
        "nothing shows", [&] { return !desktop_->strip() && program.isRunning(); },
        std::chrono::milliseconds(1200)));
    EXPECT_EQ(program.terminate(defaultBound), (ExitStatus{0, {}}));
}

} // namespace
} // namespace orrivane::e2e
