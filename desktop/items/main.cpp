#include <desktop/items/Hang.h>
#include <desktop/items/StatusItem.h>
#include <desktop/support/CommonOptions.h>

#include <iostream>
#include <memory>

#include <QApplication>

#include <sys/prctl.h>

namespace {

using namespace orrivane::desktop;

int list() {
    for (const StatusKind& kind : statusKinds())
        std::cout << kind.id << '\t' << kind.width << '\t' << kind.parts.size() << '\t' << kind.name
                  << '\n';
    return 0;
}

int usage(std::ostream& out, int status) {
    out << "Usage: orrivane-status-item [--scale S] [--dark] KIND\n"
           "       orrivane-status-item --list   (kind, width in points, icons, name)\n";
    return status;
}

// An application without a name is called by its process; this one shall have none there either.
void takeName(const StatusKind& kind) {
    ::prctl(PR_SET_NAME, kind.name.empty() ? "" : kind.id.c_str());
    qputenv("RESOURCE_NAME", QByteArray::fromStdString(kind.id));
    QCoreApplication::setApplicationName(QString::fromStdString(kind.name));
}

int run(const StatusKind& kind, const CommonOptions& options, int argc, char** argv) {
    keepToolkitUnscaled();
    takeName(kind);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const Theme theme = Theme::make(options.dark, options.scale);
    theme.install(application);
    TrayWatch tray({theme.barBackground, theme.barForeground});
    std::vector<std::unique_ptr<StatusItem>> items;
    for (std::size_t part = 0; part < kind.parts.size(); ++part)
        items.push_back(std::make_unique<StatusItem>(kind, part, tray, theme));
    std::unique_ptr<HangOnSignal> hanging;
    if (kind.id == "sleepy")
        hanging = std::make_unique<HangOnSignal>();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) try {
    std::string error;
    const auto options = CommonOptions::parse(argc, argv, error);
    if (!options) {
        std::cerr << "orrivane-status-item: " << error << '\n';
        return 2;
    }
    if (options->rest.size() != 1)
        return usage(std::cerr, 2);
    const std::string& what = options->rest.front();
    if (what == "--help")
        return usage(std::cout, 0);
    if (what == "--list")
        return list();
    const StatusKind* kind = statusKind(what);
    if (kind == nullptr) {
        std::cerr << "orrivane-status-item: no such kind: " << what << '\n';
        return 2;
    }
    return run(*kind, *options, argc, argv);
} catch (const std::exception& failure) {
    std::cerr << "orrivane-status-item: " << failure.what() << '\n';
    return 1;
}
