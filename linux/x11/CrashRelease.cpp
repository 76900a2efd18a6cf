#include <linux/x11/CrashRelease.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace orrivane::x11 {

namespace {

// All that end or stop a program which does not expect them; those that tell it to end it expects.
constexpr std::array<int, 22> unforeseen{SIGABRT, SIGALRM,   SIGBUS,  SIGFPE,  SIGILL,  SIGIO,
                                         SIGPIPE, SIGPROF,   SIGPWR,  SIGQUIT, SIGSEGV, SIGSTKFLT,
                                         SIGSYS,  SIGTRAP,   SIGTSTP, SIGTTIN, SIGTTOU, SIGUSR1,
                                         SIGUSR2, SIGVTALRM, SIGXCPU, SIGXFSZ};
constexpr int patience = 100; // milliseconds

// A signal handler reaches nothing but what is static.
std::array<bool, unforeseen.size()> caught;
std::array<unsigned char, CrashRelease::largest> message;
std::size_t length = 0;
int target = -1;
const CrashRelease* newest = nullptr;

void restore() {
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    for (std::size_t i = 0; i < unforeseen.size(); ++i)
        if (caught[i])
            sigaction(unforeseen[i], &usual, nullptr);
    caught.fill(false);
}

// Only what is safe in a signal handler. The socket is the one of a library that writes whole
// requests, so what follows here begins a new one.
void release(int number) {
    restore();
    std::size_t written = 0;
    while (written < length) {
        pollfd writable{target, POLLOUT, 0};
        if (poll(&writable, 1, patience) <= 0)
            break;
        const auto count = write(target, message.data() + written, length - written);
        if (count <= 0)
            break;
        written += static_cast<std::size_t>(count);
    }
    // Blocked until this returns, then as if nobody had caught it.
    raise(number);
}

} // namespace

CrashRelease::CrashRelease(int descriptor, std::span<const unsigned char> requests) {
    if (newest)
        restore();
    newest = this;
    target = descriptor;
    length = std::min(requests.size(), message.size());
    std::copy_n(requests.begin(), length, message.begin());
    struct sigaction action = {};
    action.sa_handler = release;
    sigfillset(&action.sa_mask);
    for (std::size_t i = 0; i < unforeseen.size(); ++i) {
        struct sigaction present = {};
        sigaction(unforeseen[i], nullptr, &present);
        // What the program ignores or handles does not end it.
        caught[i] = present.sa_handler == SIG_DFL;
        if (caught[i])
            sigaction(unforeseen[i], &action, nullptr);
    }
}

CrashRelease::~CrashRelease() {
    if (newest != this)
        return;
    restore();
    newest = nullptr;
}

} // namespace orrivane::x11
