#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <cstdio>

#include "editor/front_end/exchange_window.h"
#include "editor/front_end/qt_front_end.h"
#include "editor/options.h"
#include "editor/tour/journey.h"
#include "editor/tour/tour_screen.h"
#include "editor/window/main_window.h"
#include "editor/window/start.h"
#include "host/services/open_file.h"
#include "host/services/setup.h"
#include "workbench/process_guard.h"

namespace {

using namespace editor;

constexpr int StartFailed = 2;
constexpr int TourFailed = 1;

int fail(const std::string& error) {
  std::fprintf(stderr, "lamp-editor: %s\n", error.c_str());
  return StartFailed;
}

// The tour goes to this controller whatever address the configuration gives its first device.
void setTourAddress(const std::string& address) {
  const auto devices = workbench::DeviceCatalogue::devices();
  if (address.empty() || devices.empty()) return;
  const std::size_t colon = address.rfind(':');
  devices.front()->SetNarrowValue("address", address.substr(0, colon));
  devices.front()->SetNarrowValue("socket", address.substr(colon + 1));
}

bool groupsLamps() {
  const auto devices = workbench::DeviceCatalogue::devices();
  return !devices.empty() && canGroupLamps(*devices.front());
}

void printExchanges(const workbench::ExchangeRecord& record) {
  for (const workbench::ExchangeEntry& entry : record.entries()) {
    std::printf("%s command %d: %s\n", entry.kind == host::CommandKind::get ? "read" : "write",
                entry.command, entry.ok ? "done" : entry.error.c_str());
    const std::string sent = entry.request.text();
    const std::string received = entry.reply.text();
    if (!sent.empty()) std::printf("  sent     %s\n", sent.c_str());
    if (!received.empty()) std::printf("  received %s\n", received.c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!workbench::guardProcess()) return StartFailed;
  QCoreApplication::setApplicationName("lamp-editor");
  QStringList arguments;
  for (int at = 1; at < argc; ++at) arguments << QString::fromLocal8Bit(argv[at]);
  if (arguments.contains("--help")) {
    std::fputs(qPrintable(helpText()), stdout);
    return 0;
  }
  Options options;
  QString wrong;
  if (!readOptions(arguments, options, wrong))
    return fail(wrong.toStdString() + "\nTry lamp-editor --help.");
  if (!options.tour.empty()) provideTourScreen();
  // Qt has an option of its own called "plugin" and must not see ours.
  int qtArguments = 1;
  const QApplication application(qtArguments, argv);

  const auto paths = workbench::ProgramPaths::ofThisProgram();
  std::string ignored;  // a folder that can't be made is told by the store
  host::makeFolder(options.workspace.configuration, ignored);
  std::string unreadSettings;
  EditorPreferences preferences =
      EditorPreferences::load(options.workspace.configuration, unreadSettings);
  if (options.workspace.language.empty())
    options.workspace.language = preferences.language;
  else
    preferences.language = options.workspace.language;
  options.workspace.verifyNew = preferences.verifyNew;
  options.workspace.verifyExisting = preferences.verifyExisting;

  QtFrontEnd frontEnd;
  ExchangeWindow exchange;
  workbench::Workspace workspace(paths, options.workspace);
  std::string cause;
  // Nobody answers a question on a tour.
  const bool isOpen = options.tour.empty() ? openAsking(workspace, frontEnd, cause)
                                           : workspace.open(frontEnd, cause);
  if (!isOpen) return fail(cause);
  workspace.channel().setProgress(&exchange);
  setTourAddress(options.tourAddress);

  MainWindow window(workspace, frontEnd, exchange, preferences, paths.texts);
  window.show();
  if (!unreadSettings.empty()) window.tellUnreadSettings(unreadSettings);
  if (options.tour.empty()) return QApplication::exec();

  if (std::string why; !host::makeFolder(options.tour, why)) return fail(why);
  Tour tour(window, frontEnd, exchange, options.tour);
  int status = 0;
  tour.start(journey(groupsLamps(), workspace.log() != nullptr), [&](const QString& failure) {
    if (!failure.isEmpty()) {
      std::fprintf(stderr, "lamp-editor: %s\n", qPrintable(failure));
      status = TourFailed;
    }
    printExchanges(workspace.record());
    std::fflush(stdout);
    QApplication::exit(status);
  });
  QApplication::exec();
  return status;
}
