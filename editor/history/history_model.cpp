#include "editor/history/history_model.h"

#include <QtCore/QDateTime>
#include <array>

#include "editor/qt_text.h"
#include "editor/window/document_text.h"
#include "workbench/page_values.h"
#include "workbench/read_back.h"
#include "workbench/section_name.h"

namespace editor {
namespace {

using host::TextId;
using workbench::JournalEntry;

constexpr std::array Captions = {TextId::ExchangeTime, TextId::HistoryUser, TextId::HistoryDevice,
                                 TextId::ExchangeSection, TextId::ExchangeResult};

QString resultOf(const JournalEntry& entry) {
  if (!entry.ok) return QString::fromStdString(entry.error).section('\n', 0, 0);
  return caption(TextId::ExchangeSucceeded) + ", " +
         caption(TextId::HistoryMilliseconds, static_cast<int>(entry.milliseconds));
}

// A value a line, as many as a person reads.
QString changesOf(const JournalEntry& entry) {
  constexpr std::size_t MostLines = 200;
  XmlDocument sent;
  XmlDocument before;
  if (entry.before.empty() || !sent.Parse(entry.document) || !before.Parse(entry.before)) return {};
  const auto* now = workbench::sectionElement(sent, entry.section);
  const auto* then = workbench::sectionElement(before, workbench::readSectionOf(entry.section));
  if (now == nullptr || then == nullptr) return {};
  QString text;
  std::size_t lines = 0;
  for (const auto& change : workbench::compareReadBack(*now, *then).notTaken) {
    if (lines++ == MostLines) return text + QStringLiteral("…\n");
    text += caption(TextId::HistoryChange, XCBasicString::FromUtf8(change.what),
                    XCBasicString::FromUtf8(change.now), XCBasicString::FromUtf8(change.sent)) +
            "\n";
  }
  return text;
}

}  // namespace

void HistoryModel::show(std::vector<JournalEntry> entries) {
  beginResetModel();
  entries_ = std::move(entries);
  endResetModel();
}

void HistoryModel::retranslate() {
  beginResetModel();
  endResetModel();
}

QString HistoryModel::momentOf(const std::string& when) {
  const QDateTime moment = QDateTime::fromString(QString::fromStdString(when), Qt::ISODateWithMs);
  return moment.isValid() ? moment.toLocalTime().toString("dd/MM/yyyy HH:mm:ss")
                          : QString::fromStdString(when);
}

QString HistoryModel::beforeText(const JournalEntry& entry) {
  if (entry.before.empty()) return caption(TextId::HistoryNothingReadBefore);
  return sectionText(entry.before, workbench::readSectionOf(entry.section));
}

QString HistoryModel::sentText(const JournalEntry& entry) {
  QString text;
  if (!entry.error.empty()) text += QString::fromStdString(entry.error) + "\n\n";
  if (entry.upload)
    text += caption(TextId::HistoryUpload, XCBasicString::FromUtf8(entry.upload->name),
                    XCBasicString::FromUtf8(std::to_string(entry.upload->bytes)),
                    XCBasicString::FromUtf8(entry.upload->sha256)) +
            "\n\n";
  if (const QString changes = changesOf(entry); !changes.isEmpty()) text += changes + "\n";
  return text + sectionText(entry.document, entry.section);
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int HistoryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(Captions.size());
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
  const JournalEntry& entry = entryAt(index.row());
  if (role == Qt::ToolTipRole && !entry.error.empty()) return QString::fromStdString(entry.error);
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case timeColumn:
      return momentOf(entry.when);
    case userColumn:
      return QString::fromStdString(entry.who);
    case deviceColumn:
      return QString::fromStdString(entry.deviceName.empty() ? entry.address : entry.deviceName);
    case sectionColumn:
      return QString::fromStdString(entry.section);
    case resultColumn:
      return resultOf(entry);
    default:
      return {};
  }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return caption(Captions[static_cast<std::size_t>(section)]);
}

}  // namespace editor
