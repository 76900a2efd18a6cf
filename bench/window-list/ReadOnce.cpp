#include "OwnRead.h"

#include <cstdio>
#include <exception>

// One read as a process of its own: connects, reads, prints how many entries there are, ends.
int main() try {
    orrivane::bench::OwnRead reader(nullptr);
    std::printf("%zu\n", reader.read());
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}
