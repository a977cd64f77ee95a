#include "editor/window/group_commands.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeView>

#include "editor/images.h"
#include "editor/qt_text.h"

namespace editor {
namespace {

using host::TextId;
using workbench::LampGroups;
using Kind = ConfigurationModel::Kind;

}  // namespace

GroupCommands::GroupCommands(workbench::Workspace& workspace, ConfigurationTree& tree,
                             WindowActions& actions, CWnd& wnd)
    : workspace_(workspace), tree_(tree), actions_(actions), wnd_(wnd), addTo_(new QMenu(&tree)) {
  makeActions();
  addTo_->setIcon(imageIcon("MOVE-RIGHT-16.png"));
  connect(addTo_, &QMenu::aboutToShow, this, [this] { fillAddTo(); });
}

void GroupCommands::makeActions() {
  actions_.add(TextId::ActionNewGroup, "GROUP-20.png", [this] { newGroup(); })
      ->setShortcut(Qt::CTRL | Qt::Key_G);
  actions_.add(TextId::ActionModifyGroup, "OPTIONS-16.png", [this] { modifyGroup(); })
      ->setShortcut(Qt::Key_F2);
  // Delete is the tree's alone: nobody removes a group while the keyboard is elsewhere.
  const auto onDelete = [this](TextId text, const char* image, std::function<void()> run) {
    QAction* action = actions_.add(text, image, std::move(run));
    action->setShortcut(Qt::Key_Delete);
    action->setShortcutContext(Qt::WidgetShortcut);
    tree_.view().addAction(action);
  };
  onDelete(TextId::ActionTakeOut, "MOVE-LEFT-16.png", [this] { takeOut(); });
  onDelete(TextId::ActionRemoveGroup, "REMOVE-16.png", [this] { removeGroup(); });
  actions_.add(TextId::ActionUndo, "", [this] { move(&workbench::GroupActions::undo); })
      ->setShortcuts(QKeySequence::Undo);
  actions_.add(TextId::ActionRedo, "", [this] { move(&workbench::GroupActions::redo); })
      ->setShortcuts(QKeySequence::Redo);
}

std::vector<TextId> GroupCommands::groupActions() const {
  return {TextId::ActionNewGroup, TextId::ActionModifyGroup, TextId::ActionTakeOut,
          TextId::ActionRemoveGroup};
}

void GroupCommands::retranslate() {
  addTo_->setTitle(caption(TextId::ActionAddToGroup));
}

// --- what can be done

GroupCommands::ActionResult GroupCommands::onDevice() const {
  const Node* device = tree_.deviceConcerned();
  if (device != nullptr) return workspace_.groups().canChange(*device);
  const bool isGroup = tree_.isCurrent(Kind::group) || tree_.chosenGroup() != nullptr;
  return ActionResult::refused(isGroup ? TextId::GroupWithoutDevice : TextId::NoDeviceChosen);
}

GroupCommands::ActionResult GroupCommands::onGroup() const {
  return tree_.chosenGroup() != nullptr ? onDevice() : ActionResult::refused(TextId::NoGroupChosen);
}

void GroupCommands::update() {
  actions_.allow(TextId::ActionNewGroup, onDevice());
  actions_.allow(TextId::ActionModifyGroup, onGroup());
  const bool onMember = tree_.isCurrent(Kind::member);
  actions_.allow(TextId::ActionRemoveGroup,
                 onMember ? ActionResult::refused(TextId::NoGroupChosen) : onGroup());
  const bool hasMembers = !tree_.selectedMembers().empty();
  actions_.allow(TextId::ActionTakeOut,
                 hasMembers ? onDevice() : ActionResult::refused(TextId::NoLampTakenOut));
  const bool hasLamps = !tree_.selectedLamps().empty();
  const ActionResult add = hasLamps ? onDevice() : ActionResult::refused(TextId::NoLampsChosen);
  addTo_->menuAction()->setEnabled(add.done);
  addTo_->menuAction()->setToolTip(qtText(add.reason));

  workbench::GroupActions& groups = workspace_.groups();
  actions_.allow(TextId::ActionUndo, groups.canUndo());
  actions_.allow(TextId::ActionRedo, groups.canRedo());
  nameStep(TextId::ActionUndo, TextId::UndoStep, groups.history().undoable());
  nameStep(TextId::ActionRedo, TextId::RedoStep, groups.history().redoable());
}

void GroupCommands::nameStep(TextId action, TextId text, const std::optional<XCBasicString>& step) {
  actions_.find(action)->setText(step ? caption(text, *step) : caption(action));
}

// --- doing it

void GroupCommands::done(const ActionResult& result, const Node& device,
                         const XCBasicString& chosen) {
  if (onDone) onDone(result);
  if (!result.done) return;
  const LampGroups groups(device);
  const Node* group = groups.named(chosen);
  if (group == nullptr && groups.container() != nullptr) group = groups.container()->Parent();
  if (group != nullptr) tree_.chooseGroup(*group);
}

void GroupCommands::move(ActionResult (workbench::GroupActions::*step)(CWnd*)) {
  const ActionResult result = (workspace_.groups().*step)(&wnd_);
  if (onDone) onDone(result);
}

void GroupCommands::newGroup() {
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  if (device == nullptr) return;
  const std::size_t before = LampGroups(*device).all().size();
  const ActionResult result = workspace_.groups().newGroup(&wnd_, *device, tree_.selectedLamps());
  const auto groups = LampGroups(*device).all();
  if (groups.size() > before) return done(result, *device, groups.back()->Value("id"));
  if (onDone) onDone(result);
}

void GroupCommands::modifyGroup() {
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  const host::XmlAnchor group(tree_.chosenGroup());
  if (device == nullptr || group == nullptr) return;
  const ActionResult result = workspace_.groups().modifyGroup(&wnd_, *device, *group);
  done(result, *device, group->Value("id"));
}

void GroupCommands::removeGroup() {
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  const host::XmlAnchor group(tree_.chosenGroup());
  if (device == nullptr || group == nullptr) return;
  const XCBasicString name = group->Value("id");
  const ActionResult result = workspace_.groups().removeGroup(&wnd_, *device, *group);
  done(result, *device, {});
  if (result.done && onNotice) onNotice(caption(TextId::GroupRemovedNotice, name));
}

void GroupCommands::takeOut() {
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  const host::XmlAnchor group(tree_.chosenGroup());
  if (device == nullptr || group == nullptr) return;
  const XCBasicString name = group->Value("id");
  done(workspace_.groups().takeOutLamps(&wnd_, *device, *group, tree_.selectedMembers()), *device,
       name);
}

void GroupCommands::addTo(const XCBasicString& name) {
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  const host::XmlAnchor group(device ? LampGroups(*device).named(name) : nullptr);
  if (group == nullptr) return;
  const ActionResult result =
      workspace_.groups().addLamps(&wnd_, *device, *group, tree_.selectedLamps());
  if (onDone) onDone(result);  // the lamps stay selected: they may belong to another group too
  if (result.done && onNotice)
    onNotice(caption(TextId::LampsInGroupNotice, name, LampGroups::contentOf(*group).lamps.size()));
}

void GroupCommands::fillAddTo() {
  addTo_->clear();
  const host::ConstXmlAnchor device(tree_.deviceConcerned());
  if (device == nullptr) return;
  for (const Node* group : LampGroups(*device).all()) {
    const XCBasicString name = group->Value("id");
    // An "&" of the name is no mnemonic.
    QAction* entry = addTo_->addAction(
        imageIcon("GROUP-20.png"), qtText(name).replace(QLatin1String("&"), QLatin1String("&&")));
    connect(entry, &QAction::triggered, this, [this, name] { addTo(name); });
  }
  if (!addTo_->isEmpty()) addTo_->addSeparator();
  addTo_->addAction(actions_.find(TextId::ActionNewGroup));
}

}  // namespace editor
