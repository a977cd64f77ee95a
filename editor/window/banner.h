#pragma once

#include <QtWidgets/QFrame>

class QLabel;
class QPushButton;

namespace editor {

/// A strip across the window that says what holds as long as it is shown, with at most one button.
class Banner : public QFrame {
 public:
  explicit Banner(QWidget* parent);

  /// Shows the text; an empty one hides the strip. Without a caption there is no button.
  void showText(const QString& text, const QString& button = {});
  QString text() const;
  QPushButton& button() const { return *button_; }

 private:
  QLabel* icon_;
  QLabel* text_;
  QPushButton* button_;
};

}  // namespace editor
