#pragma once
// The sizes at which the program's icon is rendered at build time, smallest first: the pixels
// of each, 32-bit premultiplied ARGB, follow one another in the resource ":/quillet-icon.argb".
namespace quillet::ui {
inline constexpr int kIconSizes[] = {16, 32, 48, 64};
}
