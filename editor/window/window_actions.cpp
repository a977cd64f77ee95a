#include "editor/window/window_actions.h"

#include <algorithm>

#include "editor/images.h"
#include "editor/qt_text.h"

namespace editor {
namespace {

QString toolTipOf(const QAction& action, host::TextId text) {
  QString tip = caption(text).remove(QChar(0x2026));  // the ellipsis that promises a dialog
  if (!action.shortcut().isEmpty())
    tip += " (" + action.shortcut().toString(QKeySequence::NativeText) + ")";
  return tip;
}

}  // namespace

QAction* WindowActions::add(host::TextId text, const char* image, std::function<void()> run) {
  auto* action = new QAction(imageIcon(image), {}, owner_);
  QObject::connect(action, &QAction::triggered, owner_, [this, run = std::move(run)] {
    if (!isBusy_()) run();
  });
  entries_.push_back({text, action});
  return action;
}

QAction* WindowActions::find(host::TextId text) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [text](const Entry& entry) { return entry.text == text; });
  return found == entries_.end() ? nullptr : found->action;
}

void WindowActions::allow(host::TextId text, const workbench::ActionResult& result) {
  QAction* action = find(text);
  action->setEnabled(result.done);
  action->setToolTip(result.done ? toolTipOf(*action, text) : qtText(result.reason));
}

void WindowActions::retranslate() {
  for (const Entry& entry : entries_) {
    entry.action->setText(caption(entry.text));
    entry.action->setToolTip(toolTipOf(*entry.action, entry.text));
  }
}

}  // namespace editor
