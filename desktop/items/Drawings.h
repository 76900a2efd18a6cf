#pragma once

#include <desktop/items/IconPen.h>
#include <desktop/items/ItemState.h>

/// The icons. Each draws on a canvas as wide as its kind and IconPen::height high, in points.
namespace orrivane::desktop::drawings {

void battery(IconPen& pen, const ItemState& state);
void bluetooth(IconPen& pen, const ItemState& state);
void calendar(IconPen& pen, const ItemState& state);
void chat(IconPen& pen, const ItemState& state);
void cloud(IconPen& pen, const ItemState& state);
void cpu(IconPen& pen, const ItemState& state);
void firstTwin(IconPen& pen, const ItemState& state);
void keyboard(IconPen& pen, const ItemState& state);
void mail(IconPen& pen, const ItemState& state);
void music(IconPen& pen, const ItemState& state);
void nameless(IconPen& pen, const ItemState& state);
void secondTwin(IconPen& pen, const ItemState& state);
void sleepy(IconPen& pen, const ItemState& state);
void timer(IconPen& pen, const ItemState& state);
void volume(IconPen& pen, const ItemState& state);
void vpn(IconPen& pen, const ItemState& state);
void weather(IconPen& pen, const ItemState& state);
void wifi(IconPen& pen, const ItemState& state);
void worldClock(IconPen& pen, const ItemState& state);

} // namespace orrivane::desktop::drawings
