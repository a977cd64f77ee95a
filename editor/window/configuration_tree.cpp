#include "editor/window/configuration_tree.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

#include "editor/qt_text.h"
#include "workbench/device_catalogue.h"

namespace editor {
namespace {

// While searching, branches with no more entries than this are opened by themselves.
constexpr int MostOpened = 500;
constexpr int IconSize = 20;

}  // namespace

ConfigurationTree::ConfigurationTree(QWidget* parent)
    : QWidget(parent), search_(new QLineEdit(this)), view_(new QTreeView(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(search_);
  column->addWidget(view_, 1);
  search_->setClearButtonEnabled(true);
  view_->setModel(&model_);
  view_->setHeaderHidden(true);
  view_->setIconSize({IconSize, IconSize});
  view_->setUniformRowHeights(true);
  view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view_->setExpandsOnDoubleClick(false);
  view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { search(text); });
  const auto chosen = [this] {
    if (!reloading_ && onChosen) onChosen();
  };
  connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, chosen);
  connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, chosen);
  connect(view_, &QTreeView::activated, this, [this] {
    if (onActivated) onActivated();
  });
  retranslate();
  openBranches();
}

QModelIndex ConfigurationTree::current() const {
  return view_->currentIndex();
}

bool ConfigurationTree::isCurrent(Kind kind) const {
  return current().isValid() && model_.kind(current()) == kind;
}

XmlDocument::XmlNode* ConfigurationTree::chosenDevice() const {
  if (isCurrent(Kind::device)) return model_.element(current());
  return isCurrent(Kind::childDevice) ? model_.element(current().parent()) : nullptr;
}

XmlDocument::XmlNode* ConfigurationTree::chosenGroup() const {
  if (isCurrent(Kind::lampGroup)) return model_.element(current());
  return isCurrent(Kind::member) ? model_.element(current().parent()) : nullptr;
}

XmlDocument::XmlNode* ConfigurationTree::deviceConcerned() const {
  if (Node* device = chosenDevice()) return device;
  QModelIndex index = current();
  while (index.isValid() && model_.kind(index) != Kind::group) index = index.parent();
  return index.isValid()
             ? workbench::DeviceCatalogue::deviceNamed(model_.element(index)->Value("id"))
             : nullptr;
}

std::vector<XCBasicString> ConfigurationTree::selectedIds(Kind kind) const {
  QModelIndexList rows = view_->selectionModel()->selectedIndexes();
  std::vector<XCBasicString> ids;
  if (rows.isEmpty()) return ids;
  std::sort(rows.begin(), rows.end(),
            [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
  const QModelIndex parent = rows.front().parent();
  for (const QModelIndex& row : rows) {
    if (model_.kind(row) != kind || row.parent() != parent) return {};
    ids.push_back(model_.element(row)->Value("id"));
  }
  return ids;
}

std::vector<XCBasicString> ConfigurationTree::selectedLamps() const {
  return selectedIds(Kind::childDevice);
}

std::vector<XCBasicString> ConfigurationTree::selectedMembers() const {
  return selectedIds(Kind::member);
}

void ConfigurationTree::retranslate() {
  search_->setPlaceholderText(caption(host::TextId::TreeSearch));
  view_->setAccessibleName(caption(host::TextId::MenuConfiguration));
  view_->viewport()->update();
}

void ConfigurationTree::openBranches() {
  for (int root = 0; root < model_.rowCount(); ++root) {
    const QModelIndex index = model_.index(root, 0);
    view_->expand(index);
    if (!model_.isSearching()) continue;
    for (int row = 0; row < std::min(model_.rowCount(index), MostOpened); ++row) {
      const QModelIndex child = model_.index(row, 0, index);
      if (model_.rowCount(child) <= MostOpened) view_->expand(child);
    }
  }
}

void ConfigurationTree::search(const QString& text) {
  const XmlDocument::XmlNode* device = chosenDevice();
  const XCBasicString id = device ? device->Value("id") : XCBasicString();
  reloading_ = true;
  model_.setSearch(text.trimmed());
  openBranches();
  if (device != nullptr) view_->setCurrentIndex(model_.indexOfDevice(id));
  reloading_ = false;
  if (onChosen) onChosen();
}

// An entry is known by the keys on the way to it: groups of two controllers may have one name.
QString ConfigurationTree::pathOf(const QModelIndex& index) const {
  return index.isValid() ? pathOf(index.parent()) + "/" + model_.key(index) : QString();
}

void ConfigurationTree::collectOpen(const QModelIndex& parent, const QString& path,
                                    QSet<QString>& open) const {
  for (int row = 0; row < model_.rowCount(parent); ++row) {
    const QModelIndex index = model_.index(row, 0, parent);
    if (!view_->isExpanded(index)) continue;
    const QString own = path + "/" + model_.key(index);
    open.insert(own);
    // Child devices have no branches: their row need not be asked.
    if (model_.kind(index) != Kind::device) collectOpen(index, own, open);
  }
}

ConfigurationTree::View ConfigurationTree::seen() const {
  View view;
  collectOpen({}, {}, view.open);
  view.current = pathOf(current());
  for (const QModelIndex& index : view_->selectionModel()->selectedIndexes())
    view.selected.insert(pathOf(index));
  return view;
}

void ConfigurationTree::restoreBelow(const QModelIndex& parent, const QString& path,
                                     const View& view) {
  QItemSelection selected;
  QModelIndex chosen;
  for (int row = 0; row < model_.rowCount(parent); ++row) {
    const QModelIndex index = model_.index(row, 0, parent);
    const QString own = path + "/" + model_.key(index);
    if (view.selected.contains(own)) selected.select(index, index);
    if (own == view.current) chosen = index;
    if (!view.open.contains(own)) continue;
    view_->expand(index);
    restoreBelow(index, own, view);
  }
  QItemSelectionModel& selection = *view_->selectionModel();
  if (chosen.isValid()) selection.setCurrentIndex(chosen, QItemSelectionModel::NoUpdate);
  selection.select(selected, QItemSelectionModel::Select);
}

void ConfigurationTree::restore(const View& view) {
  restoreBelow({}, {}, view);
  // Where the current entry is gone the selection must not be about something else.
  if (!current().isValid()) view_->clearSelection();
}

void ConfigurationTree::reload(const std::function<void()>& change) {
  const View view = seen();
  reloading_ = true;
  if (change) change();
  model_.reload();
  restore(view);
  openBranches();
  reloading_ = false;
  if (onChosen) onChosen();
}

void ConfigurationTree::chooseDevice(std::u16string_view id) {
  const QModelIndex index = model_.indexOfDevice(id);
  if (index.isValid()) view_->setCurrentIndex(index);
}

void ConfigurationTree::chooseGroup(const Node& group) {
  const QModelIndex index = model_.indexOfGroup(group);
  if (!index.isValid()) return;
  view_->expand(index.parent());
  view_->setCurrentIndex(index);
}

}  // namespace editor
