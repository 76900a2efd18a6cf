#include "support/Chaos.h"
#include "support/Desk.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace orrivane::x11 {
namespace {

class TreeRandomTest : public Desk {
  protected:
    using Words = std::vector<std::string>;

    Words mirror() {
        settle();
        EXPECT_TRUE(e2e::waitFor("the server answers", [this] { return tree().update(); }));
        return inWords(tree(), open().root());
    }
    Words fullRead() {
        std::string problem;
        const auto connection = Connection::open(server.display().c_str(), problem);
        WindowTree fresh(*connection);
        EXPECT_TRUE(e2e::waitFor("the server answers", [&] { return fresh.update(); }));
        return inWords(fresh, connection->root());
    }

    /// Compared line by line: a whole tree is too much to read.
    void expectEqual(int round) {
        const auto mirrored = mirror();
        const auto read = fullRead();
        for (std::size_t i = 0; i < std::min(mirrored.size(), read.size()); ++i)
            ASSERT_EQ(mirrored[i], read[i]) << "line " << i << " in round " << round;
        ASSERT_EQ(mirrored.size(), read.size()) << "round " << round;
    }

    Random random;
    ::testing::ScopedTrace seed{__FILE__, __LINE__, random.trace()};
};

TEST_F(TreeRandomTest, changesBetweenUpdatesLeaveMirrorAndFullReadEqual) {
    Chaos chaos(server.display(), random);
    for (int round = 0; round < 40; ++round) {
        for (int i = random.integer(0, 12); i > 0; --i)
            chaos.step();
        ASSERT_NO_FATAL_FAILURE(expectEqual(round));
    }
}

TEST_F(TreeRandomTest, changesWhileTheMirrorReadsLeaveItEqualToo) {
    Chaos chaos(server.display(), random);
    port();
    for (int round = 0; round < 40; ++round) {
        for (int i = random.integer(0, 12); i > 0; --i)
            chaos.step();
        int left = random.integer(0, 6);
        open().setQueuedHandler([&] {
            if (left-- > 0)
                chaos.step();
        });
        if (random.chance(0.2))
            tree().invalidate();
        tree().update();
        open().setQueuedHandler({});
        ASSERT_NO_FATAL_FAILURE(expectEqual(round));
    }
}

TEST_F(TreeRandomTest, aProgramThatChangesTheTreeAllTheTimeLeavesItEqualInTheEnd) {
    port();
    for (int round = 0; round < 5; ++round) {
        Chaos chaos(server.display(), random);
        std::atomic<bool> goesOn{true};
        std::thread other([&] {
            while (goesOn)
                chaos.step();
        });
        for (int i = 0; i < 60; ++i) {
            if (i % 20 == 0)
                tree().invalidate();
            tree().update();
        }
        goesOn = false;
        other.join();
        ASSERT_NO_FATAL_FAILURE(expectEqual(round));
    }
}

} // namespace
} // namespace orrivane::x11
