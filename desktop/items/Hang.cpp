#include <desktop/items/Hang.h>

#include <desktop/support/XServer.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

namespace orrivane::desktop {

namespace {

constexpr std::chrono::seconds hangTime{10};

int writeEnd = -1;

void onSignal(int) {
    const int before = errno;
    const char byte = 0;
    // A full pipe already holds a request.
    [[maybe_unused]] const auto written = ::write(writeEnd, &byte, 1);
    errno = before;
}

} // namespace

void hang() {
    // What was drawn so far, such as the menu's going, reaches the server before the silence.
    xcb_flush(xserver::connection());
    std::this_thread::sleep_for(hangTime);
}

HangOnSignal::HangOnSignal() {
    if (::pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::runtime_error("no pipe for signals");
    writeEnd = ends_[1];
    auto* notifier = new QSocketNotifier(ends_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &HangOnSignal::drain);
    std::signal(SIGUSR1, onSignal);
}

HangOnSignal::~HangOnSignal() {
    std::signal(SIGUSR1, SIG_DFL);
    writeEnd = -1;
    ::close(ends_[0]);
    ::close(ends_[1]);
}

void HangOnSignal::drain() {
    hang();
    char bytes[16];
    while (::read(ends_[0], bytes, sizeof bytes) > 0) {
    }
}

} // namespace orrivane::desktop
