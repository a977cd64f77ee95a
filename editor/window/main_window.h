#pragma once

#include <QtWidgets/QMainWindow>
#include <filesystem>

#include "editor/front_end/exchange_window.h"
#include "editor/front_end/qt_front_end.h"
#include "editor/front_end/widget_wnd.h"
#include "editor/history/read_back.h"
#include "editor/window/editor_preferences.h"
#include "editor/window/window_actions.h"
#include "workbench/workspace.h"

class QListWidget;
class QSplitter;
class QStackedWidget;
class QTabWidget;

namespace editor {

class Banner;
class ConfigurationTree;
class DevicePanel;
class ExchangeView;
class FirstStepsPage;
class GroupCommands;
class MainMenus;
class HistoryView;

/// The editor's window: the configuration on the left, the chosen device with its options panel on
/// the right, the exchanges and notices below it.
class MainWindow : public QMainWindow {
 public:
  MainWindow(workbench::Workspace& workspace, QtFrontEnd& frontEnd, ExchangeWindow& exchange,
             EditorPreferences preferences, std::filesystem::path texts);
  ~MainWindow() override;

  ConfigurationTree& tree() const { return *tree_; }
  DevicePanel& panel() const { return *panel_; }
  QTabWidget& tabs() const { return *tabs_; }
  HistoryView* history() const { return history_; }
  QAction* action(host::TextId text) const { return actions_.find(text); }
  Banner& banner() const { return *banner_; }
  MainMenus& menus() const { return *menus_; }

  /// Tells that the settings of the last start could not be read, and why.
  void tellUnreadSettings(const std::string& cause);

  /// Chooses another language for everything that is shown from now on.
  void setLanguage(const std::string& language);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void makeActions();
  void makeWidgets();
  void makeGroups();
  void makeMenus();
  void makeHistory();
  void retranslate();
  void restorePlace();

  void newDevice();
  void modifyDevice();
  void removeDevice();
  void configure();
  void updateNodes();
  void forgetCertificate();

  void showResult(const workbench::ActionResult& result);
  void showChosen();
  void showGroup(const XmlDocument::XmlNode& group, host::TextId count,
                 const QList<QAction*>& actions);
  void updateActions();
  void showStanding();
  void reopen();
  void separateIds();
  bool isBusy() const;
  void reload();
  void save();
  void noteMessage(const host::PostedMessage& message);

  workbench::Workspace& workspace_;
  QtFrontEnd& frontEnd_;
  ExchangeWindow& exchange_;
  EditorPreferences preferences_;
  std::filesystem::path texts_;
  WidgetWnd wnd_;
  WindowActions actions_;
  GroupCommands* groups_ = nullptr;
  MainMenus* menus_ = nullptr;
  ReadBack readBack_;
  Banner* banner_ = nullptr;
  ConfigurationTree* tree_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QSplitter* right_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  FirstStepsPage* firstSteps_ = nullptr;
  DevicePanel* panel_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  ExchangeView* exchanges_ = nullptr;
  HistoryView* history_ = nullptr;  // null where nothing is put on record
  QListWidget* notices_ = nullptr;
};

}  // namespace editor
