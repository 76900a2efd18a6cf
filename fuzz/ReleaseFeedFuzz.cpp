#include <linux/updater/ReleaseChoice.h>
#include <linux/updater/ReleaseFeed.h>
#include <linux/updater/ReleaseVersion.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace orrivane;

/// Whatever a server sends: it is refused or read, and nothing unsigned is ever offered.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static const auto key = PublicKey::fromBase64("11qYAYKxCrfVS/7TyWQHOg7hcvPapiMlrwIaaPcHURo=");
    const auto reading = readReleaseFeed(text);
    if (reading.problem && !reading.entries.empty())
        std::abort();
    if (chooseRelease(reading.entries, *key, "0.1", "").offer)
        std::abort();
    for (const auto& entry : reading.entries)
        if (const auto version = ReleaseVersion::parse(entry.version); version != version)
            std::abort();
    return 0;
}
