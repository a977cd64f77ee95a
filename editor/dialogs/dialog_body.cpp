#include "editor/dialogs/dialog_body.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QFocusEvent>
#include <QtWidgets/QLayout>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "editor/dialogs/arrangement.h"
#include "editor/dialogs/side_panes.h"
#include "editor/qt_text.h"
#include "editor/renderers/renderer_table.h"

namespace editor {

DialogBody::DialogBody(XCBaseDlg& dialog, QWidget& owner, bool separateFoot)
    : dialog_(dialog), content_(new QWidget(&owner)) {
  for (const auto& control : dialog.Controls()) {
    renderers_.push_back(makeRenderer(dialog, *control, content_));
    renderers_.back()->setArranged(false);
  }
  arrange(separateFoot);
  for (const auto& renderer : renderers_) {
    renderer->control().takeChanges();
    renderer->sync(ControlRenderer::Everything);
    for (QWidget* stop : renderer->tabStops()) stop->installEventFilter(this);
  }
  if (pane_ != nullptr) pane_->follow();
  nameForReaders();
  orderTabs();
}

DialogBody::~DialogBody() = default;

ControlRenderer* DialogBody::renderer(int id) const {
  const auto found = std::find_if(renderers_.begin(), renderers_.end(), [id](const auto& renderer) {
    return renderer->control().id() == id;
  });
  return found == renderers_.end() ? nullptr : found->get();
}

void DialogBody::arrange(bool separateFoot) {
  Arrangement arrangement([this](int id) { return renderer(id); });
  PlacedPane placed = makeSidePane(dialog_, content_);
  pane_ = placed.pane;
  if (pane_ != nullptr) arrangement.setPane(pane_, std::move(placed.beside));
  host::LayoutItem main = dialog_.Arrangement();
  using Kind = host::LayoutItem::Kind;
  const bool hasFoot = separateFoot && main.kind == Kind::column && main.items.size() > 1 &&
                       main.items.back().kind == Kind::row &&
                       Arrangement::holds(main.items.back(), host::IdOk);
  if (hasFoot) {
    foot_ = new QWidget(content_->parentWidget());
    foot_->setLayout(arrangement.layoutOf(main.items.back()));
    main.items.pop_back();
  }
  content_->setLayout(arrangement.layoutOf(main));
}

// A screen reader says the label in front of a field.
void DialogBody::nameForReaders() {
  QString label;
  for (const auto& renderer : renderers_) {
    const bool isLabel = renderer->control().kind() == host::ControlKind::label;
    if (!isLabel && !label.isEmpty() && renderer->focusWidget() != nullptr)
      renderer->focusWidget()->setAccessibleName(label);
    label = isLabel ? qtText(renderer->control().text()) : QString();
  }
}

void DialogBody::orderTabs() {
  QWidget* before = nullptr;
  for (const auto& renderer : renderers_)
    for (QWidget* stop : renderer->tabStops()) {
      if (before != nullptr) QWidget::setTabOrder(before, stop);
      before = stop;
    }
}

void DialogBody::noteChange() {
  if (pane_ != nullptr) pane_->note();
  if (onNoted) onNoted();
  if (refreshQueued_) return;
  refreshQueued_ = true;
  QTimer::singleShot(0, this, [this] { refresh(); });
}

void DialogBody::refresh() {
  refreshQueued_ = false;
  showFocus();
  for (const auto& renderer : renderers_)
    if (const unsigned changes = renderer->control().takeChanges()) renderer->sync(changes);
  if (pane_ != nullptr) pane_->follow();
  showFocus();
  if (onRefreshed) onRefreshed();
}

// The program may have enabled a control and put the focus there in one go: the focus is tried
// before the states are shown, so that a selection lands in the right edit, and after.
void DialogBody::showFocus() {
  host::Control* wanted = dialog_.Focus();
  if (wanted == shownFocus_ || wanted == nullptr) return;
  ControlRenderer* target = renderer(wanted->id());
  QWidget* widget = target ? target->focusWidget() : nullptr;
  if (widget == nullptr || !widget->isEnabled() || widget->isHidden()) return;
  shownFocus_ = wanted;
  if (!target->tabStops().contains(widget->window()->focusWidget()) ||
      !widget->window()->isActiveWindow())
    widget->setFocus(Qt::OtherFocusReason);
}

// A window that becomes active again gives the keyboard to the widget that had it, which is not the
// user's doing: the program may have put the focus elsewhere meanwhile.
bool DialogBody::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::FocusIn) return QObject::eventFilter(watched, event);
  const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
  const auto found =
      std::find_if(renderers_.begin(), renderers_.end(), [watched](const auto& renderer) {
        return renderer->tabStops().contains(static_cast<QWidget*>(watched));
      });
  if (found == renderers_.end()) return false;
  shownFocus_ = &(*found)->control();
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
    noteChange();
  else
    host::UserInput(dialog_).focus(*shownFocus_);
  return false;
}

}  // namespace editor
