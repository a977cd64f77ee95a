#pragma once

#include <QtCore/QByteArray>
#include <filesystem>
#include <string>

namespace editor {

/// What the editor remembers from one start to the next, in "lamp-editor.ini" in the folder of the
/// configuration.
struct EditorPreferences {
  std::string language = "en";
  bool verifyNew = true;
  bool verifyExisting = true;
  bool readBack = true;  ///< whether a section is read again after it was sent
  QByteArray geometry;   ///< of the main window, as Qt keeps it
  QByteArray splitter;
  QByteArray rightSplitter;

  static EditorPreferences load(const std::filesystem::path& folder);
  void save(const std::filesystem::path& folder) const;
};

}  // namespace editor
