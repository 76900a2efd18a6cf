#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace orrivane {

/// Numbers the different ids it is given: the n-th new one has position n, from 0. Open addressing,
/// because a node for each id, as the standard containers make, would cost more than all else that
/// a census does; the first few ids need no allocation.
class IdIndex {
  public:
    IdIndex() = default;
    IdIndex(const IdIndex&) = delete;
    IdIndex& operator=(const IdIndex&) = delete;

    /// False when the id is known already.
    bool insert(std::uint32_t id) {
        if (2 * count_ >= slots_.size())
            grow();
        Slot& slot = slotFor(slots_, id);
        if (slot.place != 0)
            return false;
        slot = {id, ++count_};
        return true;
    }

    /// Absent when the id is not known.
    [[nodiscard]] std::optional<std::size_t> find(std::uint32_t id) const {
        const Slot& slot = slotFor(slots_, id);
        return slot.place == 0 ? std::nullopt : std::optional<std::size_t>(slot.place - 1);
    }

  private:
    struct Slot {
        std::uint32_t id = 0;
        std::uint32_t place = 0; // position + 1; 0: free
    };

    // The slot that holds `id`, else the free one where it belongs. Ids differ in their low bits or
    // in their high ones, so all of them have to tell.
    static Slot& slotFor(std::span<Slot> slots, std::uint32_t id) {
        const std::size_t last = slots.size() - 1;
        std::size_t at = ((id * std::uint64_t{0x9e3779b97f4a7c15}) >> 32) & last;
        while (slots[at].place != 0 && slots[at].id != id)
            at = (at + 1) & last;
        return slots[at];
    }

    void grow() {
        std::vector<Slot> larger(4 * slots_.size());
        for (const Slot& slot : slots_)
            if (slot.place != 0)
                slotFor(larger, slot.id) = slot;
        grown_ = std::move(larger);
        slots_ = grown_;
    }

    // The number of slots is a power of two, and at least half of them are free.
    std::array<Slot, 32> first_{};
    std::vector<Slot> grown_;
    std::span<Slot> slots_{first_};
    std::uint32_t count_ = 0;
};

} // namespace orrivane
