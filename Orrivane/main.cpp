#include <Orrivane/CommandLine.h>
#include <Orrivane/StripController.h>
#include <Orrivane/platform/Host.h>
#include <Orrivane/platform/Platform.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

int fail(const std::string& sentence) {
    std::fprintf(stderr, "orrivane: %s\n", sentence.c_str());
    return 1;
}

int run(int& argc, char** argv) {
    std::string problem;
    const auto host = orrivane::Host::create(argc, argv, problem);
    if (!host)
        return fail(problem);
    orrivane::Platform::install(host->platform());
    orrivane::StripController::shared().start();
    return host->run();
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto command = orrivane::CommandLine::parse(arguments);
    if (const auto* print = std::get_if<orrivane::PrintCommand>(&command)) {
        std::fputs(print->text.c_str(), stdout);
        return 0;
    }
    if (const auto* error = std::get_if<orrivane::UsageError>(&command))
        return fail(error->message);
    if (const auto* notch = std::get_if<orrivane::SetNotchCommand>(&command)) {
        const auto problem = orrivane::Host::storeCutout(notch->cutout);
        return problem ? fail(*problem) : 0;
    }
    return run(argc, argv);
}
