#include <Orrivane/AppDelegate.h>
#include <Orrivane/CaptureService.h>
#include <Orrivane/CommandLine.h>
#include <Orrivane/Diagnosis.h>
#include <Orrivane/DiagnosisWithCaptures.h>
#include <Orrivane/MainView.h>
#include <Orrivane/MoveEngine.h>
#include <Orrivane/StripController.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/platform/Host.h>
#include <Orrivane/support/NotificationCenter.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

int fail(const std::string& sentence) {
    std::fprintf(stderr, "orrivane: %s\n", sentence.c_str());
    return 1;
}

ItemMover moverOf(Host& host) {
    return {[&host](StatusItemWindow item, double toX) {
                auto own = host.moveItem(item, toX);
                return own ? std::move(*own) : MoveEngine::move(item, toX);
            },
            [&host] { return host.arrangeLimitation(); }};
}

int run(Host& host) {
    auto& captures = CaptureService::shared();
    auto& strip = StripController::shared();
    auto& updates = UpdateController::shared();
    auto& notifications = NotificationCenter::defaultCenter();
    const auto& platform = host.platform();
    const auto& shell = host.shellPlatform();
    const MainView::Services services{captures,      strip,
                                      updates,       notifications,
                                      moverOf(host), [&host] { return host.squeezeLimitation(); }};
    AppDelegate delegate(platform, shell, {captures, strip, updates, notifications},
                         [&](bool inWindow, std::function<void(const View&)> setRoot) {
                             return MainView::create(inWindow, platform, shell, services,
                                                     std::move(setRoot));
                         });
    return host.run(delegate);
}

int diagnose(Host& host, DiagnoseCommand asked) {
    StripController::shared(); // registers the defaults that are read
    const auto print = [asked](const Diagnosis& diagnosis) {
        std::fputs((asked.json ? diagnosis.json() : diagnosis.text()).c_str(), stdout);
    };
    auto diagnosis = Diagnosis::take(host.platform(), host.shellPlatform().globalPreferences,
                                     host.runningElsewhere());
    if (asked.capture) {
        DiagnosisWithCaptures capturing(host.platform(), std::move(diagnosis), print);
        return host.run(capturing);
    }
    print(diagnosis);
    return 0;
}

int perform(const Command& command, int& argc, char** argv) {
    std::string problem;
    const auto host = Host::create(argc, argv, problem);
    if (!host)
        return fail(problem);
    if (std::holds_alternative<QuitCommand>(command))
        return host->quitOther() ? 0 : fail("no Orrivane runs on this desktop.");
    Platform::install(host->platform());
    ShellPlatform::install(host->shellPlatform());
    if (const auto* asked = std::get_if<DiagnoseCommand>(&command))
        return diagnose(*host, *asked);
    switch (host->claim()) {
    case Claim::made:
        return run(*host);
    case Claim::toldTheOther:
        return 0;
    case Claim::unanswered:
        break;
    }
    return fail("another Orrivane may run on this desktop but could not be told to show its "
                "window; start Orrivane again in a moment.");
}

} // namespace
} // namespace orrivane

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto command = orrivane::CommandLine::parse(arguments);
    if (const auto* print = std::get_if<orrivane::PrintCommand>(&command)) {
        std::fputs(print->text.c_str(), stdout);
        return 0;
    }
    if (const auto* error = std::get_if<orrivane::UsageError>(&command))
        return orrivane::fail(error->message);
    if (const auto* notch = std::get_if<orrivane::SetNotchCommand>(&command)) {
        const auto problem = orrivane::Host::storeCutout(notch->cutout);
        return problem ? orrivane::fail(*problem) : 0;
    }
    return orrivane::perform(command, argc, argv);
}
