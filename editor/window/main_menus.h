#pragma once

#include <QtCore/QObject>
#include <functional>
#include <vector>

#include "editor/window/group_commands.h"

class QMainWindow;
class QMenu;

namespace editor {

/// The menu bar, the toolbar and the context menu of the tree, over the actions of the window.
class MainMenus : public QObject {
 public:
  /// @p window gets the bars; @p groups and @p tree must outlive this object.
  MainMenus(QMainWindow& window, WindowActions& actions, GroupCommands& groups,
            ConfigurationTree& tree);

  /// Adds an entry to the settings that can be on or off.
  void addSwitch(host::TextId text, bool isOn, std::function<void(bool)> turn);
  /// Adds the choice between languages, by their codes.
  void addLanguages(const std::string& inForce, std::function<void(const std::string&)> choose);
  void retranslate();

  /// The context menu for the current entry of the tree.
  QList<QAction*> contextActions() const;

 private:
  QMenu* addMenu(host::TextId text);
  void fillToolBar();
  QAction* action(host::TextId text) const { return actions_.find(text); }

  QMainWindow& window_;
  WindowActions& actions_;
  GroupCommands& groups_;
  ConfigurationTree& tree_;
  std::vector<std::pair<host::TextId, QMenu*>> menus_;
  QMenu* settings_ = nullptr;
};

}  // namespace editor
