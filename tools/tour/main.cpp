#include "Tour.h"

#include "Desktop.h"

#include <QCoreApplication>

#include <csignal>
#include <exception>
#include <iostream>
#include <string_view>

namespace {

constexpr int skipped = 77;
constexpr int misused = 2;
constexpr const char* usage =
    "Usage: orrivane_tour [--dark] [--pictures FOLDER]\n"
    "  --dark             on a dark desktop\n"
    "  --pictures FOLDER  where a picture of every state goes (demo-out)\n";

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void interrupt(int) {
    interrupted = true;
}

} // namespace

int main(int argc, char** argv) try {
    const QCoreApplication application(argc, argv); // the accessibility bus needs it
    orrivane::tour::Tour::Options options;
    options.program = ORRIVANE_TOUR_PROGRAM;
    options.pictures = "demo-out";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--dark") {
            options.dark = true;
        } else if (argument == "--pictures" && i + 1 < argc) {
            options.pictures = argv[++i];
        } else {
            const bool asked = argument == "--help";
            (asked ? std::cout : std::cerr) << usage;
            return asked ? 0 : misused;
        }
    }
    using orrivane::tour::Tour;
    if (const auto missing = orrivane::e2e::missingPrograms(Tour::programs()); !missing.empty()) {
        std::cout << "tour: " << missing << std::endl;
        return skipped;
    }
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    Tour tour(options);
    if (!tour.go(interrupted))
        return 1;
    std::cout << "tour: all steps held; pictures are in " << options.pictures << std::endl;
    return 0;
} catch (const std::exception& failure) {
    std::cerr << "tour: " << failure.what() << std::endl;
    return 1;
}
