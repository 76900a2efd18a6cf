#include <tests/support/VirtualLoop.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

namespace orrivane {

namespace {

// Whole nanoseconds: sums of intervals stay exact over hours of ticks.
constexpr double perSecond = 1e9;
constexpr double initialWallClock = 800'000'000;
constexpr std::size_t callbackLimit = 1'000'000;

std::int64_t nanoseconds(double seconds) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max() / 4;
    const double count = seconds * perSecond;
    if (!(count > 0))
        return 0;
    return count < static_cast<double>(most) ? std::llround(count) : most;
}

} // namespace

struct VirtualLoop::State {
    // Due time first, then creation: the order in which timers fire.
    using Key = std::pair<std::int64_t, std::uint64_t>;
    struct Timer {
        double seconds = 0;
        double tolerance = 0;
        bool repeats = false;
        std::int64_t interval = 0;
        std::shared_ptr<std::function<void()>> action;
    };

    bool closing = false;
    std::int64_t time = 0;
    double wallClockAtStart = initialWallClock;
    std::uint64_t lastTimer = 0;
    std::deque<std::function<void()>> posts;
    std::map<Key, Timer> timers;
    std::map<std::uint64_t, Key> keys;

    void remove(std::uint64_t id) {
        const auto key = keys.find(id);
        if (key == keys.end())
            return;
        // The action dies last: its captures may remove other timers.
        const auto removed = timers.extract(key->second);
        keys.erase(key);
    }
};

VirtualLoop::VirtualLoop()
    : state_(std::make_shared<State>()) {}

VirtualLoop::~VirtualLoop() {
    state_->closing = true;
    state_->keys.clear();
    const auto timers = std::exchange(state_->timers, {});
    const auto posts = std::exchange(state_->posts, {});
}

void VirtualLoop::post(std::function<void()> work) {
    if (!state_->closing)
        state_->posts.push_back(std::move(work));
}

double VirtualLoop::now() const {
    return state_->wallClockAtStart + elapsed();
}

double VirtualLoop::elapsed() const {
    return static_cast<double>(state_->time) / perSecond;
}

void VirtualLoop::setNow(double seconds) {
    state_->wallClockAtStart = seconds - elapsed();
}

Subscription VirtualLoop::repeatingTimer(double interval, double tolerance,
                                         std::function<void()> action) {
    return install(interval, tolerance, true, std::move(action));
}

Subscription VirtualLoop::wakeUp(double delay, std::function<void()> action) {
    return install(delay, 0, false, std::move(action));
}

Subscription VirtualLoop::install(double seconds, double tolerance, bool repeats,
                                  std::function<void()> action) {
    if (state_->closing)
        return {};
    State::Timer timer{seconds, tolerance, repeats, nanoseconds(seconds), {}};
    if (repeats)
        timer.interval = std::max<std::int64_t>(timer.interval, 1);
    timer.action = std::make_shared<std::function<void()>>(std::move(action));
    const auto id = ++state_->lastTimer;
    const State::Key key{state_->time + timer.interval, id};
    state_->timers.emplace(key, std::move(timer));
    state_->keys.emplace(id, key);
    return Subscription([weak = std::weak_ptr(state_), id] {
        if (const auto state = weak.lock())
            state->remove(id);
    });
}

bool VirtualLoop::runOnePost() {
    if (state_->posts.empty())
        return false;
    const auto work = std::move(state_->posts.front());
    state_->posts.pop_front();
    work();
    return true;
}

bool VirtualLoop::fireOneTimer(std::int64_t until) {
    auto& timers = state_->timers;
    if (timers.empty() || timers.begin()->first.first > until)
        return false;
    auto node = timers.extract(timers.begin());
    auto& [due, id] = node.key();
    state_->time = std::max(state_->time, due);
    // Held here, the action survives a timer that ends itself.
    const auto action = node.mapped().action;
    if (node.mapped().repeats) {
        const auto interval = node.mapped().interval;
        const auto missed = (state_->time - due) / interval;
        due += (missed + 1) * interval;
        state_->keys[id] = node.key();
        timers.insert(std::move(node));
    } else {
        state_->keys.erase(id);
    }
    (*action)();
    return true;
}

bool VirtualLoop::runNewestPost() {
    if (state_->posts.empty())
        return false;
    const auto work = std::move(state_->posts.back());
    state_->posts.pop_back();
    work();
    return true;
}

void VirtualLoop::runUntilIdle() {
    std::size_t callbacks = 0;
    while (runOnePost() || fireOneTimer(state_->time))
        if (++callbacks > callbackLimit)
            throw std::runtime_error("the loop never becomes idle");
}

void VirtualLoop::advance(double seconds) {
    const auto until = state_->time + nanoseconds(seconds);
    runUntilIdle();
    while (fireOneTimer(until))
        runUntilIdle();
    state_->time = std::max(state_->time, until);
}

void VirtualLoop::block(double seconds) {
    state_->time += nanoseconds(seconds);
}

std::vector<VirtualLoop::InstalledTimer> VirtualLoop::timers() const {
    std::vector<InstalledTimer> installed;
    for (const auto& [key, timer] : state_->timers) {
        const auto dueIn = static_cast<double>(key.first - state_->time) / perSecond;
        installed.push_back({timer.seconds, timer.tolerance, timer.repeats, dueIn});
    }
    return installed;
}

std::size_t VirtualLoop::timerCount() const {
    return state_->timers.size();
}

std::size_t VirtualLoop::repeatingTimerCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        state_->timers, [](const auto& entry) { return entry.second.repeats; }));
}

std::size_t VirtualLoop::pendingPosts() const {
    return state_->posts.size();
}

} // namespace orrivane
