#include <tests/macos/fakes/PreferenceStore.h>

#include <tests/macos/fakes/Unicode.h>

namespace orrivane::fakes {

PreferenceStore& PreferenceStore::shared() {
    static PreferenceStore store;
    return store;
}

} // namespace orrivane::fakes

using namespace orrivane::fakes;

const CFStringRef kCFPreferencesAnyApplication =
    Heap::shared().constant("kCFPreferencesAnyApplication");
const CFStringRef kCFPreferencesCurrentUser = Heap::shared().constant("kCFPreferencesCurrentUser");
const CFStringRef kCFPreferencesCurrentHost = Heap::shared().constant("kCFPreferencesCurrentHost");

namespace {

bool isTheRightPlace(CFStringRef application, CFStringRef user, CFStringRef host) {
    const bool isRight = application == kCFPreferencesAnyApplication &&
                         user == kCFPreferencesCurrentUser && host == kCFPreferencesCurrentHost;
    if (!isRight)
        Heap::shared().note("preferences of another place");
    return isRight;
}

std::string nameOf(CFStringRef key) {
    const auto* text = Heap::shared().find<Text>(key);
    std::string bytes;
    if (text)
        toUtf8(text->units, 3 * text->units.size(), bytes);
    return bytes;
}

} // namespace

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef application, CFStringRef user,
                                         CFStringRef host) {
    if (!isTheRightPlace(application, user, host))
        return nullptr;
    const auto& values = PreferenceStore::shared().values;
    const auto found = values.find(nameOf(key));
    return found == values.end() ? nullptr : Any(found->second).detach();
}

void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef application,
                           CFStringRef user, CFStringRef host) {
    if (!isTheRightPlace(application, user, host))
        return;
    auto& values = PreferenceStore::shared().values;
    if (value)
        values[nameOf(key)] = Any::retaining(value);
    else
        values.erase(nameOf(key));
}

Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host) {
    auto& store = PreferenceStore::shared();
    if (!isTheRightPlace(application, user, host) || !store.isWritable)
        return false;
    store.written = store.values;
    return true;
}
