#include <macos/system/CFRef.h>

#include <tests/macos/MacSystemTest.h>
#include <tests/macos/fakes/Values.h>

namespace orrivane {
namespace {

struct CFRefTest : MacSystemTest {
    fakes::Heap& heap = fakes::Heap::shared();

    CFTypeRef made() { return fakes::integer(6).detach(); }
};

TEST_F(CFRefTest, anAdoptedObjectIsReleasedOnce) {
    const auto object = made();
    {
        const auto reference = CFRef<CFTypeRef>::adopting(object);
        EXPECT_EQ(heap.references(object), 1);
        EXPECT_EQ(reference.get(), object);
    }
    EXPECT_EQ(heap.references(object), 0);
}

TEST_F(CFRefTest, aBorrowedObjectStaysWithItsOwner) {
    const auto owner = fakes::integer(6);
    {
        const auto reference = CFRef<CFTypeRef>::retaining(owner.get());
        EXPECT_EQ(heap.references(owner.get()), 2);
    }
    EXPECT_EQ(heap.references(owner.get()), 1);
}

TEST_F(CFRefTest, nullIsNeitherRetainedNorReleased) {
    const auto adopted = CFRef<CFTypeRef>::adopting(nullptr);
    const auto retained = CFRef<CFTypeRef>::retaining(nullptr);
    const CFRef<CFTypeRef> empty;
    auto copy = adopted;
    copy = retained;
    EXPECT_FALSE(adopted || retained || empty || copy);
    EXPECT_EQ(heap.mistakes(), std::vector<std::string>());
}

TEST_F(CFRefTest, aCopyHoldsAReferenceOfItsOwn) {
    const auto object = made();
    auto first = CFRef<CFTypeRef>::adopting(object);
    {
        const auto copy = first;
        EXPECT_EQ(heap.references(object), 2);
    }
    const auto second = first;
    first = {};
    EXPECT_EQ(heap.references(object), 1);
    EXPECT_EQ(second.get(), object);
}

TEST_F(CFRefTest, aMoveTakesTheReferenceAlong) {
    const auto object = made();
    auto first = CFRef<CFTypeRef>::adopting(object);
    const auto second = std::move(first);
    EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move): it is empty by contract
    EXPECT_EQ(heap.references(object), 1);
}

TEST_F(CFRefTest, anAssignmentReleasesWhatWasHeld) {
    const auto before = made();
    const auto after = made();
    auto reference = CFRef<CFTypeRef>::adopting(before);
    reference = CFRef<CFTypeRef>::adopting(after);
    EXPECT_EQ(heap.references(before), 0);
    EXPECT_EQ(heap.references(after), 1);
}

TEST_F(CFRefTest, anAssignmentToItselfKeepsTheObject) {
    const auto object = made();
    auto reference = CFRef<CFTypeRef>::adopting(object);
    const auto& same = reference;
    reference = same;
    EXPECT_EQ(reference.get(), object);
    EXPECT_EQ(heap.references(object), 1);
}

TEST_F(CFRefTest, aDetachedReferenceIsTheCallers) {
    const auto object = made();
    {
        auto reference = CFRef<CFTypeRef>::adopting(object);
        EXPECT_EQ(reference.detach(), object);
        EXPECT_FALSE(reference);
    }
    EXPECT_EQ(heap.references(object), 1);
    CFRelease(object);
}

} // namespace
} // namespace orrivane
