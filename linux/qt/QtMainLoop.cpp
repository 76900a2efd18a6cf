#include <linux/qt/QtMainLoop.h>

#include <linux/support/MonotonicClock.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTimerEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace orrivane {

namespace {

// The shortest period that makes sense with timers of one millisecond.
constexpr double shortestInterval = 0.001;
// A timer this little before its time is on time.
constexpr double earliness = 0.0005;

class PostedWork : public QEvent {
  public:
    explicit PostedWork(std::function<void()> work)
        : QEvent(eventType())
        , work_(std::move(work)) {}

    static QEvent::Type eventType() {
        static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
        return type;
    }
    void run() {
        if (work_)
            work_();
    }

  private:
    std::function<void()> work_;
};

struct Timer {
    std::function<void()> action;
    double due = 0;       // nominal, monotonic seconds
    double tolerance = 0; // seconds
    double interval = 0;  // seconds; 0: fires once
    int id = 0;           // 0: not armed
};

} // namespace

double alignedFiring(double due, double tolerance) {
    for (const double grid : {1.0, 0.5, 0.25}) {
        const double round = std::ceil(due / grid) * grid;
        if (round <= due + tolerance)
            return round;
    }
    return due;
}

double followingDue(double due, double interval, double now) {
    const double next = due + interval;
    if (next > now)
        return next;
    return next + interval * (std::floor((now - next) / interval) + 1);
}

class QtMainLoop::Receiver : public QObject {
  public:
    void post(std::function<void()> work) {
        if (!closed_)
            QCoreApplication::postEvent(this, new PostedWork(std::move(work)));
    }

    static Subscription start(const std::shared_ptr<Receiver>& receiver, Timer description) {
        auto timer = std::make_shared<Timer>(std::move(description));
        receiver->arm(timer);
        return Subscription([weakReceiver = std::weak_ptr(receiver), weak = std::weak_ptr(timer)] {
            const auto alive = weakReceiver.lock();
            const auto armed = weak.lock();
            if (alive && armed)
                alive->disarm(*armed);
        });
    }

    // Drops everything; what dies with it may still call post and destroy handles.
    void close() {
        closed_ = true;
        const auto timers = std::exchange(timers_, {});
        for (const auto& [id, timer] : timers) {
            killTimer(id);
            timer->id = 0;
        }
        QCoreApplication::removePostedEvents(this);
    }

  protected:
    bool event(QEvent* event) override {
        if (event->type() != PostedWork::eventType())
            return QObject::event(event);
        static_cast<PostedWork*>(event)->run();
        return true;
    }

    void timerEvent(QTimerEvent* event) override {
        const auto found = timers_.find(event->timerId());
        if (found == timers_.end())
            return;
        // Held here: the action may destroy its own handle.
        const auto timer = found->second;
        disarm(*timer);
        const double now = monotonicNow();
        if (now + earliness < timer->due) {
            arm(timer);
            return;
        }
        if (timer->interval > 0) {
            timer->due = followingDue(timer->due, timer->interval, now);
            arm(timer);
        }
        if (timer->action)
            timer->action();
    }

  private:
    void arm(const std::shared_ptr<Timer>& timer) {
        if (closed_)
            return;
        const double firing = alignedFiring(timer->due, timer->tolerance);
        const double milliseconds = std::ceil((firing - monotonicNow()) * 1000);
        const double longest = std::numeric_limits<int>::max();
        timer->id =
            startTimer(static_cast<int>(std::clamp(milliseconds, 0.0, longest)), Qt::PreciseTimer);
        timers_[timer->id] = timer;
    }

    void disarm(Timer& timer) {
        if (timer.id == 0)
            return;
        killTimer(timer.id);
        timers_.erase(std::exchange(timer.id, 0));
    }

    std::map<int, std::shared_ptr<Timer>> timers_;
    std::atomic<bool> closed_ = false; // work is posted from other threads too
};

QtMainLoop::QtMainLoop()
    : receiver_(std::make_shared<Receiver>()) {}

QtMainLoop::~QtMainLoop() {
    close();
}

void QtMainLoop::close() {
    receiver_->close();
}

void QtMainLoop::post(std::function<void()> work) {
    receiver_->post(std::move(work));
}

double QtMainLoop::now() const {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

Subscription QtMainLoop::repeatingTimer(double interval, double tolerance,
                                        std::function<void()> action) {
    Timer timer;
    timer.action = std::move(action);
    timer.interval = std::max(interval, shortestInterval);
    timer.tolerance = std::clamp(tolerance, 0.0, timer.interval);
    timer.due = monotonicNow() + timer.interval;
    return Receiver::start(receiver_, std::move(timer));
}

Subscription QtMainLoop::wakeUp(double delay, std::function<void()> action) {
    Timer timer;
    timer.action = std::move(action);
    timer.due = monotonicNow() + std::max(delay, 0.0);
    return Receiver::start(receiver_, std::move(timer));
}

} // namespace orrivane
