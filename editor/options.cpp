#include "editor/options.h"

#include <QtCore/QStandardPaths>

#include "workbench/state_folder.h"

namespace editor {
namespace {

using Setter = bool (*)(const QString& value, Options& options);

struct Option {
  const char* name;
  const char* value;  // what its value looks like, for messages and the help
  const char* meaning;
  Setter set;
};

std::filesystem::path pathOf(const QString& text) {
  return text.toStdU16String();
}

constexpr Option All[] = {
    {"--config", "FOLDER", "folder of the configuration (the person's own settings folder)",
     [](const QString& value, Options& options) {
       options.workspace.configuration = pathOf(value);
       return !value.isEmpty();
     }},
    {"--plugin", "FILE", "plug-in to load (the one that belongs to the program)",
     [](const QString& value, Options& options) {
       options.workspace.plugin = pathOf(value);
       return !value.isEmpty();
     }},
    {"--state", "FOLDER", "folder of what was sent and what was typed (the person's own)",
     [](const QString& value, Options& options) {
       options.workspace.state = pathOf(value);
       return !value.isEmpty();
     }},
    {"--language", "en|es", "language of the texts (the one chosen last)",
     [](const QString& value, Options& options) {
       options.workspace.language = value.toStdString();
       return !value.isEmpty();
     }},
    {"--now", "2025-03-15T10:00:00", "moment at which the clock is stopped",
     [](const QString& value, Options& options) {
       options.workspace.now = workbench::SystemClock::parse(value.toStdString());
       return options.workspace.now.has_value();
     }},
    {"--tour", "FOLDER", "walk through the dialogs, leave pictures of them there, and end",
     [](const QString& value, Options& options) {
       options.tour = pathOf(value);
       return !value.isEmpty();
     }},
    {"--tour-address", "HOST:PORT", "controller to tour (the address of the first device)",
     [](const QString& value, Options& options) {
       options.tourAddress = value.toStdString();
       return value.contains(':');
     }},
};

const Option* findOption(const QString& name) {
  for (const Option& option : All)
    if (name == QLatin1String(option.name)) return &option;
  return nullptr;
}

}  // namespace

bool readOptions(const QStringList& arguments, Options& options, QString& error) {
  options.workspace.language.clear();
  options.workspace.program = "lamp-editor";
  options.workspace.state = workbench::stateFolderOfUser();
  options.workspace.configuration =
      pathOf(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
  for (qsizetype at = 0; at < arguments.size(); ++at) {
    const QString name = arguments[at].section('=', 0, 0);
    const Option* option = findOption(name);
    if (option == nullptr) {
      error = "\"" + arguments[at] + "\" is no option of this program";
      return false;
    }
    const bool joined = arguments[at].contains('=');
    const QString value = joined ? arguments[at].section('=', 1) : arguments.value(++at);
    if (!option->set(value, options)) {
      error = name + " needs a value like " + option->value +
              (value.isEmpty() ? QString() : ", not \"" + value + "\"");
      return false;
    }
  }
  return true;
}

QString helpText() {
  QString text =
      "lamp-editor shows and changes the lamp managers of a configuration.\n\n"
      "Usage: lamp-editor [options]\n\n";
  for (const Option& option : All)
    text += QString("  %1 %2\n      %3\n").arg(option.name, option.value, option.meaning);
  return text + "  --help\n      this text\n";
}

}  // namespace editor
