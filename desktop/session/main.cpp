#include <desktop/session/Session.h>

#include <cstdio>
#include <stdexcept>

int main(int argc, char** argv) {
    using namespace orrivane::desktop;
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto parsed = parseSession(arguments);
    if (const auto* text = std::get_if<SessionText>(&parsed)) {
        std::fputs(text->text.c_str(), text->status == 0 ? stdout : stderr);
        return text->status;
    }
    try {
        return Session(std::get<SessionOptions>(parsed)).run();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orrivane-desktop: %s\n", failure.what());
        return 1;
    }
}
