#pragma once

#include <QtWidgets/QWidget>
#include <functional>

#include "editor/window/configuration_model.h"

class QLineEdit;
class QTreeView;

namespace editor {

/// The tree of the configuration with a search field above it.
class ConfigurationTree : public QWidget {
 public:
  explicit ConfigurationTree(QWidget* parent);

  /// The user or the program chose another entry.
  std::function<void()> onChosen;
  /// An entry was double-clicked or answered with Enter.
  std::function<void()> onActivated;

  const ConfigurationModel& model() const { return model_; }
  QTreeView& view() const { return *view_; }
  QModelIndex current() const;
  /// The device chosen, or the one whose child device is; null for anything else.
  XmlDocument::XmlNode* chosenDevice() const;

  /// Reads the configuration again; what was open and chosen stays so. @p change, where given, may
  /// replace all elements.
  void reload(const std::function<void()>& change = {});
  void chooseDevice(std::u16string_view id);
  void retranslate();

 private:
  void search(const QString& text);
  void openBranches();
  void collectOpen(const QModelIndex& parent, QStringList& keys) const;
  void reopen(const QModelIndex& parent, const QStringList& open, const QString& chosen);

  ConfigurationModel model_;
  QLineEdit* search_;
  QTreeView* view_;
  bool reloading_ = false;
};

}  // namespace editor
