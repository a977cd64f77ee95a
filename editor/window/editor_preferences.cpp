#include "editor/window/editor_preferences.h"

#include <QtCore/QLocale>
#include <QtCore/QSettings>

namespace editor {
namespace {

QString fileIn(const std::filesystem::path& folder) {
  return QString::fromStdU16String((folder / "lamp-editor.ini").u16string());
}

// Before the first choice: the person's own language where there is a catalogue for it.
QString systemLanguage() {
  return QLocale::system().language() == QLocale::Spanish ? QStringLiteral("es")
                                                          : QStringLiteral("en");
}

}  // namespace

EditorPreferences EditorPreferences::load(const std::filesystem::path& folder) {
  const QSettings settings(fileIn(folder), QSettings::IniFormat);
  EditorPreferences preferences;
  preferences.language = settings.value("language", systemLanguage()).toString().toStdString();
  preferences.verifyNew = settings.value("verifyConnection/new", true).toBool();
  preferences.verifyExisting = settings.value("verifyConnection/existing", true).toBool();
  preferences.readBack = settings.value("readBack", true).toBool();
  preferences.geometry = settings.value("window/geometry").toByteArray();
  preferences.splitter = settings.value("window/splitter").toByteArray();
  preferences.rightSplitter = settings.value("window/rightSplitter").toByteArray();
  return preferences;
}

void EditorPreferences::save(const std::filesystem::path& folder) const {
  QSettings settings(fileIn(folder), QSettings::IniFormat);
  settings.setValue("language", QString::fromStdString(language));
  settings.setValue("verifyConnection/new", verifyNew);
  settings.setValue("verifyConnection/existing", verifyExisting);
  settings.setValue("readBack", readBack);
  settings.setValue("window/geometry", geometry);
  settings.setValue("window/splitter", splitter);
  settings.setValue("window/rightSplitter", rightSplitter);
}

}  // namespace editor
