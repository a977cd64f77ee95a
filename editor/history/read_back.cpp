#include "editor/history/read_back.h"

#include <QtCore/QTimer>

#include "editor/qt_text.h"
#include "workbench/page_values.h"
#include "workbench/section_name.h"

namespace editor {
namespace {

using host::TextId;
using workbench::ReadBackReport;

constexpr int ReadConfiguration = 1;
constexpr int LookAgain = 50;  // milliseconds, while another exchange is under way
// As many differences as a person reads.
constexpr std::size_t MostLines = 200;

// "20250315100000W" as the host's dialogs write dates; what has another form stays as it is.
XCBasicString momentOf(const std::string& stamp) {
  if (stamp.size() < 14) return XCBasicString::FromUtf8(stamp);
  const auto part = [&](std::size_t at, std::size_t size) { return stamp.substr(at, size); };
  return XCBasicString::FromUtf8(part(6, 2) + "/" + part(4, 2) + "/" + part(0, 4) + " " +
                                 part(8, 2) + ":" + part(10, 2) + ":" + part(12, 2));
}

}  // namespace

void ReadBack::order(const PageSubject& subject, const XCBasicString& parameters,
                     std::size_t exchange) {
  const std::string read = workbench::readSectionOf(subject.written);
  if (read.empty()) return;
  // Taken along: the record may drop it meanwhile.
  orders_.push_back(
      {subject.written, read, parameters, exchange, record_.entries()[exchange - 1].request});
  plan(0);
}

void ReadBack::plan(int milliseconds) {
  if (planned_) return;
  planned_ = true;
  QTimer::singleShot(milliseconds, this, [this] { work(); });
}

void ReadBack::work() {
  planned_ = false;
  if (orders_.empty()) return;
  if (isRunning_()) return plan(LookAgain);
  const Order order = std::move(orders_.front());
  orders_.pop_front();
  perform(order);
  if (!orders_.empty()) plan(0);
}

void ReadBack::perform(const Order& order) {
  if (!order.sent.isKept()) {
    const QString line = caption(TextId::ReadBackImpossible);
    if (onReport) onReport(order.exchange, line, line + "\n");
    return;
  }
  XmlDocument request;
  request.Create("deviceCfg").NewChild(host::XmlName(order.read));
  const host::ExchangeReply reply =
      record_.exchange({ReadConfiguration, host::CommandKind::get, order.parameters, &request});
  const std::size_t number = record_.entries().size();
  if (reply.status != host::ExchangeReply::Status::succeeded) return;
  const XmlDocument sentDocument = order.sent.masked();
  const auto* sent = workbench::sectionElement(sentDocument, order.written);
  const auto* read = workbench::sectionElement(reply.document, order.read);
  if (sent == nullptr) return;
  XmlDocument nothing(order.read.c_str());
  const ReadBackReport report = workbench::compareReadBack(*sent, read ? *read : *nothing.Root());
  if (onReport) onReport(number, lineOf(report), detailsOf(report));
}

QString ReadBack::lineOf(const ReadBackReport& report) {
  if (report.notTaken.empty())
    return caption(TextId::ReadBackTaken, static_cast<int>(report.values));
  return caption(TextId::ReadBackNotTaken, static_cast<int>(report.notTaken.size()),
                 static_cast<int>(report.values));
}

QString ReadBack::detailsOf(const ReadBackReport& report) {
  QString text = lineOf(report) + "\n";
  if (!report.notTaken.empty() && !report.activation.empty())
    text += caption(TextId::ReadBackPending, momentOf(report.activation)) + "\n";
  std::size_t lines = 0;
  for (const ReadBackReport::Difference& difference : report.notTaken) {
    if (lines++ == MostLines) return text + QStringLiteral("…\n");
    text +=
        caption(TextId::ReadBackRow, XCBasicString::FromUtf8(difference.what),
                XCBasicString::FromUtf8(difference.sent), XCBasicString::FromUtf8(difference.now)) +
        "\n";
  }
  return text;
}

}  // namespace editor
