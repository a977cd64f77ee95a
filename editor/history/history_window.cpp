#include "editor/history/history_window.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "editor/history/put_report_text.h"
#include "editor/qt_text.h"
#include "workbench/section_name.h"
#include "workbench/section_put.h"

namespace editor {
namespace {

using host::TextId;
using workbench::JournalEntry;

constexpr QSize FirstSize(980, 480);
constexpr int ButtonMargin = 8;  // pixels beside a caption

}  // namespace

HistoryWindow::HistoryWindow(const workbench::SendJournal& journal, const PageSubject& subject,
                             DialogBody& page, QWidget* parent)
    : QDialog(parent),
      subject_(subject),
      page_(page),
      view_(new HistoryView(journal, this)),
      outcome_(new QLabel(this)),
      former_(new QPushButton(caption(TextId::PutFormerBack), this)),
      sent_(new QPushButton(caption(TextId::PutSentIn), this)) {
  setWindowTitle(caption(TextId::HistoryTitle, XCBasicString::FromUtf8(subject.written),
                         XCBasicString::FromUtf8(subject.device.name)));
  setWindowModality(Qt::WindowModal);
  setAttribute(Qt::WA_DeleteOnClose);
  outcome_->setTextFormat(Qt::PlainText);
  outcome_->setWordWrap(true);
  outcome_->hide();
  auto* close = new QPushButton(caption(TextId::Close), this);
  for (QPushButton* button : {former_, sent_, close})
    button->setMinimumWidth(button->sizeHint().width() + 2 * ButtonMargin);
  auto* row = new QHBoxLayout;
  row->addWidget(former_);
  row->addWidget(sent_);
  row->addStretch();
  row->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->addWidget(view_, 1);
  column->addWidget(outcome_);
  column->addLayout(row);
  resize(FirstSize);
  view_->fixSection(subject.written);
  view_->onChosen = [this] { followChoice(); };
  view_->showDevice(subject.device.id);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  connect(former_, &QPushButton::clicked, this, [this] {
    if (const JournalEntry* entry = view_->chosen())
      put(entry->before, workbench::readSectionOf(entry->section));
  });
  connect(sent_, &QPushButton::clicked, this, [this] {
    if (const JournalEntry* entry = view_->chosen()) put(entry->document, entry->section);
  });
  followChoice();
}

QString HistoryWindow::outcome() const {
  return outcome_->text();
}

void HistoryWindow::followChoice() {
  const JournalEntry* entry = view_->chosen();
  former_->setEnabled(entry != nullptr && !entry->before.empty());
  former_->setToolTip(former_->isEnabled() ? QString() : caption(TextId::HistoryNothingReadBefore));
  sent_->setEnabled(entry != nullptr);
}

void HistoryWindow::put(const std::string& xml, const std::string& section) {
  XmlDocument document;
  workbench::PutReport report;
  if (document.Parse(xml))
    if (const XmlDocument::XmlNode* element = workbench::sectionElement(document, section))
      report = workbench::putSection(page_.dialog(), *element);
  page_.noteChange();
  outcome_->setText(putReportText(report));
  outcome_->show();
}

}  // namespace editor
