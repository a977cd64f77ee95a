#include "editor/window/main_menus.h"

#include <QtGui/QActionGroup>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QTreeView>

#include "editor/qt_text.h"

namespace editor {
namespace {

using host::TextId;
using Kind = ConfigurationModel::Kind;

constexpr TextId DeviceActions[] = {TextId::ActionOptions, TextId::ActionModify,
                                    TextId::ActionUpdateNodes, TextId::ActionRemove};

struct Language {
  const char* code;
  const char* name;  // in the language itself
};
constexpr Language Languages[] = {{"en", "English"}, {"es", "Español"}};

}  // namespace

MainMenus::MainMenus(QMainWindow& window, WindowActions& actions, GroupCommands& groups,
                     ConfigurationTree& tree)
    : window_(window), actions_(actions), groups_(groups), tree_(tree) {
  QMenu* configuration = addMenu(TextId::MenuConfiguration);
  configuration->addAction(action(TextId::ActionNewDevice));
  configuration->addSeparator();
  configuration->addAction(action(TextId::ActionUndo));
  configuration->addAction(action(TextId::ActionRedo));
  configuration->addSeparator();
  configuration->addAction(action(TextId::ActionQuit));
  QMenu* device = addMenu(TextId::MenuDevice);
  for (const TextId text : DeviceActions) device->addAction(action(text));
  device->addSeparator();
  device->addAction(action(TextId::ForgetCertificate));
  QMenu* group = addMenu(TextId::MenuGroup);
  for (const TextId text : groups_.groupActions()) group->addAction(action(text));
  group->insertMenu(action(TextId::ActionTakeOut), &groups_.addToMenu());
  settings_ = addMenu(TextId::MenuSettings);
  fillToolBar();

  tree_.view().setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&tree_.view(), &QWidget::customContextMenuRequested, this, [this](const QPoint& point) {
    QMenu menu;
    menu.setToolTipsVisible(true);
    menu.addActions(contextActions());
    menu.exec(tree_.view().viewport()->mapToGlobal(point));
  });
}

QMenu* MainMenus::addMenu(TextId text) {
  QMenu* menu = window_.menuBar()->addMenu(QString());
  menu->setToolTipsVisible(true);
  menus_.emplace_back(text, menu);
  return menu;
}

void MainMenus::fillToolBar() {
  auto* bar = window_.addToolBar(QString());
  bar->setObjectName("actions");
  bar->setMovable(false);
  bar->setIconSize({16, 16});
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  bar->addAction(action(TextId::ActionNewDevice));
  bar->addSeparator();
  for (const TextId text : DeviceActions) bar->addAction(action(text));
  bar->addSeparator();
  bar->addAction(action(TextId::ActionNewGroup));
}

QList<QAction*> MainMenus::contextActions() const {
  QList<QAction*> found;
  const auto add = [&](std::initializer_list<TextId> texts) {
    for (const TextId text : texts) found.push_back(action(text));
  };
  if (!tree_.selectedLamps().empty()) {
    found.push_back(groups_.addToMenu().menuAction());
    add({TextId::ActionNewGroup});
  } else if (tree_.chosenDevice() != nullptr) {
    for (const TextId text : DeviceActions) found.push_back(action(text));
    add({TextId::ActionNewGroup});
  } else if (tree_.isCurrent(Kind::member)) {
    add({TextId::ActionTakeOut, TextId::ActionModifyGroup});
  } else if (tree_.isCurrent(Kind::lampGroup)) {
    add({TextId::ActionModifyGroup, TextId::ActionRemoveGroup, TextId::ActionNewGroup});
  } else if (tree_.isCurrent(Kind::group)) {
    add({TextId::ActionNewGroup});
  } else {
    add({TextId::ActionNewDevice});
  }
  return found;
}

void MainMenus::addSwitch(TextId text, bool isOn, std::function<void(bool)> turn) {
  QAction* entry = actions_.add(text, "", [] {});
  entry->setCheckable(true);
  entry->setChecked(isOn);
  connect(entry, &QAction::toggled, this, std::move(turn));
  settings_->addAction(entry);
}

void MainMenus::addLanguages(const std::string& inForce,
                             std::function<void(const std::string&)> choose) {
  QMenu* menu = settings_->addMenu(QString());
  menus_.emplace_back(TextId::ActionLanguage, menu);
  auto* choices = new QActionGroup(this);
  for (const Language& language : Languages) {
    QAction* choice = menu->addAction(QString::fromUtf8(language.name));
    choice->setCheckable(true);
    choice->setChecked(inForce == language.code);
    choices->addAction(choice);
    connect(choice, &QAction::triggered, this, [choose, code = language.code] { choose(code); });
  }
}

void MainMenus::retranslate() {
  for (const auto& [text, menu] : menus_) menu->setTitle(caption(text));
}

}  // namespace editor
