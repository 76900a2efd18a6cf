#include <linux/SignalWatcher.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace orrivane {

namespace {

constexpr std::array<int, 3> watched{SIGINT, SIGTERM, SIGHUP};
std::array<int, 2> ends{-1, -1};

// Nothing but write(2) is safe here, and what was interrupted may be about to read errno.
void note(int) {
    const int before = errno;
    const char byte = 0;
    static_cast<void>(!write(ends[1], &byte, 1));
    errno = before;
}

} // namespace

SignalWatcher::SignalWatcher(std::function<void()> ended) {
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the program the usual way
    notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [ended = std::move(ended)] {
        std::array<char, 16> told{};
        while (read(ends[0], told.data(), told.size()) > 0) {
        }
        ended();
    });
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (const int number : watched)
        sigaction(number, &action, nullptr);
}

SignalWatcher::~SignalWatcher() {
    for (const int number : watched)
        std::signal(number, SIG_DFL);
    notifier_.reset();
    for (int& end : ends)
        if (end >= 0) {
            close(end);
            end = -1;
        }
}

} // namespace orrivane
