#include "editor/window/first_steps_page.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "editor/images.h"
#include "editor/qt_text.h"

namespace editor {
namespace {

constexpr int TextWidth = 460;
constexpr qreal TitleScale = 1.6;

}  // namespace

FirstStepsPage::FirstStepsPage(QWidget* parent)
    : QWidget(parent),
      title_(new QLabel(this)),
      text_(new QLabel(this)),
      button_(new QPushButton(this)) {
  auto* picture = new QLabel(this);
  const QIcon icon = imageIcon("ZELLAMPMANAGER-50.png");
  picture->setPixmap(icon.pixmap(imageSize(icon), devicePixelRatioF()));
  QFont large = title_->font();
  large.setPointSizeF(large.pointSizeF() * TitleScale);
  title_->setFont(large);
  text_->setWordWrap(true);
  text_->setFixedWidth(TextWidth);
  button_->setIcon(imageIcon("NEW-16.png"));
  auto* column = new QVBoxLayout;
  column->setSpacing(14);
  for (QWidget* widget : {static_cast<QWidget*>(picture), static_cast<QWidget*>(title_),
                          static_cast<QWidget*>(text_)})
    column->addWidget(widget);
  column->addWidget(button_, 0, Qt::AlignLeft);
  auto* centre = new QVBoxLayout(this);
  centre->addStretch(1);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addLayout(column);
  row->addStretch();
  centre->addLayout(row);
  centre->addStretch(2);
  retranslate();
}

void FirstStepsPage::retranslate() {
  title_->setText(caption(host::TextId::FirstStepsTitle));
  text_->setText(caption(host::TextId::FirstSteps));
  button_->setText(caption(host::TextId::ActionNewDevice));
}

}  // namespace editor
