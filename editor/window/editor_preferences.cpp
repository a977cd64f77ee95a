#include "editor/window/editor_preferences.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include "host/services/files.h"

namespace editor {
namespace {

constexpr std::size_t LargestFile = 1024 * 1024;

// Before the first choice: the person's own language where there is a catalogue for it.
QString systemLanguage() {
  return QLocale::system().language() == QLocale::Spanish ? QStringLiteral("es")
                                                          : QStringLiteral("en");
}

struct Switch {
  const char* name;
  bool EditorPreferences::*value;
};
constexpr Switch Switches[] = {{"verifyNew", &EditorPreferences::verifyNew},
                               {"verifyExisting", &EditorPreferences::verifyExisting},
                               {"readBack", &EditorPreferences::readBack}};

// As Qt keeps the places of windows, in Base64.
struct Place {
  const char* name;
  QByteArray EditorPreferences::*value;
};
constexpr Place Places[] = {{"geometry", &EditorPreferences::geometry},
                            {"splitter", &EditorPreferences::splitter},
                            {"rightSplitter", &EditorPreferences::rightSplitter}};

QJsonObject read(const std::filesystem::path& file, std::string& problem) {
  std::string content;
  problem.clear();
  if (!host::fileSystem().exists(file) ||
      !host::readFile(file, LargestFile, content, problem, host::NamedBy::program))
    return {};
  QJsonParseError error;
  const QJsonDocument document =
      QJsonDocument::fromJson(QByteArray::fromStdString(content), &error);
  if (!document.isObject()) problem = error.errorString().toStdString();
  return document.object();
}

}  // namespace

std::filesystem::path EditorPreferences::fileIn(const std::filesystem::path& folder) {
  return folder / "lamp-editor.json";
}

EditorPreferences EditorPreferences::load(const std::filesystem::path& folder,
                                          std::string& problem) {
  const QJsonObject stored = read(fileIn(folder), problem);
  EditorPreferences preferences;
  preferences.language = stored.value("language").toString(systemLanguage()).toStdString();
  for (const auto& [name, value] : Switches)
    preferences.*value = stored.value(QLatin1String(name)).toBool(preferences.*value);
  for (const auto& [name, value] : Places)
    preferences.*value =
        QByteArray::fromBase64(stored.value(QLatin1String(name)).toString().toLatin1());
  return preferences;
}

bool EditorPreferences::save(const std::filesystem::path& folder, std::string& cause) const {
  QJsonObject stored{{"language", QString::fromStdString(language)}};
  for (const auto& [name, value] : Switches) stored.insert(QLatin1String(name), this->*value);
  for (const auto& [name, value] : Places)
    stored.insert(QLatin1String(name), QString::fromLatin1((this->*value).toBase64()));
  return host::saveWhole(fileIn(folder), QJsonDocument(stored).toJson().toStdString(), cause,
                         host::NamedBy::program);
}

}  // namespace editor
