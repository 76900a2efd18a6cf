#include <linux/x11/CutoutFile.h>
#include <linux/x11/SessionCheck.h>

#include <TempDirectory.h>
#include <tests/linux/support/Apart.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <sys/stat.h>

namespace orrivane::x11 {
namespace {

/// Variables of the environment for the length of a test; absent ones are unset.
class Variables {
  public:
    explicit Variables(const std::map<std::string, std::optional<std::string>>& values) {
        for (const auto& [name, value] : values) {
            const char* before = std::getenv(name.c_str());
            before_[name] = before ? std::optional<std::string>(before) : std::nullopt;
            set(name, value);
        }
    }
    ~Variables() {
        for (const auto& [name, value] : before_)
            set(name, value);
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

  private:
    static void set(const std::string& name, const std::optional<std::string>& value) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
    std::map<std::string, std::optional<std::string>> before_;
};

TEST(SessionCheckTest, aDisplayIsWorthATry) {
    const Variables variables({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", std::nullopt}});
    EXPECT_FALSE(SessionCheck::problemOfEnvironment());
}

TEST(SessionCheckTest, aDisplayBesideWaylandsIsAskedItself) {
    const Variables variables({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}});
    EXPECT_FALSE(SessionCheck::problemOfEnvironment());
}

TEST(SessionCheckTest, underWaylandAloneTheSentenceTellsHowToStartAnX11Session) {
    const Variables variables({{"DISPLAY", std::nullopt}, {"WAYLAND_DISPLAY", "wayland-0"}});
    EXPECT_EQ(SessionCheck::problemOfEnvironment(), SessionCheck::waylandSentence());
    EXPECT_NE(SessionCheck::waylandSentence().find("Wayland"), std::string::npos);
    EXPECT_NE(SessionCheck::waylandSentence().find("X11"), std::string::npos);
}

TEST(SessionCheckTest, withoutAnyDisplayTheSentenceNamesTheVariable) {
    const Variables variables({{"DISPLAY", std::nullopt}, {"WAYLAND_DISPLAY", std::nullopt}});
    const auto problem = SessionCheck::problemOfEnvironment();
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("DISPLAY"), std::string::npos);
}

TEST(SessionCheckTest, anEmptyVariableIsNone) {
    const Variables variables({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
    const auto problem = SessionCheck::problemOfEnvironment();
    ASSERT_TRUE(problem);
    EXPECT_NE(*problem, SessionCheck::waylandSentence());
}

class CutoutFileTest : public ::testing::Test {
  protected:
    std::string path() const { return directory.path() + "/folder/notch"; }
    std::optional<Rect> readOf(const std::string& text) const {
        e2e::writeFile(path(), text);
        return CutoutFile(path()).read();
    }
    e2e::TempDirectory directory;
};

TEST_F(CutoutFileTest, whatIsWrittenIsReadAgain) {
    const CutoutFile file(path());
    for (const Rect& cutout : {Rect{{660, 0}, {192, 37}}, Rect{{1324.25, 0.5}, {376.125, 74}},
                               Rect{{123456, 0}, {1234567, 37}}}) {
        EXPECT_FALSE(file.write(cutout));
        EXPECT_EQ(file.read(), cutout);
    }
}

TEST_F(CutoutFileTest, nothingElseIsLeftInTheFolder) {
    EXPECT_FALSE(CutoutFile(path()).write({{660, 0}, {192, 37}}));
    const std::filesystem::directory_iterator folder(directory.path() + "/folder");
    EXPECT_EQ(std::distance(begin(folder), end(folder)), 1);
}

TEST_F(CutoutFileTest, withoutAFileThereIsNoCutout) {
    EXPECT_FALSE(CutoutFile(path()).read());
}

TEST_F(CutoutFileTest, aLineForPeopleToWriteIsUnderstood) {
    const Rect cutout{{660, 0}, {192, 37}};
    EXPECT_EQ(readOf("660,0,192,37"), cutout);
    EXPECT_EQ(readOf("660,0,192,37\nanything\n"), cutout);
}

TEST_F(CutoutFileTest, whatMakesNoSenseIsNoCutout) {
    for (const auto* text :
         {"", "\n", "660", "660,0,192", "660,0,192,37,1", "a,b,c,d", "660,0,0,37", "660,0,192,-37",
          "nan,0,192,37", "1e3,0,192,37", "0x10,0,192,37", "\n660,0,192,37"})
        EXPECT_FALSE(readOf(text)) << text;
}

TEST_F(CutoutFileTest, aFolderThatCannotBeWrittenGivesASentenceThatNamesTheFile) {
    e2e::writeFile(directory.path() + "/folder", "a file in the folder's place");
    const auto problem = CutoutFile(path()).write({{660, 0}, {192, 37}});
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find(path()), std::string::npos);
    EXPECT_EQ(e2e::readFile(directory.path() + "/folder"), "a file in the folder's place");
}

TEST_F(CutoutFileTest, aFailureLeavesNothingBehind) {
    std::filesystem::create_directories(path() + "/inTheWay");
    EXPECT_TRUE(CutoutFile(path()).write({{660, 0}, {192, 37}}));
    const std::filesystem::directory_iterator folder(directory.path() + "/folder");
    EXPECT_EQ(std::distance(begin(folder), end(folder)), 1);
}

TEST_F(CutoutFileTest, aPipeUnderTheNameHoldsNobodyUp) {
    std::filesystem::create_directories(directory.path() + "/folder");
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_TRUE(holdsApart([this] { return !CutoutFile(path()).read(); }));
}

TEST_F(CutoutFileTest, aLinkIsFollowedAndTheModeKept) {
    const auto real = directory.path() + "/dotfiles/notch";
    e2e::writeFile(real, "660,0,192,37\n");
    std::filesystem::permissions(real, std::filesystem::perms(0600));
    std::filesystem::create_directories(directory.path() + "/folder");
    std::filesystem::create_symlink(real, path());
    EXPECT_FALSE(CutoutFile(path()).write({{700, 0}, {192, 37}}));
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    EXPECT_EQ(e2e::readFile(real), "700,0,192,37\n");
    EXPECT_EQ(std::filesystem::status(real).permissions(), std::filesystem::perms(0600));
}

TEST_F(CutoutFileTest, withoutAHomeTheSentenceSaysSo) {
    const auto problem = CutoutFile("").write({{660, 0}, {192, 37}});
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("home"), std::string::npos) << *problem;
    EXPECT_FALSE(CutoutFile("").read());
}

TEST_F(CutoutFileTest, theUsersFileIsInTheirConfigurationFolder) {
    const Rect cutout{{660, 0}, {192, 37}};
    {
        const Variables variables({{"XDG_CONFIG_HOME", directory.path() + "/config"}});
        EXPECT_FALSE(CutoutFile::ofUser().write(cutout));
    }
    EXPECT_TRUE(std::filesystem::exists(directory.path() + "/config/orrivane/notch"));
    const auto home = directory.path() + "/home";
    for (const auto& configured :
         {std::optional<std::string>(), std::optional<std::string>("rel")}) {
        const Variables variables({{"XDG_CONFIG_HOME", configured}, {"HOME", home}});
        EXPECT_FALSE(CutoutFile::ofUser().write(cutout));
        EXPECT_TRUE(std::filesystem::remove(home + "/.config/orrivane/notch"));
    }
}

} // namespace
} // namespace orrivane::x11
