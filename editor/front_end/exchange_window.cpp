#include "editor/front_end/exchange_window.h"

#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProgressDialog>

#include "editor/qt_text.h"

namespace editor {
namespace {

constexpr int LeastWidth = 360;
constexpr int FirmwareCommand = 52;
// From this size on the sending takes long enough for a bar that fills.
constexpr std::uint64_t LargeBody = 256U * 1024;

bool isInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::Drop:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

}  // namespace

ExchangeWindow::~ExchangeWindow() {
  delete window_;
}

void ExchangeWindow::started(const host::ExchangeRequest& request) {
  running_ = true;
  cancelled_ = false;
  firmware_ = request.command == FirmwareCommand;
  sent_ = toSend_ = 0;
  since_.start();
  QApplication::instance()->installEventFilter(this);
}

void ExchangeWindow::moved(std::uint64_t sent, std::uint64_t toSend, std::uint64_t) {
  sent_ = sent;
  toSend_ = toSend;
}

bool ExchangeWindow::pump() {
  if (window_ == nullptr && since_.elapsed() >= delay_) showWindow();
  if (window_ != nullptr && toSend_ >= LargeBody) {
    window_->setMaximum(100);
    window_->setValue(static_cast<int>(std::min<std::uint64_t>(sent_ * 100 / toSend_, 99)));
  }
  QCoreApplication::processEvents();
  return !cancelled_;
}

void ExchangeWindow::finished() {
  running_ = false;
  QApplication::instance()->removeEventFilter(this);
  if (window_ == nullptr) return;
  delete window_;
  QApplication::restoreOverrideCursor();
}

void ExchangeWindow::showWindow() {
  // Who may press Cancel does not wait; the wait cursor of the work comes back behind it.
  QApplication::setOverrideCursor(Qt::ArrowCursor);
  window_ = new QProgressDialog(QApplication::activeWindow());
  window_->setWindowTitle(caption(host::TextId::EditorTitle));
  window_->setLabelText(
      caption(firmware_ ? host::TextId::ProgressFirmware : host::TextId::ProgressExchange));
  window_->setCancelButtonText(caption(host::TextId::Cancel));
  window_->setRange(0, 0);
  window_->setAutoClose(false);
  window_->setAutoReset(false);
  window_->setMinimumWidth(LeastWidth);
  window_->setWindowModality(Qt::ApplicationModal);
  connect(window_, &QProgressDialog::canceled, this, [this] { cancelled_ = true; });
  window_->show();
}

bool ExchangeWindow::belongsToWindow(const QObject* object) const {
  if (window_ == nullptr) return false;
  if (object == window_->windowHandle()) return true;
  const auto* widget = dynamic_cast<const QWidget*>(object);
  return widget != nullptr && (widget == window_ || window_->isAncestorOf(widget));
}

// Dropped, not delayed: a second press of OK is no second command.
bool ExchangeWindow::eventFilter(QObject* watched, QEvent* event) {
  if (!running_ || !isInput(event->type()) || belongsToWindow(watched)) return false;
  if (!watched->isWidgetType() && !watched->isWindowType()) return false;
  event->ignore();
  return true;
}

}  // namespace editor
