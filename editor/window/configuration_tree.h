#pragma once

#include <QtCore/QSet>
#include <QtWidgets/QWidget>
#include <functional>

#include "editor/window/configuration_model.h"

class QLineEdit;
class QTreeView;

namespace editor {

/// The tree of the configuration with a search field above it. Several entries may be selected: the
/// last one touched is the current one, which decides what the rest of the window shows.
class ConfigurationTree : public QWidget {
 public:
  using Node = XmlDocument::XmlNode;
  using Kind = ConfigurationModel::Kind;

  explicit ConfigurationTree(QWidget* parent);

  /// The user or the program chose another entry, or selected others.
  std::function<void()> onChosen;
  /// An entry was double-clicked or answered with Enter.
  std::function<void()> onActivated;

  const ConfigurationModel& model() const { return model_; }
  QTreeView& view() const { return *view_; }
  QModelIndex current() const;
  /// Whether the current entry is of a kind.
  bool isCurrent(Kind kind) const;
  /// The device chosen, or the one whose child device is; null for anything else.
  Node* chosenDevice() const;
  /// The group of lamps chosen, or the one whose member is; null for anything else.
  Node* chosenGroup() const;
  /// The device that the current entry is about: the one chosen, or that of the group chosen.
  Node* deviceConcerned() const;
  /// The ids of the selected child devices, in their order; empty unless all that is selected are
  /// child devices of one device.
  std::vector<XCBasicString> selectedLamps() const;
  /// The ids of the selected members, empty unless all that is selected are members of one group.
  std::vector<XCBasicString> selectedMembers() const;

  /// Reads the configuration again; what was open and chosen stays so. @p change, where given, may
  /// replace all elements.
  void reload(const std::function<void()>& change = {});
  void chooseDevice(std::u16string_view id);
  /// Chooses a device group or a group of lamps and opens the branches that lead to it.
  void chooseGroup(const Node& group);
  void retranslate();

 private:
  /// What the person sees of the tree, by the keys of its entries.
  struct View {
    QSet<QString> open;
    QSet<QString> selected;
    QString current;
  };

  void search(const QString& text);
  void openBranches();
  View seen() const;
  void collectOpen(const QModelIndex& parent, const QString& path, QSet<QString>& open) const;
  void restore(const View& view);
  void restoreBelow(const QModelIndex& parent, const QString& path, const View& view);
  QString pathOf(const QModelIndex& index) const;
  std::vector<XCBasicString> selectedIds(Kind kind) const;

  ConfigurationModel model_;
  QLineEdit* search_;
  QTreeView* view_;
  bool reloading_ = false;
};

}  // namespace editor
