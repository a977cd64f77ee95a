#pragma once

#include <functional>
#include <vector>

#include "editor/renderers/control_renderer.h"
#include "host/ui/layout.h"

class QBoxLayout;
class QLayout;

namespace editor {

/// Turns a dialog's arrangement into Qt layouts. Hidden controls take no room, and neither does
/// what holds only hidden ones. What has no use for more height stays together at the top.
class Arrangement {
 public:
  /// The renderer of a control, null for an id that the dialog does not have.
  using Find = std::function<ControlRenderer*(int id)>;
  explicit Arrangement(Find find) : find_(std::move(find)) {}

  /// Puts @p pane beside the smallest piece that holds all the controls in @p ids.
  void setPane(QWidget* pane, std::vector<int> ids);

  /// A layout with the piece in it, to be set on a widget or put into another layout.
  QLayout* layoutOf(const host::LayoutItem& item) const;

  /// Whether a control with this id stands in the piece.
  static bool holds(const host::LayoutItem& item, int controlId);

 private:
  void add(QBoxLayout& box, const host::LayoutItem& item) const;
  QBoxLayout* boxOf(const host::LayoutItem& item) const;
  QLayout* gridOf(const host::LayoutItem& item) const;
  QWidget* groupOf(const host::LayoutItem& item) const;
  QWidget* widgetOf(const host::LayoutItem& item) const;
  bool expands(const host::LayoutItem& item) const;
  bool isLabelled(const host::LayoutItem& item) const;
  bool takesPane(const host::LayoutItem& item) const;
  QBoxLayout* besidePane(const host::LayoutItem& item) const;
  QLayout* piecesOf(const host::LayoutItem& item) const;
  void addPiece(QBoxLayout& box, const host::LayoutItem& item) const;

  Find find_;
  QWidget* pane_ = nullptr;
  std::vector<int> besidePane_;
};

}  // namespace editor
