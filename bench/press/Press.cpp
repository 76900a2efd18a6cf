#include "MenuClock.h"

#include <bench/support/Report.h>
#include <bench/support/Samples.h>

#include <Mirror.h>

#include <cstdio>
#include <exception>
#include <thread>

// From the click to the application's own menu: on the icon's mirror in the strip, and on the icon
// itself. All applications stand in one tray and are pressed in turn, so that no two clicks on one
// icon follow each other fast enough to be a double click.

namespace orrivane::bench {

namespace {

struct Subject {
    std::string name;
    e2e::DockedClient* client;
    std::uint8_t button;
    Samples mirrored;
    Samples direct;
    int lost = 0;
};

class PressBench {
  public:
    PressBench() {
        // One icon's two subjects stand apart: the program takes a second click on the icon that
        // it pressed last for the click that has just closed its menu.
        auto& parcellite = desktop_.startClient("parcellite");
        add("parcellite (GTK 2)", parcellite, 1);
        add("xfce4-clipman (GTK 3)", desktop_.startClient("xfce4-clipman"), 1);
        add("kteatime (Qt 5), right button", desktop_.startClient("kteatime"), 3);
        add("parcellite (GTK 2), right button", parcellite, 3);
        add("volumeicon (GTK 3), right button", desktop_.startClient("volumeicon"), 3);
        add("qjackctl (Qt 6), right button", desktop_.startClient("qjackctl"), 3);
        desktop_.cutOutIcons(0, desktop_.clients().size() - 1);
        desktop_.startProgram();
        if (const auto right = mirror_.waitUntilRight(); !right)
            throw std::runtime_error(right.message() + ("\n" + desktop_.program().log()));
    }

    void measure() {
        const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 200);
        for (int round = 0; round < rounds; ++round)
            for (const bool second : {false, true})
                for (auto& subject : subjects_)
                    pressOnce(subject, (round % 2 == 0) == second);
        for (const auto& subject : subjects_)
            report(subject);
    }

  private:
    void add(const std::string& name, e2e::DockedClient& client, std::uint8_t button) {
        subjects_.push_back({name, &client, button, {}, {}, 0});
    }

    void pressOnce(Subject& subject, bool mirrored) {
        const auto icon = desktop_.observer().window(subject.client->icon);
        if (!icon)
            throw std::runtime_error(subject.name + " has gone");
        const auto place = mirrored ? mirror_.cellOf(icon->id).centre() : icon->area.centre();
        const auto timing = clock_.click(place.x, place.y, subject.button, icon->id);
        if (!timing) {
            ++subject.lost;
            return;
        }
        (mirrored ? subject.mirrored : subject.direct).add(timing->milliseconds);
        if (const auto menu = desktop_.observer().window(timing->menu))
            desktop_.closeMenu(*menu);
        // Grabs end and focus returns after the menu's window has gone.
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
    }

    void report(const Subject& subject) {
        for (const auto& [way, samples] :
             {std::pair{"mirror", &subject.mirrored}, std::pair{"icon", &subject.direct}}) {
            const std::string clicked = std::string("click on the ") + way;
            report_.figure(subject.name, clicked + ", p50", samples->median(), "ms");
            report_.figure(subject.name, clicked + ", p95", samples->quantile(0.95), "ms");
            report_.figure(subject.name, clicked + ", presses",
                           static_cast<double>(samples->size()), "");
        }
        const double ratio = subject.mirrored.median() / subject.direct.median();
        report_.figure(subject.name, "p50 of mirror / icon", ratio, "",
                       Aim::atMost(ratio, 1.3, ""));
        report_.figure(subject.name, "presses without a menu", subject.lost, "",
                       Aim::atMost(subject.lost, 0, ""));
    }

    Report report_{"press"};
    e2e::Desktop desktop_{{}};
    e2e::Mirror mirror_{desktop_};
    MenuClock clock_{desktop_.server().display()};
    std::vector<Subject> subjects_;
};

} // namespace

} // namespace orrivane::bench

int main() try { orrivane::bench::PressBench().measure(); } catch (const std::exception& failure) {
    std::fprintf(stderr, "press: %s\n", failure.what());
    return 1;
}
