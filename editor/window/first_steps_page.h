#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;

namespace editor {

/// What an empty configuration shows: what a lamp manager is, and the button that adds one.
class FirstStepsPage : public QWidget {
 public:
  explicit FirstStepsPage(QWidget* parent);

  void retranslate();
  QPushButton& button() const { return *button_; }

 private:
  QLabel* title_;
  QLabel* text_;
  QPushButton* button_;
};

}  // namespace editor
