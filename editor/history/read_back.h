#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <deque>
#include <functional>

#include "editor/history/page_subject.h"
#include "workbench/read_back.h"

namespace editor {

/// Reads a section again after a page has sent it, and tells which values the controller took. It
/// waits until nothing else is being exchanged.
class ReadBack : public QObject {
 public:
  /// Both must outlive this; @p isRunning tells whether an exchange is under way.
  ReadBack(workbench::ExchangeRecord& record, std::function<bool()> isRunning)
      : record_(record), isRunning_(std::move(isRunning)) {}

  /// Has the section of a page read, once control is back in the event loop. @p exchange is the one
  /// that wrote it, @p parameters lead to the controller.
  void order(const PageSubject& subject, const XCBasicString& parameters, std::size_t exchange);

  /// Called with the number of the exchange that read it, or that wrote it where what was sent is
  /// not on record, one line, and what a person reads of it.
  std::function<void(std::size_t exchange, const QString& line, const QString& details)> onReport;

  static QString lineOf(const workbench::ReadBackReport& report);
  static QString detailsOf(const workbench::ReadBackReport& report);

 private:
  struct Order {
    std::string written;
    std::string read;
    XCBasicString parameters;
    std::size_t exchange;  // that wrote it
    workbench::KeptDocument sent;
  };
  void plan(int milliseconds);
  void work();
  void perform(const Order& order);

  workbench::ExchangeRecord& record_;
  std::function<bool()> isRunning_;
  std::deque<Order> orders_;
  bool planned_ = false;
};

}  // namespace editor
