#include "editor/window/configuration_tree.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include "editor/qt_text.h"

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
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { search(text); });
  connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
    if (!reloading_ && onChosen) onChosen();
  });
  connect(view_, &QTreeView::activated, this, [this] {
    if (onActivated) onActivated();
  });
  retranslate();
  openBranches();
}

QModelIndex ConfigurationTree::current() const {
  return view_->currentIndex();
}

XmlDocument::XmlNode* ConfigurationTree::chosenDevice() const {
  QModelIndex index = current();
  if (!index.isValid()) return nullptr;
  if (model_.kind(index) == ConfigurationModel::Kind::childDevice) index = index.parent();
  return model_.kind(index) == ConfigurationModel::Kind::device ? model_.element(index) : nullptr;
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

void ConfigurationTree::collectOpen(const QModelIndex& parent, QStringList& keys) const {
  for (int row = 0; row < model_.rowCount(parent); ++row) {
    const QModelIndex index = model_.index(row, 0, parent);
    if (!view_->isExpanded(index)) continue;
    keys << model_.key(index);
    // Child devices have no branches: their row need not be asked.
    if (model_.kind(index) != ConfigurationModel::Kind::device) collectOpen(index, keys);
  }
}

void ConfigurationTree::reopen(const QModelIndex& parent, const QStringList& open,
                               const QString& chosen) {
  for (int row = 0; row < model_.rowCount(parent); ++row) {
    const QModelIndex index = model_.index(row, 0, parent);
    const QString key = model_.key(index);
    if (key == chosen) view_->setCurrentIndex(index);
    if (!open.contains(key)) continue;
    view_->expand(index);
    reopen(index, open, chosen);
  }
}

void ConfigurationTree::reload(const std::function<void()>& change) {
  QStringList open;
  collectOpen({}, open);
  const QString chosen = current().isValid() ? model_.key(current()) : QString();
  reloading_ = true;
  if (change) change();
  model_.reload();
  reopen({}, open, chosen);
  openBranches();
  reloading_ = false;
  if (onChosen) onChosen();
}

void ConfigurationTree::chooseDevice(std::u16string_view id) {
  const QModelIndex index = model_.indexOfDevice(id);
  if (index.isValid()) view_->setCurrentIndex(index);
}

}  // namespace editor
