#include <Orrivane/platform/Host.h>

#include <Orrivane/platform/Platform.h>

#include <linux/SignalWatcher.h>
#include <linux/qt/GlobalMenuExtents.h>
#include <linux/qt/QtMainLoop.h>
#include <linux/qt/QtTrayPanel.h>
#include <linux/qt/QtUserDefaults.h>
#include <linux/qt/SleepMonitor.h>
#include <linux/qt/StandardErrorLog.h>
#include <linux/x11/SessionCheck.h>
#include <linux/x11/X11Platform.h>

#include <QApplication>
#include <QDesktopServices>
#include <QSocketNotifier>
#include <QUrl>

#include <cstdlib>

namespace orrivane {

namespace {

bool openAddress(std::string_view address) {
    const QUrl url(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
                   QUrl::StrictMode);
    // The system's own panes exist on one system only.
    const bool opensHere = url.scheme() == "http" || url.scheme() == "https";
    return opensHere && QDesktopServices::openUrl(url);
}

/// The X11 desktop: the toolkit's loop and panel over the port's own connection.
class X11Host : public Host {
  public:
    X11Host(std::unique_ptr<QApplication> application, std::unique_ptr<x11::Connection> connection)
        : application_(std::move(application))
        , connection_(std::move(connection))
        , x11_(*connection_, loop_, settings())
        , panel_(x11_.stage)
        , readable_(connection_->descriptor(), QSocketNotifier::Read)
        , signals_([] { QCoreApplication::quit(); })
        , platform_{
              loop_,        x11_.screens, x11_.windowList, x11_.ownWindows, x11_.accessibility,
              x11_.capture, defaults_,    x11_.workspace,  panel_,          log_} {
        QObject::connect(&readable_, &QSocketNotifier::activated, [this] { connection_->drain(); });
        connection_->setQueuedHandler([this] { drainSoon(); });
    }

    const Platform& platform() override { return platform_; }

    int run() override {
        // D-Bus is not needed for the first tray, so it does not hold it up.
        loop_.post([this] { watchForSleep(); });
        if (x11_.screens.knowsOnlyTheInset())
            log_.write("Orrivane: this panel has a notch of unknown width; tell where it is with "
                       "orrivane --set-notch X,Y,WIDTH,HEIGHT");
        return QApplication::exec();
    }

  private:
    x11::X11Platform::Settings settings() {
        return {application_->devicePixelRatio(),
                x11::CutoutFile::ofUser(),
                {openAddress, [] { QCoreApplication::quit(); }, [] {}},
                [this](std::int32_t process, PixelRect band) {
                    return globalMenu_.rightEdge(process, band);
                }};
    }

    // Events that came in beside a reply do not make the descriptor readable again.
    void drainSoon() {
        if (std::exchange(drainPosted_, true))
            return;
        loop_.post([this] {
            drainPosted_ = false;
            connection_->drain();
        });
    }

    void watchForSleep() {
        sleep_ =
            std::make_unique<SleepMonitor>(QDBusConnection::systemBus(), [this](bool goingToSleep) {
                x11_.workspace.machineSleeps(goingToSleep);
            });
    }

    std::unique_ptr<QApplication> application_;
    QtMainLoop loop_;
    std::unique_ptr<x11::Connection> connection_;
    QtUserDefaults defaults_;
    StandardErrorLog log_;
    GlobalMenuExtents globalMenu_;
    x11::X11Platform x11_;
    QtTrayPanel panel_;
    QSocketNotifier readable_;
    SignalWatcher signals_;
    std::unique_ptr<SleepMonitor> sleep_;
    bool drainPosted_ = false;
    Platform platform_;
};

} // namespace

std::unique_ptr<Host> Host::create(int& argc, char** argv, std::string& problem) {
    if (const auto unsuitable = x11::SessionCheck::problemOfEnvironment()) {
        problem = *unsuitable;
        return nullptr;
    }
    auto connection = x11::Connection::open(nullptr, problem);
    if (!connection)
        return nullptr;
    if (x11::SessionCheck::isXwayland(*connection)) {
        problem = x11::SessionCheck::waylandSentence();
        return nullptr;
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    QCoreApplication::setApplicationName("orrivane");
    QGuiApplication::setDesktopFileName("orrivane");
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return std::make_unique<X11Host>(std::move(application), std::move(connection));
}

std::optional<std::string> Host::storeCutout(const Rect& pixels) {
    return x11::CutoutFile::ofUser().write(pixels);
}

} // namespace orrivane
