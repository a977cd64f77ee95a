#include "editor/window/configuration_model.h"

#include <QtGui/QFont>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <span>

#include "editor/images.h"
#include "editor/qt_text.h"
#include "host/services/drivers.h"
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

// The entries below one stand in these branches, one behind the other.
std::span<const Branch> branchesOf(Kind kind) {
  static constexpr Branch Devices[] = {{"commSystem", "device", Kind::device}};
  static constexpr Branch ChildDevices[] = {{"childDevices", "", Kind::childDevice}};
  static constexpr Branch Groups[] = {{"deviceGroups/groups", "group", Kind::group}};
  static constexpr Branch LampGroups[] = {{"groups", "group", Kind::lampGroup}};
  static constexpr Branch Members[] = {{"devices", "device", Kind::member},
                                       {"groups", "group", Kind::innerGroup}};
  static constexpr Branch InnerGroups[] = {{"groups", "group", Kind::innerGroup}};
  switch (kind) {
    case Kind::devicesRoot:
      return Devices;
    case Kind::device:
      return ChildDevices;
    case Kind::groupsRoot:
      return Groups;
    case Kind::group:
      return LampGroups;
    case Kind::lampGroup:
      return Members;
    case Kind::innerGroup:
      return InnerGroups;
    case Kind::childDevice:
    case Kind::member:
      break;
  }
  return {};
}

bool belongs(const Branch& branch, const Node& element) {
  return *branch.tag == '\0' || element.Tag() == branch.tag;
}

Node* elementOf(Kind kind, Node* own) {
  return kind == Kind::devicesRoot || kind == Kind::groupsRoot ? XCMainCfg::Get().Root() : own;
}

bool isGroup(Kind kind) {
  return kind == Kind::group || kind == Kind::lampGroup || kind == Kind::innerGroup;
}

const XCDriver* driverOf(const Node& member) {
  return XCDriver::LockDriver(member.Value("id"));
}

}  // namespace

ConfigurationModel::ConfigurationModel()
    : rootIcon_(imageIcon(XCVarnisSetup::Get().ProgramIDResource())),
      groupIcon_(imageIcon("GROUP-20.png")) {
  reload();
}

ConfigurationModel::~ConfigurationModel() = default;

// The configuration may change before the model is told to read it again.
void ConfigurationModel::tellHeld(const Note& note) const {
  std::vector<const Entry*> left;
  if (top_) left.push_back(top_.get());
  while (!left.empty()) {
    const Entry* entry = left.back();
    left.pop_back();
    note(entry->element);
    for (const auto& child : entry->children) left.push_back(child.get());
  }
}

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
  entry->matched =
      parent.matched || (isSearching() && element != nullptr && matches(kind, *element));
  parent.children.push_back(std::move(entry));
}

// Lamps are found below their controller; below a group they only show what is in it.
bool ConfigurationModel::matches(Kind kind, const Node& element) const {
  const auto has = [this, &element](const char* field) {
    return qtText(element.Value(field)).contains(search_, Qt::CaseInsensitive);
  };
  if (isGroup(kind)) return has("id");
  return kind != Kind::member &&
         (has("name") || has("address") || has("identifier") || has("description"));
}

bool ConfigurationModel::isShown(Kind kind, const Node& element, bool parentMatches) const {
  if (!isSearching() || parentMatches || matches(kind, element)) return true;
  for (const Branch& branch : branchesOf(kind)) {
    const Node* below = element.Node(branch.path);
    if (below == nullptr) continue;
    for (const Node& child : below->Children())
      if (belongs(branch, child) && isShown(branch.kind, child, false)) return true;
  }
  return false;
}

void ConfigurationModel::fill(Entry& entry) const {
  if (entry.filled) return;
  entry.filled = true;
  Node* element = elementOf(entry.kind, entry.element);
  for (const Branch& branch : branchesOf(entry.kind)) {
    Node* below = element ? element->Node(branch.path) : nullptr;
    if (below == nullptr) continue;
    for (Node& child : below->Children())
      if (belongs(branch, child) && isShown(branch.kind, child, entry.matched))
        add(entry, branch.kind, &child);
  }
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

QModelIndex ConfigurationModel::indexOfGroup(const Node& group) const {
  const QModelIndex groups = index(1, 0);
  for (int row = 0; row < rowCount(groups); ++row) {
    const QModelIndex own = index(row, 0, groups);
    if (element(own) == &group) return own;
    if (group.Parent() == nullptr || group.Parent()->Parent() != element(own)) continue;
    for (int inner = 0; inner < rowCount(own); ++inner)
      if (element(index(inner, 0, own)) == &group) return index(inner, 0, own);
  }
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
  const Node* element = elementOf(entry->kind, entry->element);
  for (const Branch& branch : branchesOf(entry->kind)) {
    const Node* below = element ? element->Node(branch.path) : nullptr;
    if (below != nullptr && below->FirstChild() != nullptr) return true;
  }
  return false;
}

QIcon ConfigurationModel::driverIcon(std::u16string_view type) const {
  const std::string name = XCVarnisSetup::Get().DriverImage(type);
  const auto [known, isNew] = driverIcons_.try_emplace(name);
  if (isNew) known->second = imageIcon(name);
  return known->second;
}

QVariant ConfigurationModel::icon(const Entry& entry) const {
  switch (entry.kind) {
    case Kind::devicesRoot:
      return rootIcon_;
    case Kind::device:
    case Kind::childDevice:
      return driverIcon(entry.element->Value("driver"));
    case Kind::member: {
      const XCDriver* driver = driverOf(*entry.element);
      return driver ? driverIcon(driver->Type()) : QVariant();
    }
    case Kind::groupsRoot:
    case Kind::group:
    case Kind::lampGroup:
    case Kind::innerGroup:
      break;
  }
  return groupIcon_;
}

QVariant ConfigurationModel::text(const Entry& entry) const {
  switch (entry.kind) {
    case Kind::devicesRoot:
      return caption(TextId::TreeDevices);
    case Kind::groupsRoot:
      return caption(TextId::TreeGroups);
    case Kind::group:
    case Kind::lampGroup:
    case Kind::innerGroup:
      return qtText(entry.element->Value("id"));
    case Kind::member: {
      const XCDriver* driver = driverOf(*entry.element);
      return driver ? qtText(driver->Name()) : caption(TextId::LampGone);
    }
    case Kind::device:
    case Kind::childDevice:
      break;
  }
  return qtText(entry.element->Value("name"));
}

QVariant ConfigurationModel::toolTip(const Entry& entry) const {
  if (entry.element == nullptr) return {};
  if (entry.kind != Kind::member) return qtText(entry.element->Value("description"));
  const XCDriver* driver = driverOf(*entry.element);
  return qtText(driver ? driver->Description() : entry.element->Value("id"));
}

QVariant ConfigurationModel::data(const QModelIndex& index, int role) const {
  const Entry& entry = *entryOf(index);
  switch (role) {
    case Qt::DisplayRole:
      return text(entry);
    case Qt::DecorationRole:
      return icon(entry);
    case Qt::ToolTipRole:
      return toolTip(entry);
    case Qt::FontRole: {
      if (entry.element != nullptr) return {};
      QFont bold;
      bold.setBold(true);
      return bold;
    }
    case Qt::ForegroundRole:
      // A lamp that is no longer there.
      if (entry.kind != Kind::member || driverOf(*entry.element) != nullptr) return {};
      return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    default:
      return {};
  }
}

}  // namespace editor
