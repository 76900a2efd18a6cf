#include "ItemsStage.h"

#include <csignal>

namespace orrivane::e2e {
namespace {

using Sleepy = ItemsStage;
using std::chrono::milliseconds;

TEST_F(Sleepy, hangsOnTheSignalAndComesBack) {
    startTray();
    auto& process = startItem("sleepy");
    const auto shown = icon();
    openMenu(shown);
    closeMenu();
    ASSERT_EQ(::kill(process.pid(), SIGUSR1), 0);
    ASSERT_TRUE(waitFor("it sleeps in the kernel", [&] {
        const auto id = std::to_string(process.pid());
        return readFile("/proc/" + id + "/wchan").find("nanosleep") != std::string::npos ||
               readFile("/proc/" + id + "/syscall").starts_with("230 ");
    }));
    observer_.click(shown.area.centre());
    EXPECT_TRUE(
        staysTrue("no menu opens", [&] { return observer_.popups().empty(); }, milliseconds(2000)));
    EXPECT_TRUE(process.isRunning());
    EXPECT_TRUE(waitFor(
        "the menu of the old press opens", [&] { return !observer_.popups().empty(); },
        milliseconds(20000)));
    closeMenu();
}

TEST_F(Sleepy, hangsFromItsMenuOnceThatHasGone) {
    startTray();
    startItem("sleepy");
    const auto shown = icon();
    openMenu(shown);
    chooseEntry(2);
    ASSERT_TRUE(isLogged({"sleepy: Hang for 10 Seconds"}));
    ASSERT_TRUE(
        waitFor("the menu goes", [&] { return observer_.popups().empty(); }, milliseconds(2000)));
    observer_.click(shown.area.centre());
    EXPECT_TRUE(
        staysTrue("no menu opens", [&] { return observer_.popups().empty(); }, milliseconds(2000)));
    EXPECT_TRUE(waitFor(
        "it answers again", [&] { return !observer_.popups().empty(); }, milliseconds(20000)));
}

} // namespace
} // namespace orrivane::e2e
