#include "support/Desk.h"

#include <linux/x11/SessionCheck.h>

#include <poll.h>
#include <xcb/randr.h>
#include <xcb/res.h>

#include <cstdlib>
#include <thread>

namespace orrivane::x11 {
namespace {

class ConnectionTest : public Desk {
  protected:
    using Desk::Desk;

    /// The server's bytes wait at the port's end of the wire.
    bool isReadable() {
        pollfd descriptor{open().descriptor(), POLLIN, 0};
        return poll(&descriptor, 1, 0) == 1;
    }
};

bool isOneSentence(const std::string& text) {
    return !text.empty() && text.back() == '.' && text.find(". ") == std::string::npos &&
           text.find('\n') == std::string::npos;
}

TEST_F(ConnectionTest, aServerWithEverythingIsAccepted) {
    std::string problem;
    EXPECT_TRUE(Connection::open(server.display().c_str(), problem));
    EXPECT_EQ(problem, "");
}

TEST_F(ConnectionTest, whereNoServerAnswersASentenceNamesTheDisplay) {
    std::string problem;
    EXPECT_FALSE(Connection::open(":98765", problem));
    EXPECT_TRUE(isOneSentence(problem)) << problem;
    EXPECT_NE(problem.find("':98765'"), std::string::npos) << problem;
}

/// A server without one of the extensions.
class MissingExtensionTest
    : public ConnectionTest,
      public ::testing::WithParamInterface<std::pair<const char*, const char*>> {
  protected:
    MissingExtensionTest()
        : ConnectionTest({"-extension", GetParam().first}) {}
};

TEST_P(MissingExtensionTest, isNamedInOneSentence) {
    std::string problem;
    EXPECT_FALSE(Connection::open(server.display().c_str(), problem));
    EXPECT_TRUE(isOneSentence(problem)) << problem;
    EXPECT_NE(problem.find(std::string("extension ") + GetParam().second + ";"), std::string::npos)
        << problem;
}

const std::vector<std::pair<const char*, const char*>> switchable{{"Composite", "Composite"},
                                                                  {"RANDR", "RANDR"},
                                                                  {"X-Resource", "X-Resource"},
                                                                  {"XTEST", "XTEST"}};
INSTANTIATE_TEST_SUITE_P(Extensions, MissingExtensionTest, ::testing::ValuesIn(switchable),
                         [](const auto& example) {
                             std::string name(example.param.first);
                             std::erase(name, '-');
                             return name;
                         });

class TwoMissingExtensionsTest : public ConnectionTest {
  protected:
    TwoMissingExtensionsTest()
        : ConnectionTest({"-extension", "XTEST", "-extension", "Composite"}) {}
};

TEST_F(TwoMissingExtensionsTest, areBothNamed) {
    std::string problem;
    EXPECT_FALSE(Connection::open(server.display().c_str(), problem));
    EXPECT_NE(problem.find("Composite, XTEST;"), std::string::npos) << problem;
}

/// The saver is used where it exists.
class NoSaverTest : public ConnectionTest {
  protected:
    NoSaverTest()
        : ConnectionTest({"-extension", "MIT-SCREEN-SAVER"}) {}
};

TEST_F(NoSaverTest, theDisplayIsAwake) {
    EXPECT_FALSE(port().screens.mainDisplayIsAsleep());
    EXPECT_EQ(port().screens.screens().size(), 1U);
}

TEST_F(ConnectionTest, whatARequestWithAnErrorAskedForIsAbsentAndTheRestGoesOn) {
    auto* raw = open().raw();
    const auto until = std::chrono::steady_clock::now() + e2e::defaultBound;
    const auto wrong = xcb_get_geometry(raw, 0x7ffffff);
    const auto right = xcb_get_geometry(raw, open().root());
    EXPECT_FALSE(open().wait<xcb_get_geometry_reply_t>(wrong, until));
    EXPECT_TRUE(open().wait<xcb_get_geometry_reply_t>(right, until));
    EXPECT_TRUE(open().isResponsive());
    EXPECT_FALSE(open().succeeded(xcb_map_window_checked(raw, 0x7ffffff), until));
    EXPECT_TRUE(open().succeeded(xcb_map_window_checked(raw, open().root()), until));
}

TEST_F(ConnectionTest, aServerThatIsStoppedIsWaitedForOnceAndThenNoMore) {
    auto& connection = open();
    server.process().stop();
    const auto ask = [&] {
        return connection.wait<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw()),
                                                            Connection::deadline());
    };
    EXPECT_FALSE(ask());
    EXPECT_FALSE(connection.isResponsive());
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 50; ++i)
        EXPECT_FALSE(ask());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20 * Connection::answerLimit);
    EXPECT_EQ(connection.unanswered(), 51U);
    server.process().resume();
    EXPECT_TRUE(e2e::waitFor("the server answers again", [&] { return ask() != nullptr; }));
}

TEST_F(ConnectionTest, aReplyThatCameInTimeIsTakenThoughItIsAskedForLate) {
    auto& connection = open();
    const auto cookie = xcb_get_input_focus(connection.raw());
    connection.flush();
    ASSERT_TRUE(e2e::waitFor("the reply is there", [this] { return isReadable(); }));
    const auto past = std::chrono::steady_clock::now() - std::chrono::seconds(1);
    EXPECT_TRUE(connection.wait<xcb_get_input_focus_reply_t>(cookie, past));
}

TEST_F(ConnectionTest, eventsThatCameInBesideAReplyAreTold) {
    auto& connection = open();
    int queued = 0;
    const auto cookie = xcb_get_input_focus(connection.raw());
    xcb_flush(connection.raw());
    app.setNumbers(app.root(), "_NET_CURRENT_DESKTOP", {1});
    app.sync();
    ASSERT_TRUE(e2e::waitFor("they are there", [this] { return isReadable(); }));
    connection.setQueuedHandler([&] { ++queued; });
    EXPECT_TRUE(connection.wait<xcb_get_input_focus_reply_t>(cookie, Connection::deadline()));
    EXPECT_GT(queued, 0);
}

TEST_F(ConnectionTest, eventsThatAFlushReadAreTold) {
    auto& connection = open();
    // What another client does is told only once the server knows of the listener.
    ASSERT_TRUE(connection.synchronize(Connection::deadline()));
    app.setNumbers(app.root(), "_NET_CURRENT_DESKTOP", {1});
    app.sync();
    ASSERT_TRUE(e2e::waitFor("the event is there", [this] { return isReadable(); }));
    int queued = 0;
    connection.setQueuedHandler([&] { ++queued; });
    xcb_no_operation(connection.raw());
    connection.flush();
    EXPECT_TRUE(queued > 0 || isReadable());
}

TEST_F(ConnectionTest, eventsReachTheHandlersInOrderAndErrorsDoNot) {
    auto& connection = open();
    // What another client does is told only once the server knows of the listener.
    ASSERT_TRUE(connection.synchronize(Connection::deadline()));
    std::vector<xcb_atom_t> seen;
    const auto events = connection.onEvent([&](const xcb_generic_event_t& event) {
        ASSERT_NE(event.response_type, 0);
        if (event.response_type == XCB_PROPERTY_NOTIFY)
            seen.push_back(reinterpret_cast<const xcb_property_notify_event_t&>(event).atom);
    });
    xcb_map_window(connection.raw(), 0x7ffffff); // its error is nobody's
    app.setNumbers(app.root(), "FIRST", {1});
    app.setNumbers(app.root(), "SECOND", {1});
    settle();
    connection.drain();
    EXPECT_EQ(seen, (std::vector{app.atom("FIRST"), app.atom("SECOND")}));
}

TEST_F(ConnectionTest, aLostServerMakesEveryWaitFailAtOnce) {
    auto& connection = open();
    server.process().kill();
    EXPECT_TRUE(e2e::waitFor("the loss is noticed", [&] {
        connection.drain();
        return connection.isLost();
    }));
    const auto until = std::chrono::steady_clock::now() + std::chrono::hours(1);
    EXPECT_FALSE(connection.synchronize(until));
    EXPECT_FALSE(connection.succeeded(xcb_map_window_checked(connection.raw(), 1), until));
}

TEST_F(ConnectionTest, anOrdinaryServerIsNotTakenForOneUnderWayland) {
    EXPECT_FALSE(SessionCheck::isXwayland(open()));
}

} // namespace
} // namespace orrivane::x11
