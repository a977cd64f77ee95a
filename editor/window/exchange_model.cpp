#include "editor/window/exchange_model.h"

#include <QtGui/QColor>
#include <array>

#include "editor/qt_text.h"
#include "host/time/date_time.h"
#include "host/xml/xml_document.h"

namespace editor {
namespace {

using host::TextId;
using workbench::ExchangeEntry;

enum Column { timeColumn, sectionColumn, commandColumn, resultColumn };
constexpr std::array Captions = {TextId::ExchangeTime, TextId::ExchangeSection,
                                 TextId::ExchangeCommand, TextId::ExchangeResult};

// A person reads the beginning of a document; a table of many thousand nodes would stop the window.
constexpr std::size_t MostCharacters = 400'000;

QString indented(const std::string& xml) {
  if (xml.empty()) return {};
  XmlDocument document;
  std::string text = document.Parse(xml) ? document.ToString(XmlDocument::Layout::indented) : xml;
  const bool cut = text.size() > MostCharacters;
  if (cut) text.resize(MostCharacters);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())) +
         (cut ? QStringLiteral("\n…\n") : QString());
}

QString titled(TextId title, const std::string& xml) {
  const QString text = indented(xml);
  return text.isEmpty() ? QString() : "── " + caption(title) + " ──\n" + text.trimmed() + "\n\n";
}

}  // namespace

QString ExchangeModel::documentsOf(const ExchangeEntry& entry) {
  QString text;
  if (!entry.error.empty()) text += QString::fromStdString(entry.error) + "\n\n";
  return text + titled(TextId::ExchangeSent, entry.request) +
         titled(TextId::ExchangeReceived, entry.reply);
}

QString ExchangeModel::sectionOf(const ExchangeEntry& entry) {
  // The section is the first element in the root: no need to read a long document for it.
  const QString head =
      QString::fromUtf8(entry.request.data(),
                        static_cast<qsizetype>(std::min<std::size_t>(entry.request.size(), 512)));
  qsizetype at = head.indexOf("<?xml") == 0 ? head.indexOf("?>") + 2 : 0;
  at = head.indexOf('<', head.indexOf('<', at) + 1);
  if (at < 0 || head.mid(at + 1, 1) == "/") return {};
  qsizetype end = at + 1;
  while (end < head.size() && head[end].isLetterOrNumber()) ++end;
  return head.mid(at + 1, end - at - 1);
}

void ExchangeModel::append(const ExchangeEntry& entry) {
  beginInsertRows({}, 0, 0);
  const XCDateTime now = XCDateTime::LTC();
  times_ << qtText(
      XCBasicString::Format(u"%02d:%02d:%02d", now.Hour(), now.Minute(), now.Second()));
  sections_ << sectionOf(entry);
  endInsertRows();
}

void ExchangeModel::retranslate() {
  beginResetModel();
  endResetModel();
}

const ExchangeEntry& ExchangeModel::entryAt(int row) const {
  return record_.entries()[static_cast<std::size_t>(times_.size() - 1 - row)];
}

int ExchangeModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(times_.size());
}

int ExchangeModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(Captions.size());
}

QVariant ExchangeModel::data(const QModelIndex& index, int role) const {
  const ExchangeEntry& entry = entryAt(index.row());
  const qsizetype place = times_.size() - 1 - index.row();
  if (role == Qt::ToolTipRole && !entry.error.empty()) return QString::fromStdString(entry.error);
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case timeColumn:
      return times_[place];
    case sectionColumn:
      return sections_[place];
    case commandColumn:
      return entry.command;
    case resultColumn:
      return entry.ok ? caption(TextId::ExchangeSucceeded)
                      : QString::fromStdString(entry.error).section('\n', 0, 0);
    default:
      return {};
  }
}

QVariant ExchangeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return caption(Captions[static_cast<std::size_t>(section)]);
}

}  // namespace editor
