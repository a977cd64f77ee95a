#include "editor/window/device_panel.h"

#include <QtGui/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

#include "editor/qt_text.h"
#include "host/services/drivers.h"

namespace editor {
namespace {

using host::TextId;

constexpr int WidestPanel = 380;
constexpr qreal TitleScale = 1.5;

// "Caption: value" lines, without those that have no value.
QString detailsOf(const XmlDocument::XmlNode& device) {
  QStringList lines;
  const auto add = [&lines](const QString& name, const QString& value) {
    if (!value.isEmpty()) lines << name + ": " + value;
  };
  const QString description = qtText(device.Value("description"));
  if (!description.isEmpty()) lines << description;
  QString address = qtText(device.Value("address"));
  const QString port = qtText(device.Value("socket"));
  if (!address.isEmpty() && !port.isEmpty()) address += ":" + port;
  add(caption(TextId::Address), address);
  add(caption(TextId::ControllerIdentifier), qtText(device.Value("identifier")));
  add(caption(TextId::Calendar), qtText(device.Value("calendar")));
  if (const XmlDocument::XmlNode* children = device.Node("childDevices"))
    lines << caption(TextId::ChildDevices, children->ChildCount());
  return lines.join('\n');
}

}  // namespace

DevicePanel::DevicePanel(QWidget* parent)
    : QWidget(parent),
      title_(new QLabel(this)),
      details_(new QLabel(this)),
      container_(new QWidget(this)),
      actionRow_(new QWidget(this)),
      wnd_(*container_) {
  auto* column = new QVBoxLayout(this);
  QFont large = title_->font();
  large.setPointSizeF(large.pointSizeF() * TitleScale);
  title_->setFont(large);
  for (QLabel* label : {title_, details_}) {
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
  }
  auto* buttons = new QVBoxLayout(container_);
  buttons->setContentsMargins(0, 0, 0, 0);
  container_->setMaximumWidth(WidestPanel);
  auto* row = new QHBoxLayout(actionRow_);
  row->setContentsMargins(0, 0, 0, 0);
  column->addWidget(title_);
  column->addWidget(details_);
  column->addSpacing(12);
  column->addWidget(container_);
  column->addWidget(actionRow_);
  column->addStretch();
}

DevicePanel::~DevicePanel() = default;

void DevicePanel::showDevice(XmlDocument::XmlNode* device, XCDriver* driver) {
  if (device == nullptr) return showText({}, {});
  showActions({});
  title_->setText(qtText(device->Value("name")));
  details_->setText(detailsOf(*device));
  if (driver == driver_ && options_ != nullptr && !options_->HasEnded()) return;
  driver_ = driver;
  makeOptions();
}

// Made anew only when they are others: one of the present ones may be running.
void DevicePanel::showActions(const QList<QAction*>& actions) {
  // Not by ==, which looks at the memory of an empty list.
  const QList<QAction*> present = actionRow_->actions();
  if (std::equal(present.begin(), present.end(), actions.begin(), actions.end())) return;
  for (QAction* action : present) actionRow_->removeAction(action);
  qDeleteAll(actionRow_->findChildren<QToolButton*>());
  auto* row = static_cast<QHBoxLayout*>(actionRow_->layout());
  while (row->count() > 0) delete row->takeAt(0);
  for (QAction* action : actions) {
    actionRow_->addAction(action);
    auto* button = new QToolButton(actionRow_);
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::StrongFocus);
    row->addWidget(button);
  }
  row->addStretch();
}

void DevicePanel::showText(const QString& title, const QString& text,
                           const QList<QAction*>& actions) {
  showActions(actions);
  options_.reset();
  driver_ = nullptr;
  title_->setText(title);
  details_->setText(text);
}

void DevicePanel::rebuild() {
  if (driver_ != nullptr) makeOptions();
}

void DevicePanel::makeOptions() {
  options_.reset();
  if (driver_ == nullptr) return;
  const host::DriverRegistration* registration = host::findRegistration(driver_->Type());
  if (registration != nullptr && registration->createChildOptions != nullptr)
    options_.reset(registration->createChildOptions(&wnd_, driver_));
}

}  // namespace editor
