#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QProgressDialog>

#include "workbench/exchange_progress.h"

namespace editor {

/// What a person sees of an exchange: nothing at first, then a window with Cancel. Windows stay
/// alive meanwhile, but keys and clicks reach only the one with Cancel.
class ExchangeWindow : public QObject, public workbench::ExchangeProgress {
 public:
  static constexpr int DefaultDelay = 300;

  /// The window appears when an exchange lasts longer than @p delay milliseconds.
  explicit ExchangeWindow(int delay = DefaultDelay) : delay_(delay) {}
  ~ExchangeWindow() override;

  void started(const host::ExchangeRequest& request) override;
  void moved(std::uint64_t sent, std::uint64_t toSend, std::uint64_t received) override;
  bool pump() override;
  void finished() override;

  bool isRunning() const { return running_; }
  /// The window with Cancel; null while it is not shown.
  QProgressDialog* window() const { return window_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showWindow();
  bool belongsToWindow(const QObject* object) const;

  const int delay_;
  QElapsedTimer since_;
  QPointer<QProgressDialog> window_;
  bool running_ = false;
  bool cancelled_ = false;
  bool firmware_ = false;
  std::uint64_t sent_ = 0;
  std::uint64_t toSend_ = 0;
};

}  // namespace editor
