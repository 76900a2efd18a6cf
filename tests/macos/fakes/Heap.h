#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace orrivane::fakes {

struct Node;

struct Text {
    std::u16string units; // a lone surrogate is possible, as in the system's strings
};
struct Number {
    std::variant<std::int64_t, double> value;
};
struct Truth {
    bool value;
};
/// Members are retained.
struct List {
    std::vector<CFTypeRef> members;
};
struct Table {
    std::vector<std::pair<std::u16string, CFTypeRef>> members;
};
struct Element {
    std::shared_ptr<Node> node; // null: the system-wide element
    float timeout = 0;          // seconds; 0: the process's default
};
/// A point, size, rectangle or range by its numbers in their usual order.
struct Packed {
    AXValueType type;
    std::vector<double> numbers;
};
struct Source {
    CGEventSourceStateID state;
};
struct Event {
    CGEventType type;
    CGPoint position;
    CGEventFlags flags;
};

using Payload = std::variant<Text, Number, Truth, List, Table, Element, Packed, Source, Event>;

/// Every object of the faked frameworks. One whose last reference is gone stays recognisable until
/// `clear`, so that its use after that is a mistake and no crash.
class Heap {
  public:
    static Heap& shared();

    /// With one reference; null when objects of this kind are refused.
    template <typename Ref, typename Kind>
    Ref make(Kind kind) {
        return static_cast<Ref>(const_cast<void*>(add(Payload(std::move(kind)), false)));
    }
    /// An object that is always there, whatever its references.
    CFStringRef constant(const std::string& ascii);

    void retain(CFTypeRef object);
    void release(CFTypeRef object);
    /// 0 after noting a mistake.
    CFTypeID typeOf(CFTypeRef object);
    /// Null after noting a mistake: `object` is null, no object, released, or of another kind.
    template <typename Kind>
    Kind* find(CFTypeRef object) {
        auto* payload = payloadOf(object);
        auto* kind = payload ? std::get_if<Kind>(payload) : nullptr;
        if (payload && !kind)
            note("an object of another type was given");
        return kind;
    }
    template <typename Kind>
    static CFTypeID typeId() {
        return Payload(Kind{}).index() + 1;
    }

    template <typename Kind>
    void refuse(bool refused) {
        refused_[typeId<Kind>()] = refused;
    }

    void note(const std::string& mistake) { mistakes_.push_back(mistake); }
    /// What was called wrongly, and what was retained without a release or released too often.
    [[nodiscard]] std::vector<std::string> mistakes() const;
    /// Objects with references, constants aside.
    [[nodiscard]] int live() const;
    /// References to `object`; 0 when it is gone.
    [[nodiscard]] int references(CFTypeRef object) const;
    void clear();

  private:
    struct Object {
        Payload payload;
        int references;
        bool isConstant;
    };

    const void* add(Payload payload, bool isConstant);
    Payload* payloadOf(CFTypeRef object);
    Object* objectAt(CFTypeRef address, const char* action);

    std::map<const void*, std::unique_ptr<Object>> objects_;
    std::map<CFTypeID, bool> refused_;
    std::vector<std::string> mistakes_;
};

} // namespace orrivane::fakes
