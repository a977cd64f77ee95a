#pragma once

#include <QtGui/QAction>
#include <functional>
#include <vector>

#include "workbench/action_result.h"

namespace editor {

/// The actions of a window: what menus, toolbar and keys share. An action that can't be used says
/// why in its tooltip.
class WindowActions {
 public:
  /// Actions belong to @p owner. They do nothing while @p isBusy: something else then waits for the
  /// person.
  WindowActions(QObject* owner, std::function<bool()> isBusy)
      : owner_(owner), isBusy_(std::move(isBusy)) {}

  QAction* add(host::TextId text, const char* image, std::function<void()> run);
  /// The action with a text; null when there is none.
  QAction* find(host::TextId text) const;
  /// Enables the action, or disables it with the reason.
  void allow(host::TextId text, const workbench::ActionResult& result);
  /// Writes the texts in the language in force.
  void retranslate();

 private:
  struct Entry {
    host::TextId text;
    QAction* action;
  };

  QObject* owner_;
  std::function<bool()> isBusy_;
  std::vector<Entry> entries_;
};

}  // namespace editor
