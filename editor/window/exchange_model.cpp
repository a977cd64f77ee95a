#include "editor/window/exchange_model.h"

#include <array>
#include <utility>

#include "editor/qt_text.h"
#include "editor/window/document_text.h"
#include "host/time/date_time.h"

namespace editor {
namespace {

using host::TextId;
using workbench::ExchangeEntry;

enum Column { timeColumn, sectionColumn, commandColumn, resultColumn };
constexpr std::array Captions = {TextId::ExchangeTime, TextId::ExchangeSection,
                                 TextId::ExchangeCommand, TextId::ExchangeResult};

// A person reads the whole of it beside the list.
constexpr qsizetype LongestTip = 1'000;

QString titled(TextId title, const workbench::KeptDocument& document) {
  const QString text = documentText(document);
  return text.isEmpty() ? QString() : "── " + caption(title) + " ──\n" + text.trimmed() + "\n\n";
}

}  // namespace

QString ExchangeModel::documentsOf(const ExchangeEntry& entry) {
  QString text;
  if (!entry.error.empty()) text += QString::fromStdString(entry.error) + "\n\n";
  return text + titled(TextId::ExchangeSent, entry.request) +
         titled(TextId::ExchangeReceived, entry.reply);
}

// All that can fail for want of memory is done before the views hear of the row.
void ExchangeModel::append() {
  const XCDateTime now = XCDateTime::LTC();
  QString time =
      qtText(XCBasicString::Format(u"%02d:%02d:%02d", now.Hour(), now.Minute(), now.Second()));
  if (times_.size() == times_.capacity()) times_.reserve(2 * times_.capacity() + 1);
  beginInsertRows({}, 0, 0);
  times_.push_back(std::move(time));
  endInsertRows();
}

void ExchangeModel::catchUp() {
  while (times_.size() < record_.entries().size()) append();
}

void ExchangeModel::retranslate() {
  beginResetModel();
  endResetModel();
}

void ExchangeModel::remark(std::size_t exchange, const QString& line, const QString& details) {
  if (exchange == 0 || exchange > times_.size()) return;
  remarks_[exchange] = {line, details};
  const int row = rowCount() - static_cast<int>(exchange);
  emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

QString ExchangeModel::shownTextOf(int row) const {
  const ExchangeEntry& entry = entryAt(row);
  const QString text = documentsOf(entry);
  const auto remark = remarks_.constFind(entry.number);
  return remark == remarks_.constEnd() ? text : remark->details + "\n" + text;
}

const ExchangeEntry& ExchangeModel::entryAt(int row) const {
  return record_.entries()[placeOf(row)];
}

int ExchangeModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(times_.size());
}

int ExchangeModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(Captions.size());
}

QVariant ExchangeModel::data(const QModelIndex& index, int role) const {
  const ExchangeEntry& entry = entryAt(index.row());
  if (role == Qt::ToolTipRole && !entry.error.empty()) return QString::fromStdString(entry.error);
  if (role == Qt::ToolTipRole && remarks_.contains(entry.number))
    return remarks_.value(entry.number).details.left(LongestTip).trimmed();
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case timeColumn:
      return times_[placeOf(index.row())];
    case sectionColumn:
      return QString::fromStdString(entry.section);
    case commandColumn:
      return entry.command;
    case resultColumn:
      if (remarks_.contains(entry.number)) return remarks_.value(entry.number).line;
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
