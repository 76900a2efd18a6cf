#include <linux/hosts/XfcePanelHost.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

namespace orrivane {
namespace {

constexpr XfceTray::Measures bar{24, 37};

/// The settings' service with one plugin, as far as the tool shows it.
struct FakeSettings {
    std::map<std::string, std::string> values{{"", "systray"}};
    std::vector<std::string> array{"b", "a"};
    bool answers = true;
    int writesLeft = 1000;
    int calls = 0;
    const std::string base = "/plugins/plugin-2";

    std::optional<std::string> run(const std::vector<std::string>& words) {
        ++calls;
        if (!answers || !words[1].starts_with(base))
            return std::nullopt;
        const auto name = words[1].substr(base.size());
        if (std::ranges::count(words, "-l") > 0)
            return listing();
        if (name == "/known-legacy-items")
            return words.size() == 2 ? std::optional(arrayText()) : writeArray(words);
        if (writesLeft-- <= 0)
            return std::nullopt;
        if (words.back() == "-r")
            values.erase(name);
        else
            values[name] = words.back().substr(std::string("--set=").size());
        return "";
    }
    [[nodiscard]] std::string listing() const {
        std::string text;
        for (const auto& [name, value] : values)
            text += base + name + "        " + value + "\n";
        return text + base + "/known-legacy-items  <<UNSUPPORTED>>\n/plugins/plugin-20  systray\n";
    }
    [[nodiscard]] std::string arrayText() const {
        auto text = "Value is an array with " + std::to_string(array.size()) + " items:\n\n";
        for (const auto& each : array)
            text += each + "\n";
        return text;
    }
    std::optional<std::string> writeArray(const std::vector<std::string>& words) {
        array.clear();
        for (const auto& word : words)
            if (word.starts_with("--set="))
                array.push_back(word.substr(6));
        return "";
    }
};

struct XfcePanelHostTest : testing::Test {
    e2e::TempDirectory folder;
    std::string record = folder.path() + "/hosts/xfce4-panel";
    FakeSettings settings;
    XfcePanelHost host{HostRecord(record),
                       [this](const auto& words) { return settings.run(words); }};

    using Values = std::map<std::string, std::string>;
    [[nodiscard]] bool hasRecord() const { return std::filesystem::exists(record); }
};

TEST_F(XfcePanelHostTest, settingsThatWereNotSetAreUnsetAgain) {
    ASSERT_TRUE(host.apply(2, 6, bar));
    EXPECT_EQ(settings.values,
              (Values{{"", "systray"}, {"/icon-size", "16"}, {"/single-row", "true"}}));
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(settings.values, (Values{{"", "systray"}}));
    EXPECT_FALSE(hasRecord());
}

TEST_F(XfcePanelHostTest, theUsersSettingsComeBackAfterSeveralSqueezes) {
    const Values own{{"", "systray"}, {"/icon-size", "24"}, {"/square-icons", "true"}};
    settings.values = own;
    for (const int reduction : {3, 12, 5}) {
        ASSERT_TRUE(host.apply(2, reduction, bar));
        EXPECT_EQ(settings.values.at("/square-icons"), "false");
        EXPECT_EQ(settings.values.at("/icon-size"), reduction == 12 ? "23" : "24");
    }
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(settings.values, own);
}

TEST_F(XfcePanelHostTest, anAutomaticSizeIsMeasuredBeforeItIsChanged) {
    settings.values["/icon-size"] = "0";
    ASSERT_TRUE(host.apply(2, 4, bar));
    EXPECT_EQ(settings.values.at("/icon-size"), "20");
    ASSERT_TRUE(host.apply(2, 2, {20, 37}));
    EXPECT_EQ(settings.values.at("/icon-size"), "22");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(settings.values.at("/icon-size"), "0");
}

TEST_F(XfcePanelHostTest, whatTheUserChangedSinceIsTheUsersOwn) {
    settings.values["/icon-size"] = "24";
    settings.values["/square-icons"] = "true";
    ASSERT_TRUE(host.apply(2, 12, bar));
    settings.values["/icon-size"] = "30";
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(settings.values.at("/icon-size"), "30");
    EXPECT_EQ(settings.values.at("/square-icons"), "true");
}

TEST_F(XfcePanelHostTest, theDefaultSpacingIsTheUsersOwn) {
    settings.values["/icon-size"] = "24";
    ASSERT_TRUE(host.apply(2, 4, bar));
    ASSERT_TRUE(host.apply(2, 0, bar));
    EXPECT_EQ(settings.values.at("/icon-size"), "24");
    EXPECT_FALSE(hasRecord());
}

TEST_F(XfcePanelHostTest, aServiceThatDoesNotAnswerChangesNothing) {
    settings.answers = false;
    EXPECT_FALSE(host.apply(2, 4, bar));
    EXPECT_FALSE(hasRecord());
    EXPECT_FALSE(host.reorder(2, {{"a", 1}, {"b", 2}}, 0, 9));
    settings.answers = true;
    ASSERT_TRUE(host.apply(2, 4, bar));
    settings.answers = false;
    EXPECT_FALSE(host.reset());
    EXPECT_TRUE(hasRecord());
    settings.answers = true;
    EXPECT_TRUE(host.reset());
    EXPECT_EQ(settings.values, (Values{{"", "systray"}}));
}

TEST_F(XfcePanelHostTest, aServiceThatFailsHalfwayLosesNothing) {
    const Values own{{"", "systray"}, {"/icon-size", "24"}, {"/square-icons", "true"}};
    settings.values = own;
    settings.writesLeft = 1;
    EXPECT_FALSE(host.apply(2, 12, bar));
    settings.writesLeft = 1000;
    EXPECT_TRUE(host.reset());
    EXPECT_EQ(settings.values, own);
}

TEST_F(XfcePanelHostTest, nothingIsChangedThatCouldNotBeGivenBack) {
    const XfcePanelHost homeless(HostRecord(""),
                                 [this](const auto& words) { return settings.run(words); });
    EXPECT_FALSE(homeless.apply(2, 4, bar));
    EXPECT_EQ(settings.values, (Values{{"", "systray"}}));
}

TEST_F(XfcePanelHostTest, aPluginThatIsGoneDoesNotHoldUpAnother) {
    EXPECT_TRUE(HostRecord(record).write({{"plugin", "9"}, {"set.icon-size", "16"}}));
    ASSERT_TRUE(host.apply(2, 4, bar));
    EXPECT_EQ(settings.values.at("/icon-size"), "18");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(settings.values, (Values{{"", "systray"}}));
}

TEST_F(XfcePanelHostTest, withoutARecordAResetAsksNobody) {
    EXPECT_TRUE(host.reset());
    EXPECT_EQ(settings.calls, 0);
}

TEST_F(XfcePanelHostTest, aMoveWritesTheListInItsNewOrder) {
    settings.array = {"-b", "gone", "a"};
    EXPECT_TRUE(host.reorder(2, {{"-b", 1}, {"a", 2}}, 0, 9));
    EXPECT_EQ(settings.array, (std::vector<std::string>{"gone", "a", "-b"}));
    EXPECT_FALSE(host.reorder(2, {{"a", 1}, {"-b", 2}}, 0, 0));
}

TEST_F(XfcePanelHostTest, onlyATrayPluginHasSettings) {
    using Settings = XfceTraySettings;
    EXPECT_EQ(XfcePanelHost::parseSettings("", 2), std::nullopt);
    EXPECT_EQ(XfcePanelHost::parseSettings("/plugins/plugin-2  clock\n", 2), std::nullopt);
    EXPECT_EQ(XfcePanelHost::parseSettings("/plugins/plugin-20  systray\n", 2), std::nullopt);
    EXPECT_EQ(XfcePanelHost::parseSettings("/plugins/plugin-2  systray\n"
                                           "/plugins/plugin-2/icon-size  18\n"
                                           "/plugins/plugin-2/square-icons  true\n"
                                           "/plugins/plugin-2/single-row  false\n",
                                           2),
              (Settings{18, true, false}));
    EXPECT_EQ(XfcePanelHost::parseSettings(
                  "/plugins/plugin-2  systray\n/plugins/plugin-2/icon-size  x\n", 2),
              Settings{});
}

TEST_F(XfcePanelHostTest, anArrayIsReadWholeOrNotAtAll) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(XfcePanelHost::parseArray("Value is an array with 2 items:\n\na\nb c\n"),
              (Names{"a", "b c"}));
    EXPECT_EQ(XfcePanelHost::parseArray("Value is an array with 3 items:\n\na\nb\n"), std::nullopt);
    EXPECT_EQ(XfcePanelHost::parseArray("systray\n"), std::nullopt);
    EXPECT_EQ(XfcePanelHost::parseArray(""), std::nullopt);
}

} // namespace
} // namespace orrivane
