#include "support/Pump.h"

#include <linux/qt/StandardErrorLog.h>
#include <tests/support/contracts/SystemLogContract.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <sstream>

namespace orrivane {

namespace {

class Pipe {
  public:
    Pipe() {
        if (::pipe2(ends_.data(), O_CLOEXEC) != 0)
            ends_ = {-1, -1};
        ::fcntl(ends_[0], F_SETFL, O_NONBLOCK);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeReader();
        ::close(ends_[1]);
    }
    [[nodiscard]] int writer() const { return ends_[1]; }
    void closeReader() {
        if (ends_[0] >= 0)
            ::close(std::exchange(ends_[0], -1));
    }
    // What one read finds: a line is written at once or not at all.
    std::string read() {
        std::array<char, 2 * PIPE_BUF> bytes{};
        const auto count = ::read(ends_[0], bytes.data(), bytes.size());
        return {bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
    }

  private:
    std::array<int, 2> ends_{};
};

struct StandardErrorWorld {
    Pipe pipe;
    StandardErrorLog body{pipe.writer()};
    std::string text;

    SystemLog& log() { return body; }
    std::vector<std::string> lines() {
        text += pipe.read();
        std::vector<std::string> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        return lines;
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }
};

std::string written(std::string_view line) {
    Pipe pipe;
    StandardErrorLog(pipe.writer()).write(line);
    return pipe.read();
}

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(StandardError, SystemLogContract, StandardErrorWorld);

TEST(StandardErrorLog, whateverTheLineHoldsIsOneLine) {
    EXPECT_EQ(written("one\ntwo\r\nthree"), "one\\u{a}two\\u{d}\\u{a}three\n");
    EXPECT_EQ(written(std::string_view("a\0b", 3)), "a\\u{0}b\n");
    EXPECT_EQ(written("a\u2028b\u2029c"), "a\\u{2028}b\\u{2029}c\n");
}

TEST(StandardErrorLog, noTerminalActsOnALine) {
    EXPECT_EQ(written("\x1b[31mred\x7f"), "\\u{1b}[31mred\\u{7f}\n");
    EXPECT_EQ(written("a\u009b2Jb"), "a\\u{9b}2Jb\n");
    EXPECT_EQ(written("left\u202etfel"), "left\\u{202e}tfel\n");
}

TEST(StandardErrorLog, bytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(written("a\x9b\xffz"), "a\uFFFD\uFFFDz\n");
}

TEST(StandardErrorLog, aLongLineIsCutWhereAWriteIsStillAtomic) {
    const auto text = written(std::string(3 * PIPE_BUF, 'x'));
    EXPECT_EQ(text, std::string(PIPE_BUF - 1, 'x') + "\n");
}

TEST(StandardErrorLog, aCharacterIsNeverCutInHalf) {
    std::string line(PIPE_BUF - 2, 'x');
    EXPECT_EQ(written(line + "ä"), line + "\n");
}

TEST(StandardErrorLog, aReaderWhoNeverReadsHoldsNobodyUp) {
    Pipe pipe;
    StandardErrorLog log(pipe.writer());
    const std::string line(1000, 'x');
    for (int i = 0; i < 1000; ++i)
        log.write(line);
    EXPECT_EQ(pipe.read().substr(0, 1001), line + "\n");
}

TEST(StandardErrorLog, aReaderWhoIsGoneDoesNotEndTheProgram) {
    Pipe pipe;
    pipe.closeReader();
    const auto writeAndLeave = [&] {
        StandardErrorLog(pipe.writer()).write("nobody reads this");
        std::_Exit(0);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(writeAndLeave(), ::testing::ExitedWithCode(0), "");
}

} // namespace orrivane
