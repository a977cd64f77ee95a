#include "editor/front_end/qt_front_end.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <algorithm>

#include "editor/dialogs/dialog_window.h"
#include "editor/front_end/widget_wnd.h"
#include "editor/qt_text.h"
#include "editor/renderers/mnemonics.h"

namespace editor {
namespace {

using host::MessageAnswer;
using host::MessageButtons;
using host::MessageIcon;
using host::TextId;

struct ButtonRow {
  TextId text;
  QMessageBox::ButtonRole role;
  MessageAnswer answer;
};

std::vector<ButtonRow> buttonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::retryCancel:
      return {{TextId::Retry, QMessageBox::AcceptRole, MessageAnswer::retry},
              {TextId::Cancel, QMessageBox::RejectRole, MessageAnswer::cancel}};
    case MessageButtons::yesNo:
      return {{TextId::Yes, QMessageBox::YesRole, MessageAnswer::yes},
              {TextId::No, QMessageBox::NoRole, MessageAnswer::no}};
    case MessageButtons::ok:
      break;
  }
  return {{TextId::Ok, QMessageBox::AcceptRole, MessageAnswer::ok}};
}

struct IconRow {
  QMessageBox::Icon icon;
  TextId title;
};

IconRow iconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::information:
      return {QMessageBox::Information, TextId::Information};
    case MessageIcon::warning:
      return {QMessageBox::Warning, TextId::Warning};
    case MessageIcon::question:
      return {QMessageBox::Question, TextId::Question};
    case MessageIcon::error:
      return {QMessageBox::Critical, TextId::Error};
    case MessageIcon::none:
      break;
  }
  return {QMessageBox::NoIcon, TextId::None};
}

}  // namespace

// The wait cursor is for the work, not for the person who is asked something meanwhile.
class QtFrontEnd::Nested {
 public:
  explicit Nested(QtFrontEnd& frontEnd) : frontEnd_(frontEnd), waiting_(frontEnd.waiting_) {
    ++frontEnd_.nested_;
    frontEnd_.setCursor(host::CursorShape::arrow);
  }
  Nested(const Nested&) = delete;
  Nested& operator=(const Nested&) = delete;
  ~Nested() {
    if (waiting_) frontEnd_.setCursor(host::CursorShape::wait);
    if (--frontEnd_.nested_ > 0) return;
    QTimer::singleShot(0, &frontEnd_.queue_, [frontEnd = &frontEnd_] {
      if (frontEnd->idleListener_ && !frontEnd->isBusy()) frontEnd->idleListener_();
    });
  }

 private:
  QtFrontEnd& frontEnd_;
  const bool waiting_;
};

QtFrontEnd::QtFrontEnd() = default;
QtFrontEnd::~QtFrontEnd() = default;

QWidget* QtFrontEnd::windowOf(CWnd* wnd) const {
  for (; wnd != nullptr; wnd = wnd->GetParent()) {
    if (const auto* widget = dynamic_cast<WidgetWnd*>(wnd); widget && widget->widget())
      return widget->widget()->window();
    if (const auto* dialog = dynamic_cast<XCBaseDlg*>(wnd))
      if (const DialogBody* body = bodyOf(*dialog)) return body->content().window();
  }
  return modals_.empty() ? QApplication::activeWindow() : modals_.back();
}

DialogBody* QtFrontEnd::bodyOf(const XCBaseDlg& dialog) const {
  for (const DialogWindow* window : modals_)
    if (&window->body().dialog() == &dialog) return &window->body();
  const auto child = children_.find(&dialog);
  return child == children_.end() ? nullptr : child->second.get();
}

void QtFrontEnd::runModal(XCBaseDlg& dialog) {
  const Nested nested(*this);
  DialogWindow window(dialog, windowOf(dialog.GetParent()));
  const std::unique_ptr<QObject> companion = makeCompanion_ ? makeCompanion_(window) : nullptr;
  modals_.push_back(&window);
  window.run();
  std::erase(modals_, &window);
}

bool QtFrontEnd::showChild(XCBaseDlg& dialog, CWnd* parent) {
  const auto* wnd = dynamic_cast<WidgetWnd*>(parent);
  QWidget* container = wnd ? wnd->widget() : nullptr;
  if (container == nullptr || container->layout() == nullptr) return false;
  auto body = std::make_unique<DialogBody>(dialog, *container, false);
  container->layout()->addWidget(&body->content());
  body->content().show();
  children_[&dialog] = std::move(body);
  return true;
}

void QtFrontEnd::forget(XCBaseDlg& dialog) {
  const auto child = children_.find(&dialog);
  if (child == children_.end()) return;
  QWidget* content = &child->second->content();
  children_.erase(child);
  delete content;
}

MessageAnswer QtFrontEnd::ask(const host::MessageRequest& request) {
  const Nested nested(*this);
  const IconRow icon = iconOf(request.icon);
  QWidget* parent = windowOf(request.parent);
  QMessageBox box(parent);
  box.setTextFormat(Qt::PlainText);
  box.setText(qtText(request.text).remove(QLatin1Char('\r')));
  box.setIcon(icon.icon);
  box.setWindowTitle(icon.title != TextId::None ? caption(icon.title)
                     : parent                   ? parent->windowTitle()
                                                : QString());
  const std::vector<ButtonRow> rows = buttonsOf(request.buttons);
  std::vector<QAbstractButton*> buttons;
  for (const ButtonRow& row : rows)
    buttons.push_back(box.addButton(plainCaption(XCLoadString(row.text)), row.role));
  // Escape is the last one: Cancel or No. So is Enter for a question, which would do something.
  box.setEscapeButton(buttons.back());
  auto* first = request.buttons == MessageButtons::yesNo ? buttons.back() : buttons.front();
  box.setDefaultButton(static_cast<QPushButton*>(first));
  box.exec();
  const auto pressed = std::find(buttons.begin(), buttons.end(), box.clickedButton());
  return pressed == buttons.end() ? rows.back().answer
                                  : rows[std::size_t(pressed - buttons.begin())].answer;
}

std::filesystem::path QtFrontEnd::openFile(const host::FileRequest& request) {
  const Nested nested(*this);
  QStringList filters;
  for (const host::FileFilter& filter : request.filters)
    filters << qtText(filter.description) + " (" + QString::fromStdString(filter.pattern) + ")";
  filters << caption(TextId::AllFiles) + " (*)";
  const QString file =
      QFileDialog::getOpenFileName(windowOf(request.parent), caption(TextId::ChooseFile), QString(),
                                   filters.join(QLatin1String(";;")));
  return std::filesystem::path(file.toStdU16String());
}

void QtFrontEnd::setCursor(host::CursorShape shape) {
  const bool wait = shape == host::CursorShape::wait;
  if (wait == waiting_) return;
  waiting_ = wait;
  if (wait)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void QtFrontEnd::postToMainWindow(const host::PostedMessage& message) {
  QTimer::singleShot(0, &queue_, [this, message] {
    if (postedListener_) postedListener_(message);
  });
}

void QtFrontEnd::dialogChanged(XCBaseDlg& dialog) {
  if (DialogBody* body = bodyOf(dialog)) body->noteChange();
}

}  // namespace editor
