#include <desktop/support/ChoiceLog.h>
#include <desktop/support/CommonOptions.h>
#include <desktop/windows/AppMenuPublisher.h>
#include <desktop/windows/NotesView.h>
#include <desktop/windows/SketchView.h>
#include <desktop/windows/WindowFrame.h>

#include <algorithm>
#include <iostream>

#include <QApplication>
#include <QScreen>

#include <sys/prctl.h>

namespace {

using namespace orrivane::desktop;

struct Kind {
    std::string id;
    std::string name;
    QRectF place; ///< points
    double titleLeft;
};

const Kind notesKind{"notes", "Notes", {96, 118, 620, 400}, NotesView::sidebarWidth + 22};
const Kind sketchKind{"sketch", "Sketch", {420, 236, 660, 480}, 72};

// A smaller screen shows the whole window nevertheless.
QRect placeOn(const QScreen& screen, const QRectF& points, const Theme& theme) {
    const QRect room = screen.geometry();
    const int wide = std::min(theme.pixels(points.width()), room.width());
    const int high = std::min(theme.pixels(points.height()), room.height());
    const int left = std::min(theme.pixels(points.x()), room.width() - wide);
    const int top = std::min(theme.pixels(points.y()), room.height() - high);
    return {room.left() + left, room.top() + top, wide, high};
}

template <typename View>
int run(const Kind& kind, const CommonOptions& options, int argc, char** argv) {
    keepToolkitUnscaled();
    ::prctl(PR_SET_NAME, kind.id.c_str());
    qputenv("RESOURCE_NAME", QByteArray::fromStdString(kind.id));
    QCoreApplication::setApplicationName(QString::fromStdString(kind.name));
    QApplication application(argc, argv);
    const Theme theme = Theme::make(options.dark, options.scale);
    theme.install(application);
    auto* view = new View(theme);
    WindowFrame window(theme, view);
    window.setWindowTitle(QString::fromStdString(kind.name));
    window.title().setTitleLeft(kind.titleLeft);
    window.setGeometry(placeOn(*QGuiApplication::primaryScreen(), kind.place, theme));
    AppMenuPublisher menus(window, kind.name, View::menus());
    const auto note = [&](const QString& menu, const QString& entry) {
        logChoice(kind.id, (menu + QLatin1Char('/') + entry).toStdString());
    };
    QObject::connect(&menus, &AppMenuPublisher::chosen, &window,
                     [&](const QString& menu, const QString& entry) {
                         note(menu, entry);
                         view->choose(menu, entry);
                         window.say(menu + QStringLiteral("  ›  ") + entry);
                     });
    QObject::connect(&menus, &AppMenuPublisher::quitChosen, &window,
                     [&](const QString& menu, const QString& entry) {
                         note(menu, entry);
                         window.close();
                     });
    window.show();
    return QApplication::exec();
}

int usage(std::ostream& out, int status) {
    out << "Usage: orrivane-window [--scale S] [--dark] notes|sketch\n";
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::string error;
    const auto options = CommonOptions::parse(argc, argv, error);
    if (!options) {
        std::cerr << "orrivane-window: " << error << '\n';
        return 2;
    }
    if (options->rest.size() != 1)
        return usage(std::cerr, 2);
    const std::string& what = options->rest.front();
    if (what == notesKind.id)
        return run<NotesView>(notesKind, *options, argc, argv);
    if (what == sketchKind.id)
        return run<SketchView>(sketchKind, *options, argc, argv);
    return what == "--help" ? usage(std::cout, 0) : usage(std::cerr, 2);
}
