#pragma once

#include <QtCore/QByteArray>
#include <filesystem>
#include <string>

namespace editor {

/// What the editor remembers from one start to the next, in "lamp-editor.json" in the folder of the
/// configuration.
struct EditorPreferences {
  std::string language = "en";
  bool verifyNew = true;
  bool verifyExisting = true;
  bool readBack = true;  ///< whether a section is read again after it was sent
  QByteArray geometry;   ///< of the main window, as Qt keeps it
  QByteArray splitter;
  QByteArray rightSplitter;

  static std::filesystem::path fileIn(const std::filesystem::path& folder);
  /// What was saved, and the defaults for what was not. @p problem is why the file was not read,
  /// empty where it was, or there is none.
  static EditorPreferences load(const std::filesystem::path& folder, std::string& problem);
  /// False with the reason in @p cause.
  bool save(const std::filesystem::path& folder, std::string& cause) const;
};

}  // namespace editor
