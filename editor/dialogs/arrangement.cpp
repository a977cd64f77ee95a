#include "editor/dialogs/arrangement.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <algorithm>

namespace editor {
namespace {

using Kind = host::LayoutItem::Kind;

constexpr int Spacing = 8;
constexpr int GridColumnSpacing = 10;
// Between a label and the control below it: they are read as one.
constexpr int LabelSpacing = 2;

bool isContainer(const host::LayoutItem& item) {
  return item.kind == Kind::row || item.kind == Kind::column || item.kind == Kind::grid;
}

}  // namespace

bool Arrangement::holds(const host::LayoutItem& item, int controlId) {
  return (item.kind == Kind::control && item.controlId == controlId) ||
         std::any_of(item.items.begin(), item.items.end(),
                     [controlId](const auto& inner) { return holds(inner, controlId); });
}

void Arrangement::setPane(QWidget* pane, std::vector<int> ids) {
  pane_ = pane;
  besidePane_ = std::move(ids);
}

bool Arrangement::takesPane(const host::LayoutItem& item) const {
  const auto holdsAll = [this](const host::LayoutItem& piece) {
    return std::all_of(besidePane_.begin(), besidePane_.end(),
                       [&piece](int id) { return holds(piece, id); });
  };
  return pane_ != nullptr && holdsAll(item) &&
         std::none_of(item.items.begin(), item.items.end(), holdsAll);
}

bool Arrangement::expands(const host::LayoutItem& item) const {
  if (item.kind == Kind::stretch) return true;
  if (item.kind == Kind::control) {
    const ControlRenderer* renderer = find_(item.controlId);
    return renderer != nullptr && renderer->expandsVertically();
  }
  return std::any_of(item.items.begin(), item.items.end(), [this, &item](const auto& inner) {
    return (item.kind != Kind::row || inner.kind != Kind::stretch) && expands(inner);
  });
}

bool Arrangement::isLabelled(const host::LayoutItem& item) const {
  if (item.kind != Kind::column || item.items.size() != 2) return false;
  if (item.items[0].kind != Kind::control || item.items[1].kind == Kind::group) return false;
  const ControlRenderer* label = find_(item.items[0].controlId);
  return label != nullptr && label->control().kind() == host::ControlKind::label;
}

QWidget* Arrangement::widgetOf(const host::LayoutItem& item) const {
  ControlRenderer* renderer = find_(item.controlId);
  if (renderer == nullptr) return nullptr;
  renderer->setArranged(true);
  QWidget& widget = renderer->widget();
  // A least width of what is made of several widgets must not undercut what these need.
  auto* inner = dynamic_cast<QBoxLayout*>(widget.layout());
  if (inner != nullptr && inner->direction() == QBoxLayout::TopToBottom)
    inner->addStrut(item.size);
  else if (item.size > widget.minimumWidth())
    widget.setMinimumWidth(item.size);
  return &widget;
}

QWidget* Arrangement::groupOf(const host::LayoutItem& item) const {
  QWidget* box = widgetOf(item);
  if (box == nullptr) return nullptr;
  host::LayoutItem inner = item;
  inner.kind = Kind::column;
  delete box->layout();
  box->setLayout(boxOf(inner));
  return box;
}

QLayout* Arrangement::gridOf(const host::LayoutItem& item) const {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(GridColumnSpacing);
  grid->setVerticalSpacing(Spacing);
  const int columns = std::max(item.columns, 1);
  int place = 0;
  for (const host::LayoutItem& inner : item.items) {
    const int row = place / columns;
    const int column = place % columns;
    ++place;
    if (inner.kind == Kind::gap || inner.kind == Kind::stretch) continue;
    if (inner.stretchFactor > 0 && inner.stretchFactor > grid->columnStretch(column))
      grid->setColumnStretch(column, inner.stretchFactor);
    if (isContainer(inner) || takesPane(inner)) {
      grid->addLayout(layoutOf(inner), row, column);
    } else if (QWidget* widget = inner.kind == Kind::group ? groupOf(inner) : widgetOf(inner)) {
      grid->addWidget(widget, row, column);
    }
  }
  if (!expands(item)) grid->setRowStretch((place + columns - 1) / columns, 1);
  return grid;
}

QBoxLayout* Arrangement::besidePane(const host::LayoutItem& item) const {
  auto* row = new QBoxLayout(QBoxLayout::LeftToRight);
  row->setSpacing(Spacing);
  addPiece(*row, item);
  row->addWidget(pane_, 1);
  return row;
}

void Arrangement::add(QBoxLayout& box, const host::LayoutItem& item) const {
  if (takesPane(item))
    box.addLayout(besidePane(item), item.stretchFactor);
  else
    addPiece(box, item);
}

void Arrangement::addPiece(QBoxLayout& box, const host::LayoutItem& item) const {
  switch (item.kind) {
    case Kind::gap:
      box.addSpacing(item.size);
      return;
    case Kind::stretch:
      box.addStretch(item.stretchFactor);
      return;
    case Kind::row:
    case Kind::column:
    case Kind::grid:
      box.addLayout(piecesOf(item), item.stretchFactor);
      return;
    case Kind::group:
      if (QWidget* widget = groupOf(item)) box.addWidget(widget, item.stretchFactor);
      return;
    case Kind::control:
      if (QWidget* widget = widgetOf(item)) box.addWidget(widget, item.stretchFactor);
      return;
  }
}

QBoxLayout* Arrangement::boxOf(const host::LayoutItem& item) const {
  const bool isRow = item.kind == Kind::row;
  auto* box = new QBoxLayout(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  box->setSpacing(isLabelled(item) ? LabelSpacing : Spacing);
  for (const host::LayoutItem& inner : item.items) add(*box, inner);
  if (!isRow && !expands(item)) box->addStretch();
  return box;
}

QLayout* Arrangement::piecesOf(const host::LayoutItem& item) const {
  return item.kind == Kind::grid ? gridOf(item) : boxOf(item);
}

QLayout* Arrangement::layoutOf(const host::LayoutItem& item) const {
  if (takesPane(item)) return besidePane(item);
  if (isContainer(item)) return piecesOf(item);
  auto* box = new QBoxLayout(QBoxLayout::TopToBottom);
  add(*box, item);
  return box;
}

}  // namespace editor
