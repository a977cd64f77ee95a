#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <filesystem>
#include <functional>
#include <vector>

#include "editor/window/main_window.h"

namespace editor {

class ControlRenderer;
class ListRenderer;

/// Walks through the dialogs as a person would, with mouse and key events on the real widgets, and
/// takes pictures on the way. One step after the other is made in whatever event loop runs: a step
/// that opens a dialog ends when that dialog closes, the steps in between run inside of it.
class Tour : public QObject {
 public:
  /// One step. It throws std::runtime_error with a text when it can't be done.
  using Step = std::function<void(Tour&)>;

  Tour(MainWindow& window, QtFrontEnd& frontEnd, ExchangeWindow& exchange,
       std::filesystem::path folder)
      : window_(window), frontEnd_(frontEnd), exchange_(exchange), folder_(std::move(folder)) {}

  /// Makes the steps, then calls @p ended with an empty text, or at the first step that can't be
  /// done with what was wrong.
  void start(std::vector<Step> steps, std::function<void(const QString& failure)> ended);

  // What steps do. A control is found by its name or its number in the dialog in front, or, when
  // there is none, in the options panel of the main window.

  MainWindow& window() const { return window_; }
  void click(const QString& control);
  /// Clicks a button of the editor's own in the window in front, by its caption.
  void press(host::TextId caption);
  /// Shows a tab of the main window's lower part, by its caption.
  void showTab(host::TextId caption);
  void type(const QString& control, const QString& text);
  void choose(const QString& control, const QString& item);
  /// Clicks rows of a list, each with Ctrl but the first.
  void selectRows(const QString& control, const std::vector<int>& rows);
  int rowCount(const QString& control) const;
  /// Clicks child devices of the chosen device in the tree, each with Ctrl but the first.
  void selectLamps(const std::vector<int>& rows);
  void chooseFirstDevice();
  void paintDays(const QString& control, const std::vector<XCDateTime>& days);
  /// The dialog in front shows a pane of the editor's own.
  void requireSidePane() const;
  /// Saves a picture of the window in front as the next number and @p name. A button in it that
  /// can't be pressed must tell why.
  void picture(const QString& name);
  /// The same on a dark desktop.
  void darkPicture(const QString& name);
  void require(bool condition, const QString& what) const;

 private:
  void next();
  ControlRenderer& find(const QString& control) const;
  ListRenderer& findList(const QString& control) const;
  QWidget* frontWindow() const;
  void requireReasons() const;

  MainWindow& window_;
  QtFrontEnd& frontEnd_;
  ExchangeWindow& exchange_;
  std::filesystem::path folder_;
  std::vector<Step> steps_;
  std::function<void(const QString&)> ended_;
  QElapsedTimer waiting_;
  std::size_t at_ = 0;
  int pictures_ = 0;
};

}  // namespace editor
