#include <tests/macos/fakes/Heap.h>

#include <algorithm>

namespace orrivane::fakes {

namespace {

std::vector<CFTypeRef> membersOf(const Payload& payload) {
    if (const auto* list = std::get_if<List>(&payload))
        return list->members;
    std::vector<CFTypeRef> members;
    if (const auto* table = std::get_if<Table>(&payload))
        for (const auto& [key, value] : table->members)
            members.push_back(value);
    return members;
}

} // namespace

Heap& Heap::shared() {
    static Heap heap;
    return heap;
}

const void* Heap::add(Payload payload, bool isConstant) {
    const auto refused = refused_.find(payload.index() + 1);
    if (refused != refused_.end() && refused->second && !isConstant)
        return nullptr;
    for (const CFTypeRef member : membersOf(payload))
        if (member)
            retain(member);
    auto object = std::make_unique<Object>(Object{std::move(payload), 1, isConstant});
    const void* address = object.get();
    objects_.emplace(address, std::move(object));
    return address;
}

CFStringRef Heap::constant(const std::string& ascii) {
    return static_cast<CFStringRef>(add(Text{{ascii.begin(), ascii.end()}}, true));
}

Heap::Object* Heap::objectAt(CFTypeRef address, const char* action) {
    const auto found = objects_.find(address);
    if (found == objects_.end()) {
        note(std::string(action) + (address ? " of something that is no object" : " of null"));
        return nullptr;
    }
    if (found->second->references < 1) {
        note(std::string(action) + " of an object that has been released");
        return nullptr;
    }
    return found->second.get();
}

void Heap::retain(CFTypeRef address) {
    if (auto* object = objectAt(address, "retain"))
        ++object->references;
}

void Heap::release(CFTypeRef address) {
    auto* object = objectAt(address, "release");
    if (!object || --object->references > 0)
        return;
    for (const CFTypeRef member : membersOf(object->payload))
        if (member)
            release(member);
    // What it answers with would else stay alive as long as the handle's remains.
    if (auto* element = std::get_if<Element>(&object->payload))
        element->node.reset();
}

CFTypeID Heap::typeOf(CFTypeRef address) {
    const auto* object = objectAt(address, "type");
    return object ? object->payload.index() + 1 : 0;
}

Payload* Heap::payloadOf(CFTypeRef address) {
    auto* object = objectAt(address, "use");
    return object ? &object->payload : nullptr;
}

std::vector<std::string> Heap::mistakes() const {
    auto mistakes = mistakes_;
    for (const auto& [address, object] : objects_)
        if (object->isConstant && object->references != 1)
            mistakes.emplace_back("a constant has been retained or released out of balance");
    return mistakes;
}

int Heap::live() const {
    return static_cast<int>(std::ranges::count_if(objects_, [](const auto& entry) {
        return !entry.second->isConstant && entry.second->references > 0;
    }));
}

int Heap::references(CFTypeRef address) const {
    const auto found = objects_.find(address);
    return found == objects_.end() ? 0 : found->second->references;
}

void Heap::clear() {
    std::erase_if(objects_, [](const auto& entry) { return !entry.second->isConstant; });
    for (const auto& [address, object] : objects_)
        object->references = 1;
    refused_.clear();
    mistakes_.clear();
}

} // namespace orrivane::fakes
