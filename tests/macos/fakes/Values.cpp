#include <tests/macos/fakes/Values.h>

#include <tests/macos/fakes/Unicode.h>

namespace orrivane::fakes {

namespace {

template <typename Kind>
Any made(Kind kind) {
    return Any::adopting(Heap::shared().make<CFTypeRef>(std::move(kind)));
}

} // namespace

Any integer(std::int64_t value) {
    return made(Number{value});
}
Any real(double value) {
    return made(Number{value});
}
Any truth(bool value) {
    return made(Truth{value});
}
Any text(const std::string& utf8) {
    return made(Text{fromUtf8(utf8).value()});
}
Any brokenText() {
    return made(Text{{u'a', char16_t{0xd83d}, u'b'}});
}

Any list(const std::vector<Any>& members) {
    List result;
    for (const auto& member : members)
        result.members.push_back(member.get());
    return made(std::move(result));
}

Any table(const std::vector<std::pair<std::string, Any>>& members) {
    Table result;
    for (const auto& [key, value] : members)
        result.members.emplace_back(fromUtf8(key).value(), value.get());
    return made(std::move(result));
}

Any packed(AXValueType type, std::vector<double> numbers) {
    return made(Packed{type, std::move(numbers)});
}
Any point(double x, double y) {
    return packed(kAXValueTypeCGPoint, {x, y});
}
Any size(double width, double height) {
    return packed(kAXValueTypeCGSize, {width, height});
}
Any rect(double x, double y, double width, double height) {
    return packed(kAXValueTypeCGRect, {x, y, width, height});
}

Any rectTable(double x, double y, double width, double height) {
    return table(
        {{"X", real(x)}, {"Y", real(y)}, {"Width", real(width)}, {"Height", real(height)}});
}

} // namespace orrivane::fakes
