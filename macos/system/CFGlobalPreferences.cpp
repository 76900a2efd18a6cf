#include <macos/system/CFGlobalPreferences.h>

#include <macos/system/CFTypes.h>

namespace orrivane {

namespace {

// The functions for applications' preferences must not be given the global domain; these may.
void store(CFStringRef key, CFPropertyListRef value) {
    CFPreferencesSetValue(key, value, kCFPreferencesAnyApplication, kCFPreferencesCurrentUser,
                          kCFPreferencesCurrentHost);
}

} // namespace

std::optional<std::int64_t> CFGlobalPreferences::copyValue(std::string_view key) {
    const auto name = cf::makeString(key);
    if (!name)
        return std::nullopt;
    const auto stored = CFRef<CFPropertyListRef>::adopting(
        CFPreferencesCopyValue(name.get(), kCFPreferencesAnyApplication, kCFPreferencesCurrentUser,
                               kCFPreferencesCurrentHost));
    const auto number = cf::number(stored.get());
    if (!number)
        return std::nullopt;
    // Whether it was converted without loss is of no interest: the nearest value is written anyway.
    std::int64_t value = 0;
    CFNumberGetValue(number, kCFNumberSInt64Type, &value);
    return value;
}

void CFGlobalPreferences::setValue(std::string_view key, std::optional<std::int64_t> value) {
    const auto name = cf::makeString(key);
    if (!name)
        return;
    if (!value) {
        store(name.get(), nullptr);
        return;
    }
    // Null would remove the key.
    if (const auto number = cf::makeNumber(*value))
        store(name.get(), number.get());
}

bool CFGlobalPreferences::synchronize() {
    return CFPreferencesSynchronize(kCFPreferencesAnyApplication, kCFPreferencesCurrentUser,
                                    kCFPreferencesCurrentHost) != 0;
}

} // namespace orrivane
