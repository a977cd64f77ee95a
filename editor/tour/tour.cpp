#include "editor/tour/tour.h"

#include <QtCore/QBuffer>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeView>
#include <stdexcept>
#include <utility>

#include "editor/dialogs/dialog_window.h"
#include "editor/qt_text.h"
#include "editor/renderers/list_renderer.h"
#include "editor/renderers/list_view.h"
#include "editor/renderers/year_renderer.h"
#include "editor/renderers/year_view.h"
#include "editor/tour/covered_passwords.h"
#include "editor/tour/dark_palette.h"
#include "editor/window/configuration_tree.h"
#include "editor/window/device_panel.h"
#include "host/services/files.h"

namespace editor {
namespace {

constexpr int PollMilliseconds = 20;
constexpr int LongestWait = 20'000;

[[noreturn]] void fail(const QString& what) {
  throw std::runtime_error(what.toStdString());
}

void clickAt(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers = {}) {
  const QPointF global = widget.mapToGlobal(QPointF(point));
  QMouseEvent press(QEvent::MouseButtonPress, point, global, Qt::LeftButton, Qt::LeftButton,
                    modifiers);
  QApplication::sendEvent(&widget, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, point, global, Qt::LeftButton, Qt::NoButton,
                      modifiers);
  QApplication::sendEvent(&widget, &release);
}

void sendKey(QWidget& widget, int key, const QString& text = {},
             Qt::KeyboardModifiers modifiers = {}) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(&widget, &press);
  QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
  QApplication::sendEvent(&widget, &release);
}

}  // namespace

void Tour::start(std::vector<Step> steps, std::function<void(const QString&)> ended) {
  steps_ = std::move(steps);
  ended_ = std::move(ended);
  waiting_.start();
  QTimer::singleShot(0, this, [this] { next(); });
}

// The step after is asked for before this one is made: it may not return until a dialog closes.
void Tour::next() {
  const DialogWindow* top = frontEnd_.topWindow();
  const bool isClosing = top != nullptr && top->body().dialog().HasEnded();
  if (exchange_.isRunning() || isClosing) {
    if (waiting_.elapsed() > LongestWait) return ended_("an exchange or a dialog does not end");
    QTimer::singleShot(PollMilliseconds, this, [this] { next(); });
    return;
  }
  waiting_.restart();
  if (at_ == steps_.size()) return ended_({});
  const std::size_t number = at_++;
  QTimer::singleShot(PollMilliseconds, this, [this] { next(); });
  try {
    steps_[number](*this);
  } catch (const std::runtime_error& error) {
    at_ = steps_.size();
    const auto ended = std::exchange(ended_, [](const QString&) {});
    ended(QString("step %1: %2").arg(number + 1).arg(QString::fromUtf8(error.what())));
  }
}

void Tour::require(bool condition, const QString& what) const {
  if (!condition) fail(what);
}

QWidget* Tour::frontWindow() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return &window_;
}

ControlRenderer& Tour::find(const QString& control) const {
  const XCBaseDlg* dialog =
      frontEnd_.topWindow() ? &frontEnd_.topWindow()->body().dialog() : window_.panel().options();
  require(dialog != nullptr, "no dialog is open for \"" + control + "\"");
  bool isNumber = false;
  const int number = control.toInt(&isNumber);
  const host::Control* found =
      isNumber ? dialog->FindControl(number) : dialog->FindControl(control.toStdString());
  const DialogBody* body = frontEnd_.bodyOf(*dialog);
  ControlRenderer* renderer = found && body ? body->renderer(found->id()) : nullptr;
  if (renderer == nullptr)
    fail("\"" + QString::fromStdString(dialog->ClassName()) + "\" has no control \"" + control +
         "\"");
  if (!found->isEnabled() || !found->isVisible())
    fail("the control \"" + control + "\" can't be used now");
  return *renderer;
}

void Tour::click(const QString& control) {
  QWidget& widget = find(control).widget();
  clickAt(widget, QPoint(widget.height() / 2, widget.height() / 2));
}

void Tour::press(host::TextId caption) {
  const QString wanted = editor::caption(caption);
  for (QPushButton* button : frontWindow()->findChildren<QPushButton*>()) {
    if (button->text() != wanted || !button->isVisible()) continue;
    require(button->isEnabled(), "the button \"" + wanted + "\" can't be pressed now");
    return clickAt(*button, button->rect().center());
  }
  fail("there is no button \"" + wanted + "\"");
}

void Tour::showTab(host::TextId caption) {
  const QString wanted = editor::caption(caption);
  QTabWidget& tabs = window_.tabs();
  for (int tab = 0; tab < tabs.count(); ++tab)
    if (tabs.tabText(tab) == wanted) return tabs.setCurrentIndex(tab);
  fail("there is no tab \"" + wanted + "\"");
}

void Tour::type(const QString& control, const QString& text) {
  QWidget* widget = find(control).focusWidget();
  widget->setFocus();
  sendKey(*widget, Qt::Key_A, {}, Qt::ControlModifier);
  for (const QChar c : text) sendKey(*widget, 0, c);
}

void Tour::choose(const QString& control, const QString& item) {
  auto* box = dynamic_cast<QComboBox*>(find(control).focusWidget());
  require(box != nullptr, "\"" + control + "\" is no drop-down list");
  const int wanted = box->findText(item);
  require(wanted >= 0, "\"" + control + "\" has no entry \"" + item + "\"");
  box->setFocus();
  const int key = wanted > box->currentIndex() ? Qt::Key_Down : Qt::Key_Up;
  for (int most = box->count(); box->currentIndex() != wanted && most > 0; --most)
    sendKey(*box, key);
}

ListRenderer& Tour::findList(const QString& control) const {
  auto* list = dynamic_cast<ListRenderer*>(&find(control));
  if (list == nullptr) fail("\"" + control + "\" is no list");
  return *list;
}

int Tour::rowCount(const QString& control) const {
  return findList(control).view().model()->rowCount();
}

void Tour::selectRows(const QString& control, const std::vector<int>& rows) {
  ListView& view = findList(control).view();
  Qt::KeyboardModifiers modifiers;
  for (const int row : rows) {
    const QModelIndex index = view.model()->index(row, 0);
    require(index.isValid(), QString("\"%1\" has no row %2").arg(control).arg(row));
    view.scrollTo(index);
    clickAt(*view.viewport(), view.visualRect(index).center(), modifiers);
    modifiers = Qt::ControlModifier;
  }
}

void Tour::chooseFirstDevice() {
  const auto devices = workbench::DeviceCatalogue::devices();
  require(!devices.empty(), "the configuration has no device");
  window_.tree().chooseDevice(devices.front()->Value("id"));
}

void Tour::selectLamps(const std::vector<int>& rows) {
  ConfigurationTree& tree = window_.tree();
  require(tree.chosenDevice() != nullptr, "no device is chosen in the tree");
  const QModelIndex device = tree.model().indexOfDevice(tree.chosenDevice()->Value("id"));
  tree.view().expand(device);
  Qt::KeyboardModifiers modifiers;
  for (const int row : rows) {
    const QModelIndex index = tree.model().index(row, 0, device);
    require(index.isValid(), QString("the device has no child device %1").arg(row));
    tree.view().scrollTo(index);
    clickAt(*tree.view().viewport(), tree.view().visualRect(index).center(), modifiers);
    modifiers = Qt::ControlModifier;
  }
}

void Tour::paintDays(const QString& control, const std::vector<XCDateTime>& days) {
  auto* year = dynamic_cast<YearRenderer*>(&find(control));
  require(year != nullptr, "\"" + control + "\" is no year view");
  for (const XCDateTime& day : days) {
    if (day.Year() != year->view().grid().year()) year->view().onYear(day.Year());
    clickAt(year->view(), year->view().grid().cellOf(day).center());
  }
}

void Tour::requireSidePane() const {
  const DialogWindow* top = frontEnd_.topWindow();
  require(top != nullptr && top->body().sidePane() != nullptr, "the dialog shows no side pane");
}

void Tour::darkPicture(const QString& name) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(darkPalette());
  picture(name);
  QApplication::setPalette(before);
}

void Tour::requireReasons() const {
  const DialogWindow* top = frontEnd_.topWindow();
  if (top == nullptr) return;
  for (const auto& control : top->body().dialog().Controls()) {
    if (control->kind() != host::ControlKind::button || control->isEnabled()) continue;
    const bool told = !top->body().renderer(control->id())->widget().toolTip().isEmpty();
    require(told || !control->isVisible(),
            "the button \"" + QString::fromStdString(control->name()) + "\" tells no reason");
  }
}

void Tour::picture(const QString& name) {
  requireReasons();
  const DialogWindow* top = frontEnd_.topWindow();
  const CoveredPasswords covered(top == nullptr ? nullptr : &top->body());
  QCoreApplication::sendPostedEvents();
  const QString file = QString("%1-%2.png").arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
  QBuffer png;
  std::string cause;
  const std::filesystem::path path = folder_ / file.toStdU16String();
  const bool isSaved = png.open(QBuffer::WriteOnly) && frontWindow()->grab().save(&png, "PNG") &&
                       host::replaceWhole(path, png.data().toStdString(), cause);
  require(isSaved, "the picture " + QString::fromStdU16String(path.u16string()) +
                       " can't be written: " + QString::fromStdString(cause));
}

}  // namespace editor
