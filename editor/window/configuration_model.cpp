#include "editor/window/configuration_model.h"

#include <QtGui/QFont>

#include "editor/images.h"
#include "editor/qt_text.h"
#include "host/services/setup.h"

namespace editor {

using Node = XmlDocument::XmlNode;
using host::TextId;

struct ConfigurationModel::Entry {
  Kind kind = Kind::devicesRoot;
  Node* element = nullptr;
  Entry* parent = nullptr;
  int row = 0;
  bool filled = false;
  bool matched = false;  // by itself: everything below it is shown
  std::vector<std::unique_ptr<Entry>> children = {};
};

namespace {

using Kind = ConfigurationModel::Kind;

/// Where the entries below one stand, and what they are.
struct Branch {
  const char* path;
  const char* tag;
  Kind kind;
};

Branch branchOf(Kind kind) {
  switch (kind) {
    case Kind::devicesRoot:
      return {"commSystem", "device", Kind::device};
    case Kind::device:
      return {"childDevices", "", Kind::childDevice};
    case Kind::groupsRoot:
      return {"deviceGroups/groups", "group", Kind::group};
    case Kind::group:
      return {"groups", "group", Kind::group};
    case Kind::childDevice:
      break;
  }
  return {"", "", Kind::childDevice};
}

bool belongs(const Branch& branch, const Node& element) {
  return *branch.tag == '\0' || element.Tag() == branch.tag;
}

Node* elementOf(Kind kind, Node* own) {
  return kind == Kind::devicesRoot || kind == Kind::groupsRoot ? XCMainCfg::Get().Root() : own;
}

}  // namespace

ConfigurationModel::ConfigurationModel()
    : deviceIcon_(imageIcon("ZELLAMPMANAGER-50.png")),
      rootIcon_(imageIcon(XCVarnisSetup::Get().ProgramIDResource())) {
  reload();
}

ConfigurationModel::~ConfigurationModel() = default;

void ConfigurationModel::reload() {
  beginResetModel();
  top_ = std::make_unique<Entry>();
  top_->filled = true;
  add(*top_, Kind::devicesRoot, nullptr);
  if (elementOf(Kind::groupsRoot, nullptr) != nullptr &&
      XCMainCfg::Get().Root()->Node("deviceGroups/groups/group") != nullptr)
    add(*top_, Kind::groupsRoot, nullptr);
  endResetModel();
}

void ConfigurationModel::setSearch(const QString& text) {
  if (text == search_) return;
  search_ = text;
  reload();
}

void ConfigurationModel::add(Entry& parent, Kind kind, Node* element) const {
  auto entry = std::make_unique<Entry>();
  entry->kind = kind;
  entry->element = element;
  entry->parent = &parent;
  entry->row = static_cast<int>(parent.children.size());
  entry->matched = parent.matched || (isSearching() && element != nullptr && matches(*element));
  parent.children.push_back(std::move(entry));
}

bool ConfigurationModel::matches(const Node& element) const {
  for (const char* field : {"name", "address", "identifier", "description"})
    if (qtText(element.Value(field)).contains(search_, Qt::CaseInsensitive)) return true;
  return element.Tag() == "group" &&
         qtText(element.Value("id")).contains(search_, Qt::CaseInsensitive);
}

bool ConfigurationModel::isShown(Kind kind, const Node& element, bool parentMatches) const {
  if (!isSearching() || parentMatches || matches(element)) return true;
  const Branch branch = branchOf(kind);
  const Node* below = *branch.path == '\0' ? nullptr : element.Node(branch.path);
  if (below == nullptr) return false;
  for (const Node& child : below->Children())
    if (belongs(branch, child) && isShown(branch.kind, child, false)) return true;
  return false;
}

void ConfigurationModel::fill(Entry& entry) const {
  if (entry.filled) return;
  entry.filled = true;
  const Branch branch = branchOf(entry.kind);
  Node* element = elementOf(entry.kind, entry.element);
  Node* below = element && *branch.path != '\0' ? element->Node(branch.path) : nullptr;
  if (below == nullptr) return;
  for (Node& child : below->Children())
    if (belongs(branch, child) && isShown(branch.kind, child, entry.matched))
      add(entry, branch.kind, &child);
}

ConfigurationModel::Entry* ConfigurationModel::entryOf(const QModelIndex& index) const {
  return index.isValid() ? static_cast<Entry*>(index.internalPointer()) : top_.get();
}

ConfigurationModel::Kind ConfigurationModel::kind(const QModelIndex& index) const {
  return entryOf(index)->kind;
}

Node* ConfigurationModel::element(const QModelIndex& index) const {
  return entryOf(index)->element;
}

QString ConfigurationModel::key(const QModelIndex& index) const {
  const Entry* entry = entryOf(index);
  const QString id = entry->element ? qtText(entry->element->Value("id")) : QString();
  return QString::number(static_cast<int>(entry->kind)) + ":" + id;
}

QModelIndex ConfigurationModel::indexOfDevice(std::u16string_view id) const {
  const QModelIndex devices = index(0, 0);
  for (int row = 0; row < rowCount(devices); ++row)
    if (element(index(row, 0, devices))->Value("id") == id) return index(row, 0, devices);
  return {};
}

QModelIndex ConfigurationModel::index(int row, int column, const QModelIndex& parent) const {
  Entry* entry = entryOf(parent);
  fill(*entry);
  const auto at = static_cast<std::size_t>(row);
  if (row < 0 || at >= entry->children.size() || column != 0) return {};
  return createIndex(row, column, entry->children[at].get());
}

QModelIndex ConfigurationModel::parent(const QModelIndex& index) const {
  Entry* above = entryOf(index)->parent;
  return !index.isValid() || above == top_.get() ? QModelIndex()
                                                 : createIndex(above->row, 0, above);
}

int ConfigurationModel::rowCount(const QModelIndex& parent) const {
  Entry* entry = entryOf(parent);
  fill(*entry);
  return static_cast<int>(entry->children.size());
}

int ConfigurationModel::columnCount(const QModelIndex&) const {
  return 1;
}

bool ConfigurationModel::hasChildren(const QModelIndex& parent) const {
  const Entry* entry = entryOf(parent);
  if (entry->filled) return !entry->children.empty();
  const Branch branch = branchOf(entry->kind);
  const Node* element = elementOf(entry->kind, entry->element);
  const Node* below = element && *branch.path != '\0' ? element->Node(branch.path) : nullptr;
  return below != nullptr && below->FirstChild() != nullptr;
}

QVariant ConfigurationModel::data(const QModelIndex& index, int role) const {
  const Entry& entry = *entryOf(index);
  const bool isRoot = entry.element == nullptr;
  if (role == Qt::FontRole && isRoot) {
    QFont bold;
    bold.setBold(true);
    return bold;
  }
  if (role == Qt::DecorationRole && entry.kind == Kind::device) return deviceIcon_;
  // The first line gives all lines their height.
  if (role == Qt::DecorationRole && entry.kind == Kind::devicesRoot) return rootIcon_;
  if (role == Qt::ToolTipRole && !isRoot) return qtText(entry.element->Value("description"));
  if (role != Qt::DisplayRole) return {};
  switch (entry.kind) {
    case Kind::devicesRoot:
      return caption(TextId::TreeDevices);
    case Kind::groupsRoot:
      return caption(TextId::TreeGroups);
    case Kind::group:
      return qtText(entry.element->Value("id"));
    case Kind::device:
    case Kind::childDevice:
      break;
  }
  return qtText(entry.element->Value("name"));
}

}  // namespace editor
