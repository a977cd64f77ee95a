#include "editor/dialogs/dialog_window.h"

#include <QtCore/QEventLoop>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

#include "editor/images.h"
#include "editor/qt_text.h"
#include "host/dialogs/extension_module.h"
#include "host/services/setup.h"

namespace editor {
namespace {

// What of the screen a dialog takes at most, in percent: the title bar and the task bar remain.
constexpr int MostOfScreen = 92;
constexpr int LeastWidth = 260;

}  // namespace

DialogWindow::DialogWindow(XCBaseDlg& dialog, QWidget* parent)
    : QDialog(parent), dialog_(dialog), scroll_(new QScrollArea(this)) {
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setWindowIcon(imageIcon(XCVarnisSetup::Get().ProgramIDResource()));
  setModal(true);
  body_ = std::make_unique<DialogBody>(dialog, *this, true);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setWidget(&body_->content());
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(scroll_, 1);
  if (QWidget* foot = body_->foot()) {
    foot->layout()->setContentsMargins(11, 2, 11, 11);
    column->addWidget(foot);
  }
  body_->onRefreshed = [this] { followDialog(); };
  fit(true);
}

DialogWindow::~DialogWindow() = default;

bool DialogWindow::addToFoot(QWidget* button) {
  auto* row = body_->foot() ? dynamic_cast<QBoxLayout*>(body_->foot()->layout()) : nullptr;
  if (row == nullptr) return false;
  // Behind the room between OK and Cancel, with as much of it on the other side.
  int place = row->count();
  for (int at = 0; at < row->count(); ++at)
    if (row->itemAt(at)->expandingDirections().testFlag(Qt::Horizontal) &&
        row->itemAt(at)->spacerItem() != nullptr)
      place = at + 1;
  row->insertWidget(place, button);
  row->insertStretch(place + 1);
  fit(true);
  return true;
}

void DialogWindow::run() {
  QEventLoop loop;
  loop_ = &loop;
  show();
  body_->noteChange();
  loop.exec();
  loop_ = nullptr;
  hide();
}

void DialogWindow::followDialog() {
  const QString title = qtText(dialog_.GetWindowText());
  if (windowTitle() != title) setWindowTitle(title);
  if (dialog_.HasEnded()) {
    if (loop_ != nullptr) loop_->quit();
    return;
  }
  fit(false);
}

// The window never gets smaller than its content needs, nor larger than the screen because of it.
void DialogWindow::fit(bool grow) {
  body_->content().layout()->activate();
  QSize least = body_->content().minimumSizeHint();
  QSize natural = body_->content().sizeHint();
  if (QWidget* foot = body_->foot()) {
    const QSize extra(0, foot->sizeHint().height());
    least = (least + extra).expandedTo({foot->minimumSizeHint().width(), 0});
    natural = (natural + extra).expandedTo({foot->sizeHint().width(), 0});
  }
  const QSize most = screen()->availableGeometry().size() * MostOfScreen / 100;
  // A scroll bar that appears on one side must not take the room of the other.
  const int bar = scroll_->verticalScrollBar()->sizeHint().width();
  if (least.height() > most.height()) {
    least.rwidth() += bar;
    natural.rwidth() += bar;
  }
  setMinimumSize(least.expandedTo({LeastWidth, 0}).expandedTo(leastSize_).boundedTo(most));
  if (!grow) return;
  resize(natural.expandedTo(minimumSize()).boundedTo(most));
  if (openingSizeIsLeast()) setMinimumSize(leastSize_ = size());
}

bool DialogWindow::openingSizeIsLeast() const {
  const host::DialogTemplate* made = host::findTemplate(dialog_.TemplateNumber());
  return made != nullptr && made->openingSizeIsLeast;
}

host::Control* DialogWindow::controlWithFocus() const {
  if (dialog_.Focus() != nullptr) return dialog_.Focus();
  return dialog_.FindControl(host::IdOk);
}

// Enter and Escape are the dialog's: what they do is decided by the rules for all front ends.
void DialogWindow::keyPressEvent(QKeyEvent* event) {
  host::UserInput input(dialog_);
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape) {
    host::Control* focus = controlWithFocus();
    if (focus == nullptr || !input.press(*focus, host::Key::escape)) input.close();
  } else if (enter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
    host::Control* focus = controlWithFocus();
    host::Control* ok = dialog_.FindControl(host::IdOk);
    // A control that was disabled under the keyboard does not keep Enter from the dialog.
    if (focus != nullptr && !input.press(*focus, host::Key::enter) && ok != nullptr)
      input.press(*ok, host::Key::enter);
  } else {
    event->ignore();
    return;
  }
  body_->noteChange();
}

void DialogWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  host::UserInput(dialog_).close();
  body_->noteChange();
}

// Qt's ways of ending a dialog lead to the model's; the window goes when the model has ended.
void DialogWindow::done(int) {
  close();
}

}  // namespace editor
