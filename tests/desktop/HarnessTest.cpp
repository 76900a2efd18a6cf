#include "Desktop.h"
#include "Screenshot.h"
#include "Surroundings.h"
#include "TestWindow.h"
#include "WaitFor.h"

#include <csignal>
#include <sstream>

#include <unistd.h>
#include <zlib.h>

namespace orrivane::e2e {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

ChildProcess shell(const TempDirectory& directory, const std::string& script) {
    ChildProcess::Options options;
    options.arguments = {"sh", "-c", script};
    options.environment = plainEnvironment();
    options.logFile = directory.path() + "/log";
    return ChildProcess(std::move(options));
}

std::string childrenOfThisProcess() {
    const std::string self = std::to_string(getpid());
    return readFile("/proc/self/task/" + self + "/children");
}

TEST(ChildProcess, tellsHowItEnded) {
    TempDirectory directory;
    ChildProcess failing = shell(directory, "echo said; exit 3");
    EXPECT_EQ(failing.wait(seconds(5)), (ExitStatus{3, {}}));
    EXPECT_EQ(failing.log(), "said\n");
    ChildProcess missing({{"no-such-program-anywhere"}, {}, directory.path() + "/log2", {}, ""});
    EXPECT_EQ(missing.wait(seconds(5)), (ExitStatus{127, {}}));
    ChildProcess patient = shell(directory, "exec sleep 60");
    EXPECT_EQ(patient.wait(milliseconds(30)), std::nullopt);
    EXPECT_EQ(patient.terminate(seconds(5)), (ExitStatus{{}, SIGTERM}));
}

TEST(ChildProcess, takesItsWholeGroupAlong) {
    TempDirectory directory;
    std::string grandchild;
    {
        ChildProcess parent = shell(directory, "sleep 60 & echo $!; wait");
        ASSERT_TRUE(
            waitFor("the grandchild is named", [&] { return parent.log().ends_with('\n'); }));
        grandchild = parent.log().substr(0, parent.log().size() - 1);
        ASSERT_FALSE(readFile("/proc/" + grandchild + "/stat").empty());
    }
    EXPECT_TRUE(waitFor("the grandchild is gone", [&] {
        const std::string state = readFile("/proc/" + grandchild + "/stat");
        return state.empty() || state.find(") Z") != std::string::npos;
    }));
}

TEST(ChildProcess, stopsAndResumes) {
    TempDirectory directory;
    ChildProcess child = shell(directory, "while read line < /proc/uptime; do :; done");
    const std::string stat = "/proc/" + std::to_string(child.pid()) + "/stat";
    child.stop();
    EXPECT_NE(readFile(stat).find(") T"), std::string::npos);
    child.resume();
    EXPECT_TRUE(waitFor("the child goes on",
                        [&] { return readFile(stat).find(") T") == std::string::npos; }));
    EXPECT_TRUE(child.isRunning());
}

TEST(WaitFor, saysWhatDidNotCome) {
    const auto never = [] { return false; };
    const auto result = waitFor("the impossible", never, milliseconds(20));
    EXPECT_FALSE(result);
    EXPECT_NE(std::string(result.message()).find("the impossible"), std::string::npos);
    EXPECT_FALSE(staysTrue("the impossible", never, milliseconds(20)));
}

TEST(PrivateXServer, hasTheSizeAskedForAndADisplayOfItsOwn) {
    TempDirectory first;
    TempDirectory second;
    PrivateXServer small({1512, 982, {}}, first.path());
    PrivateXServer large({3024, 1964, {}}, second.path());
    EXPECT_NE(small.display(), large.display());
    EXPECT_EQ(Observer(small.display()).rootArea(), (PixelRect{0, 0, 1512, 982}));
    EXPECT_EQ(Observer(large.display()).rootArea(), (PixelRect{0, 0, 3024, 1964}));
    EXPECT_TRUE(Observer(small.display()).hasExtension("Composite"));
}

TEST(PrivateXServer, canLackAnExtension) {
    TempDirectory directory;
    PrivateXServer server({640, 480, {"-extension", "XTEST"}}, directory.path());
    Observer observer(server.display());
    EXPECT_FALSE(observer.hasExtension("XTEST"));
    EXPECT_THROW(observer.click({10, 10}), std::runtime_error);
    EXPECT_EQ(observer.rootArea(), (PixelRect{0, 0, 640, 480}));
}

class BareDesktop : public testing::Test {
  protected:
    BareDesktop() { options_.host = ""; }
    Desktop::Options options_;
};

TEST_F(BareDesktop, cutoutsRoundTrip) {
    Desktop desktop(options_);
    Observer& observer = desktop.observer();
    EXPECT_TRUE(observer.cutouts().empty());
    const std::vector<PixelRect> cutouts{{666, 0, 180, 37}, {10, 900, 5, 5}};
    observer.setCutouts(cutouts);
    EXPECT_EQ(Observer(desktop.server().display()).cutouts(), cutouts);
    observer.setCutouts({});
    EXPECT_FALSE(observer.cardinals(observer.root(), "_ORRIVANE_DISPLAY_CUTOUT"));
}

TEST_F(BareDesktop, thePointerGoesWhereItIsSent) {
    Desktop desktop(options_);
    desktop.observer().movePointer({321, 123});
    EXPECT_EQ(desktop.observer().pointer(), (PixelPoint{321, 123}));
}

TEST_F(BareDesktop, aVanishedWindowIsAbsent) {
    Desktop desktop(options_);
    constexpr xcb_window_t nobody = 0x1ffffff;
    EXPECT_FALSE(desktop.observer().window(nobody));
    EXPECT_FALSE(desktop.observer().imageOf(nobody));
    EXPECT_FALSE(desktop.observer().pidOf(nobody));
    EXPECT_FALSE(desktop.observer().cardinals(nobody, "_XEMBED_INFO"));
}

TEST_F(BareDesktop, leavesNoProcessBehind) {
    {
        Desktop desktop(options_);
    }
    EXPECT_EQ(childrenOfThisProcess(), "");
}

TEST(FullDesktop, leavesNoProcessBehind) {
    if (const std::string missing = missingPrograms({"mate-panel", "xfce4-clipman"});
        !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    {
        Desktop::Options options;
        options.host = "mate-panel";
        Desktop desktop(options);
        desktop.startClient("xfce4-clipman");
    }
    EXPECT_EQ(childrenOfThisProcess(), "");
}

std::uint32_t bigEndian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    }
    return value;
}

TEST(Image, becomesAPngThatHoldsItsPixels) {
    TempDirectory directory;
    const std::string path = directory.path() + "/image.png";
    writePng(path, {2, 1, {0xff102030, 0x80405060}});
    const std::string file = readFile(path);
    ASSERT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(bigEndian(file, 16), 2u);
    EXPECT_EQ(bigEndian(file, 20), 1u);
    const std::size_t data = file.find("IDAT");
    ASSERT_NE(data, std::string::npos);
    std::string pixels(9, '?');
    uLongf size = pixels.size();
    ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(pixels.data()), &size,
                         reinterpret_cast<const Bytef*>(file.data() + data + 4),
                         bigEndian(file, data - 4)),
              Z_OK);
    EXPECT_EQ(pixels.substr(0, size), std::string("\x00\x10\x20\x30\xff\x40\x50\x60\x80", 9));
}

TEST(Image, ofAnIconIsTheScreenAtItsPlace) {
    if (const std::string missing = missingPrograms({"trayer", "parcellite"}); !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    Desktop desktop({});
    const DockedClient& client = desktop.startClient("parcellite");
    const auto icon = desktop.observer().window(client.icon);
    ASSERT_TRUE(icon);
    ASSERT_TRUE(waitFor("the icon is drawn", [&] {
        const auto image = desktop.observer().imageOf(client.icon);
        return image && image->colours() > 4;
    }));
    const auto image = desktop.observer().imageOf(client.icon);
    ASSERT_TRUE(image);
    EXPECT_EQ(*image, desktop.observer().imageOfRoot(icon->area));
    EXPECT_EQ(*image, desktop.observer().imageOfRoot().crop(icon->area));
}

class CoveredIcon : public testing::Test {
  protected:
    void SetUp() override {
        if (const std::string missing = missingPrograms({"trayer", "parcellite"});
            !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        desktop_.emplace(Desktop::Options{});
        client_ = &desktop_->startClient("parcellite");
        place_ = desktop_->observer().window(client_->icon).value().area;
    }

    std::optional<Desktop> desktop_;
    DockedClient* client_ = nullptr;
    PixelRect place_;
};

TEST_F(CoveredIcon, isOutOfReachUntilTheCoverRefusesInput) {
    Observer& observer = desktop_->observer();
    TestWindow cover(observer, {.area = place_, .overrideRedirect = true});
    cover.map();
    EXPECT_EQ(observer.leafAt(place_.centre()), cover.id());
    EXPECT_EQ(observer.imageOfRoot(place_).colours(), 1u);
    cover.refuseInput();
    EXPECT_EQ(observer.leafAt(place_.centre()), client_->icon);
    desktop_->closeMenu(desktop_->openMenu(*client_));
}

TEST_F(CoveredIcon, liesBelowAFullScreen) {
    Observer& observer = desktop_->observer();
    TestWindow film(observer, {.area = {300, 300, 200, 100}, .fullScreen = true});
    film.map();
    ASSERT_TRUE(waitFor("the film fills the screen",
                        [&] { return film.state().area == observer.rootArea(); }));
    EXPECT_TRUE(waitFor("the film is the active window",
                        [&] { return observer.activeWindow() == film.id(); }));
    EXPECT_EQ(observer.leafAt(place_.centre()), film.id());
}

} // namespace
} // namespace orrivane::e2e
