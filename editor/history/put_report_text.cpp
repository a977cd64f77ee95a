#include "editor/history/put_report_text.h"

#include <QtCore/QStringList>

#include "editor/qt_text.h"

namespace editor {
namespace {

using host::TextId;

// Of what the page did not take, as many lines as a person reads.
constexpr qsizetype MostLines = 8;

}  // namespace

QString putReportText(const workbench::PutReport& report) {
  if (report.known() == 0) return caption(TextId::NoValuesForPage);
  QString text =
      caption(TextId::ValuesPut, static_cast<int>(report.put), static_cast<int>(report.same));
  if (report.refused.empty()) return text;
  QStringList lines;
  for (const std::string& line : report.refused) {
    if (lines.size() == MostLines) {
      lines << QStringLiteral("…");
      break;
    }
    lines << QString::fromStdString(line);
  }
  const QString refused = lines.join('\n');
  return text + "\n" + caption(TextId::ValuesRefused, hostText(refused));
}

}  // namespace editor
