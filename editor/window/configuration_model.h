#pragma once

#include <QtCore/QAbstractItemModel>
#include <QtGui/QIcon>
#include <map>
#include <memory>
#include <vector>

#include "host/xml/xml_holder.h"

namespace editor {

/// The configuration as a tree: the devices with their child devices, and the device groups with
/// the groups of lamps in them. Branches are read when they are opened, so that a device with a
/// hundred thousand child devices costs nothing until then.
class ConfigurationModel : public QAbstractItemModel, private host::XmlHolder {
 public:
  enum class Kind {
    devicesRoot,
    groupsRoot,
    device,
    childDevice,
    group,       ///< a device group, such as that of a controller
    lampGroup,   ///< a group in it
    innerGroup,  ///< a group in that, which nothing uses
    member,      ///< a device of a lampGroup
  };

  ConfigurationModel();
  ~ConfigurationModel() override;

  /// Reads the configuration again.
  void reload();
  /// Shows only devices, child devices and groups whose name, address or identifier has this text
  /// in it, whatever the case, with the branches that lead to them; everything for an empty text.
  void setSearch(const QString& text);
  bool isSearching() const { return !search_.isEmpty(); }

  Kind kind(const QModelIndex& index) const;
  /// The element behind an entry; null for the two roots. That of a member only has the id of the
  /// child device.
  XmlDocument::XmlNode* element(const QModelIndex& index) const;
  /// What tells an entry from those with the same parent, also after a reload.
  QString key(const QModelIndex& index) const;
  /// The entry of a device; invalid when the tree does not show it.
  QModelIndex indexOfDevice(std::u16string_view id) const;
  /// The entry of a device group or a group of lamps; invalid when the tree does not show it.
  QModelIndex indexOfGroup(const XmlDocument::XmlNode& group) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  struct Entry;

  void tellHeld(const Note& note) const override;
  Entry* entryOf(const QModelIndex& index) const;
  void fill(Entry& entry) const;
  void add(Entry& parent, Kind kind, XmlDocument::XmlNode* element) const;
  bool isShown(Kind kind, const XmlDocument::XmlNode& element, bool parentMatches) const;
  bool matches(Kind kind, const XmlDocument::XmlNode& element) const;
  QVariant text(const Entry& entry) const;
  QVariant toolTip(const Entry& entry) const;
  QVariant icon(const Entry& entry) const;
  QIcon driverIcon(std::u16string_view type) const;

  std::unique_ptr<Entry> top_;
  QString search_;
  QIcon rootIcon_;
  QIcon groupIcon_;
  mutable std::map<std::string, QIcon> driverIcons_;  // by the name of the image
};

}  // namespace editor
