#include <linux/support/MenuBarPreferences.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace orrivane;

/// A preference file that anybody may have edited.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    MenuBarPreferences::parse(text);
    return 0;
}
