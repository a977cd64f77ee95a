#pragma once

#include <QtWidgets/QFrame>
#include <array>
#include <functional>

class QLineEdit;

namespace editor {

/// Four small edits with dots between them that read and type as one address.
class IpField : public QFrame {
 public:
  static constexpr std::size_t Parts = 4;

  explicit IpField(QWidget* parent);

  /// What stands in the parts, with dots; empty when all of them are empty.
  QString address() const;
  /// Shows an address. A part that the user emptied stays empty while the field has the keyboard
  /// and the address has 0 there.
  void showAddress(const QString& address);

  QList<QWidget*> parts() const;
  bool hasKeyboard() const;

  std::function<void()> onEdited;
  /// A whole address was pasted.
  std::function<void(const QString&)> onPasted;
  std::function<void()> onLeft;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool key(std::size_t part, class QKeyEvent& event);
  void edited(std::size_t part);
  void goTo(std::size_t part, bool atEnd);

  std::array<QLineEdit*, Parts> parts_;
  bool advanced_ = false;  // the part was reached because the one before was full
};

}  // namespace editor
