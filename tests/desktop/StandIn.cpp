#include "TestWindow.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

/// Takes the program's place in the tests of the harness: shows one window that the window manager
/// leaves alone, at the place given as x, y, width and height, until it is told to end.
int main(int argc, char** argv) try {
    using namespace orrivane::e2e;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto number = [&](std::size_t index) { return std::stoi(arguments.at(index)); };
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    const char* display = std::getenv("DISPLAY");
    Observer observer(display != nullptr ? display : "");
    TestWindow window(
        observer, {.area = {number(0), number(1), number(2), number(3)}, .overrideRedirect = true});
    window.map();
    std::cout << "shown" << std::endl;
    int received = 0;
    sigwait(&ending, &received);
    return 0;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return 1;
}
