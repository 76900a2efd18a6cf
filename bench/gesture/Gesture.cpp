#include <Orrivane/MoveEngine.h>
#include <Orrivane/platform/SystemLog.h>

#include <linux/qt/QtMainLoop.h>
#include <linux/x11/X11Platform.h>

#include <bench/support/Report.h>
#include <bench/support/Samples.h>

#include <PrivateXServer.h>
#include <TempDirectory.h>

#include <QEventLoop>
#include <QGuiApplication>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <thread>

// How long a whole gesture is, from its press to its release as the server stamps them, beside the
// sum of its pauses. Each pause may only be longer than it says, so what the loop adds to each adds
// up over all of them; what a thread's plain sleeps add is the machine's own part.

namespace orrivane::bench {

namespace {

constexpr double nominal =
    1000 * (MoveEngine::pauseAfterMouseDown +
            static_cast<double>(MoveEngine::dragSteps) * MoveEngine::pauseAfterDragStep +
            MoveEngine::pauseBeforeMouseUp); // milliseconds

class NoLog : public SystemLog {
  public:
    void write(std::string_view) override {}
};

/// A window over the whole screen of a connection of its own.
class Witness {
  public:
    explicit Witness(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr)) {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const auto window = xcb_generate_id(connection_);
        const std::uint32_t values[]{1, XCB_EVENT_MASK_BUTTON_PRESS |
                                            XCB_EVENT_MASK_BUTTON_RELEASE |
                                            XCB_EVENT_MASK_POINTER_MOTION};
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0,
                          screen->width_in_pixels, screen->height_in_pixels, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(connection_, window);
        take();
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { xcb_disconnect(connection_); }

    /// Milliseconds from the press to the release among the events since the last call.
    double take() {
        const x11::Owned<xcb_get_input_focus_reply_t> answered(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
        std::uint32_t press = 0;
        std::uint32_t release = 0;
        while (const x11::Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
            const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            if (event->response_type == XCB_BUTTON_PRESS)
                press = button.time;
            else if (event->response_type == XCB_BUTTON_RELEASE)
                release = button.time;
        }
        return double(release - press);
    }

  private:
    xcb_connection_t* connection_;
};

double plainSleeps() {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    const auto begin = Clock::now();
    std::this_thread::sleep_for(Seconds(MoveEngine::pauseAfterMouseDown));
    for (std::size_t step = 0; step < MoveEngine::dragSteps; ++step)
        std::this_thread::sleep_for(Seconds(MoveEngine::pauseAfterDragStep));
    std::this_thread::sleep_for(Seconds(MoveEngine::pauseBeforeMouseUp));
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

class GestureBench {
  public:
    GestureBench(const std::string& display, const std::string& folder)
        : witness_(display)
        , connection_(open(display))
        , port_(*connection_, loop_, {1, x11::CutoutFile(folder + "/notch"), {}, {}, folder}) {}

    void measure() {
        Samples gestures;
        Samples sleeps;
        const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 40);
        for (int round = 0; round < rounds; ++round) {
            gestures.add(play());
            sleeps.add(plainSleeps());
        }
        for (const auto& [name, samples] :
             {std::pair{"a gesture", &gestures}, std::pair{"plain sleeps", &sleeps}}) {
            report_.figure(name, "nominal", nominal, "ms");
            report_.figure(name, "length, p50", samples->median(), "ms");
            report_.figure(name, "length, p95", samples->quantile(0.95), "ms");
            report_.figure(name, "added by each pause, p50", (samples->median() - nominal) / pauses,
                           "ms");
        }
    }

  private:
    static constexpr double pauses = MoveEngine::dragSteps + 2;

    static std::unique_ptr<x11::Connection> open(const std::string& display) {
        std::string problem;
        auto connection = x11::Connection::open(display.c_str(), problem);
        if (!connection)
            throw std::runtime_error(problem);
        return connection;
    }

    double play() {
        bool moved = false;
        QEventLoop running;
        start(loop_, [](EventPoster& poster, bool& result, QEventLoop& until) -> Task<> {
            NoLog log;
            StatusItemWindow item;
            item.frame = {{700, 0}, {30, 24}};
            result = co_await MoveEngine::move(item, 900, poster, log);
            until.quit();
        }(port_.eventPoster, moved, running));
        running.exec();
        // The release has reached the server when it answers what was sent after it.
        if (!moved || !connection_->synchronize(x11::Connection::deadline()))
            throw std::runtime_error("the gesture broke off");
        return witness_.take();
    }

    Report report_{"gesture"};
    Witness witness_;
    std::unique_ptr<x11::Connection> connection_;
    QtMainLoop loop_;
    x11::X11Platform port_;
};

} // namespace

} // namespace orrivane::bench

int main(int argc, char** argv) try {
    using namespace orrivane;
    const e2e::TempDirectory folder;
    const e2e::PrivateXServer server({}, folder.path());
    qputenv("DISPLAY", server.display().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QGuiApplication application(argc, argv);
    bench::GestureBench(server.display(), folder.path()).measure();
} catch (const std::exception& failure) {
    std::fprintf(stderr, "gesture: %s\n", failure.what());
    return 1;
}
