#include "Story.h"

#include "Desktop.h"

#include <csignal>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

namespace {

using orrivane::demo::Story;

constexpr int skipped = 77;
constexpr int misused = 2;
constexpr const char* usage =
    "Usage: orrivane_demo [--sabotage] [--pictures FOLDER]\n"
    "  --sabotage         the desktop does not tell where its notch is: step 2 has to fail\n"
    "  --pictures FOLDER  where a picture of every step goes (demo-out)\n";

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void interrupt(int) {
    interrupted = true;
}

/// Absent where the arguments make no sense.
std::optional<Story::Options> optionsOf(int argc, char** argv) {
    Story::Options options;
    options.pictures = "demo-out";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--sabotage")
            options.sabotage = true;
        else if (argument == "--pictures" && i + 1 < argc)
            options.pictures = argv[++i];
        else
            return std::nullopt;
    }
    return options;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc == 2 && std::string_view(argv[1]) == "--help") {
        std::cout << usage;
        return 0;
    }
    const auto options = optionsOf(argc, argv);
    if (!options) {
        std::cerr << usage;
        return misused;
    }
    if (const auto missing = orrivane::e2e::missingPrograms(Story::programs()); !missing.empty()) {
        std::cout << "demo: " << missing << std::endl;
        return skipped;
    }
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    Story story(*options);
    if (!story.tell(interrupted))
        return 1;
    std::cout << "demo: all steps held; pictures are in " << options->pictures << std::endl;
    return 0;
} catch (const std::exception& failure) {
    std::cerr << "demo: " << failure.what() << std::endl;
    return 1;
}
