#pragma once

#include <utility>
#include <vector>

#include "host/export.h"

namespace host {

/// One piece of a dialog's arrangement: a control, a row or a column of pieces, a grid of pieces, a
/// group box around pieces, or a gap. Sizes are in device-independent pixels.
struct LayoutItem {
  enum class Kind { control, row, column, group, gap, stretch, grid };

  Kind kind = Kind::column;
  int controlId = 0;      ///< of a control, or of a group's box
  int size = 0;           ///< of a gap; of a control the least width, 0 for its natural one
  int stretchFactor = 0;  ///< how much of the room that is left it takes
  std::vector<LayoutItem> items = {};
  int columns = 0;  ///< of a grid, whose pieces stand row by row
};

}  // namespace host

/// Pieces one below the other.
inline host::LayoutItem XCVerticalLayout(std::vector<host::LayoutItem> items,
                                         int stretchFactor = 0) {
  return {.kind = host::LayoutItem::Kind::column,
          .stretchFactor = stretchFactor,
          .items = std::move(items)};
}

/// Pieces side by side.
inline host::LayoutItem XCHoritzontalLayout(std::vector<host::LayoutItem> items,
                                            int stretchFactor = 0) {
  return {.kind = host::LayoutItem::Kind::row,
          .stretchFactor = stretchFactor,
          .items = std::move(items)};
}

namespace host::layout {

inline LayoutItem control(int id, int stretchFactor = 0, int leastWidth = 0) {
  return {.kind = LayoutItem::Kind::control,
          .controlId = id,
          .size = leastWidth,
          .stretchFactor = stretchFactor};
}
/// A group box around pieces one below the other.
inline LayoutItem box(int groupId, std::vector<LayoutItem> items, int stretchFactor = 0) {
  return {.kind = LayoutItem::Kind::group,
          .controlId = groupId,
          .stretchFactor = stretchFactor,
          .items = std::move(items)};
}
/// Pieces in rows of @p columns, row by row. A column is as wide as its widest piece, so that what
/// stands one below the other is aligned.
inline LayoutItem grid(int columns, std::vector<LayoutItem> items, int stretchFactor = 0) {
  return {.kind = LayoutItem::Kind::grid,
          .stretchFactor = stretchFactor,
          .items = std::move(items),
          .columns = columns};
}
inline LayoutItem gap(int pixels) {
  return {.kind = LayoutItem::Kind::gap, .size = pixels};
}
inline LayoutItem stretch() {
  return {.kind = LayoutItem::Kind::stretch, .stretchFactor = 1};
}

/// A label above its control.
inline LayoutItem labelled(int labelId, int controlId, int stretchFactor = 0) {
  return XCVerticalLayout({control(labelId), control(controlId)}, stretchFactor);
}
/// OK on the left, Cancel on the right, as at the foot of every dialog.
inline LayoutItem okCancelRow(int okId = 1, int cancelId = 2) {
  return XCHoritzontalLayout(
      {gap(10), control(okId, 0, 40), stretch(), control(cancelId, 0, 40), gap(10)});
}

}  // namespace host::layout
