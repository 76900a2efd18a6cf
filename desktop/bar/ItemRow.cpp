#include <desktop/bar/ItemRow.h>

#include <algorithm>
#include <utility>

namespace orrivane::desktop {

namespace {

// Twice the middle, so that half pixels count.
std::int64_t middle(const PlacedItem& item) {
    return 2 * static_cast<std::int64_t>(item.x) + item.width;
}

} // namespace

void ItemRow::remember(const std::vector<ItemKey>& order) {
    for (const auto& key : order)
        if (std::ranges::find(places_, key, &Place::key) == places_.end())
            places_.push_back({key, 0, 0, false});
    forgetSurplus();
}

std::vector<ItemKey> ItemRow::order() const {
    std::vector<ItemKey> order;
    for (const auto& place : places_)
        order.push_back(place.key);
    return order;
}

void ItemRow::add(std::uint32_t id, std::string_view application, int naturalWidth) {
    remove(id);
    const ItemKey key{std::string(application), freeOrdinal(application)};
    auto place = std::ranges::find(places_, key, &Place::key);
    if (place == places_.end())
        place = places_.insert(places_.begin(), Place{key, 0, 0, false});
    place->id = id;
    place->naturalWidth = naturalWidth;
    place->shown = true;
    forgetSurplus();
}

void ItemRow::remove(std::uint32_t id) {
    if (auto* place = find(id)) {
        place->id = 0;
        place->shown = false;
    }
    if (dragged() == id)
        drop();
}

void ItemRow::setNaturalWidth(std::uint32_t id, int naturalWidth) {
    if (auto* place = find(id))
        place->naturalWidth = naturalWidth;
}

void ItemRow::setShown(std::uint32_t id, bool shown) {
    if (auto* place = find(id))
        place->shown = shown;
    if (!shown && dragged() == id)
        drop();
}

bool ItemRow::contains(std::uint32_t id) const {
    return id != 0 && std::ranges::find(places_, id, &Place::id) != places_.end();
}

std::vector<PlacedItem> ItemRow::placed() const {
    auto items = packed();
    if (drag_)
        if (const auto held = std::ranges::find(items, drag_->id, &PlacedItem::id);
            held != items.end())
            held->x = drag_->x;
    return items;
}

bool ItemRow::beginDrag(std::uint32_t id, int x) {
    const auto items = packed();
    const auto item = std::ranges::find(items, id, &PlacedItem::id);
    if (id == 0 || item == items.end())
        return false;
    drag_ = Drag{id, x - item->x, item->x, order()};
    return true;
}

void ItemRow::dragTo(int x) {
    if (!drag_)
        return;
    drag_->x = std::clamp(x - drag_->grip, leftmost, widest);
    // Each turn passes one neighbour; passing it back needs a step of the item's own width.
    for (std::size_t turn = 0; turn < places_.size(); ++turn) {
        const auto items = packed();
        const auto held = std::ranges::find(items, drag_->id, &PlacedItem::id);
        const auto at = middle({held->id, drag_->x, held->width});
        if (held != items.begin() && at < middle(*std::prev(held)))
            moveBeside(held->id, std::prev(held)->id, true);
        else if (std::next(held) != items.end() && at > middle(*std::next(held)))
            moveBeside(held->id, std::next(held)->id, false);
        else
            return;
    }
}

void ItemRow::cancelDrag() {
    if (!drag_)
        return;
    const auto before = std::move(drag_->before);
    drag_.reset();
    // What came meanwhile stays at the left end.
    for (const auto& key : before) {
        const auto place = std::ranges::find(places_, key, &Place::key);
        if (place != places_.end())
            std::rotate(place, std::next(place), places_.end());
    }
}

ItemRow::Place* ItemRow::find(std::uint32_t id) {
    const auto found = std::ranges::find(places_, id, &Place::id);
    return id == 0 || found == places_.end() ? nullptr : &*found;
}

int ItemRow::widthOf(const Place& place) const {
    constexpr std::int64_t bound = widest;
    const auto spacing = std::clamp(spacing_, -bound, bound);
    const auto natural = std::clamp<std::int64_t>(place.naturalWidth, 0, bound);
    return static_cast<int>(std::clamp<std::int64_t>(natural + spacing, 1, bound));
}

int ItemRow::freeOrdinal(std::string_view application) const {
    const auto isTaken = [&](int ordinal) {
        return std::ranges::any_of(places_, [&](const Place& place) {
            return place.id != 0 && place.key.application == application &&
                   place.key.ordinal == ordinal;
        });
    };
    int ordinal = 0;
    while (isTaken(ordinal))
        ++ordinal;
    return ordinal;
}

std::vector<PlacedItem> ItemRow::packed() const {
    std::vector<PlacedItem> items;
    std::int64_t x = rightEnd_;
    for (auto place = places_.rbegin(); place != places_.rend(); ++place) {
        if (!place->shown)
            continue;
        const int width = widthOf(*place);
        x = std::max<std::int64_t>(x - width, leftmost);
        items.push_back({place->id, static_cast<int>(x), width});
    }
    std::ranges::reverse(items);
    return items;
}

void ItemRow::moveBeside(std::uint32_t id, std::uint32_t neighbour, bool toItsLeft) {
    const auto from = std::ranges::find(places_, id, &Place::id);
    Place moved = std::move(*from);
    places_.erase(from);
    auto target = std::ranges::find(places_, neighbour, &Place::id);
    places_.insert(toItsLeft ? target : std::next(target), std::move(moved));
}

void ItemRow::forgetSurplus() {
    while (places_.size() > mostRemembered) {
        const auto absent = std::ranges::find(places_, 0U, &Place::id);
        if (absent == places_.end())
            return;
        places_.erase(absent);
    }
}

} // namespace orrivane::desktop
