#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "host/services/open_file.h"
#include "host/xml/xml_document.h"
#include "workbench/file_lock.h"
#include "workbench/unkept_content.h"

namespace workbench {

/// The configuration on disk: "configuration.xml" in a folder, with the version before beside it.
/// Its content is the document of XCMainCfg. One program at a time may write. "configuration.xml"
/// may be a link: the file that it leads to is read and written then, and guarded by a lock beside
/// that file, which all links to it share. Every cause is a whole sentence in the language in
/// force, with the path of the file.
class ConfigurationStore {
 public:
  /// @p patience is how long to wait for another program that is about to end.
  explicit ConfigurationStore(std::filesystem::path folder,
                              std::chrono::milliseconds patience = std::chrono::milliseconds(500))
      : folder_(std::move(folder)), patience_(patience) {}

  /// Takes the right to write and loads the configuration into XCMainCfg. A missing file is an
  /// empty configuration; a link that leads nowhere is no missing file. False, with file, line and
  /// cause in @p cause, for a file that is no configuration; it is then never written, and
  /// XCMainCfg stays as it was. May be called again, to ask for the right to write once more and
  /// take up what another program saved.
  bool open(std::string& cause);

  /// Whether the version before could be opened in place of a file that could not.
  bool keptCopyOpens() const;
  /// Loads the version before, after open() failed. Nothing is written until the configuration is
  /// changed; the file that could not be read then stays beside it as damagedCopy().
  bool openKeptCopy(std::string& cause);
  /// Whether what is loaded is the version before, and nothing was saved since.
  bool isRecovered() const { return recovered_; }

  /// What the file holds that the next save loses, for a person, in the language in force; empty
  /// where nothing is lost, or nothing can be saved.
  std::string lossOfNextSave() const;

  /// The configuration as it would be saved.
  std::string text() const;

  /// Saves when the configuration differs from what is on disk. False with a cause when it can't.
  /// Releases the elements that were removed from the configuration.
  bool saveIfDifferent(std::string& cause);

  /// Whether saving is refused from the start, and why: another program may write, or elements
  /// share ids.
  bool isReadOnly() const { return !lock_.isHeld() || sharesIds_; }
  std::string readOnlyReason() const;
  /// Whether only shared ids keep the configuration from being saved, which separateIds() mends.
  bool needsNewIds() const { return lock_.isHeld() && sharesIds_; }
  /// Gives the later ones of the elements that share an id new ids, and saves. False with a cause
  /// when that can't be saved.
  bool separateIds(std::string& cause);

  std::filesystem::path file() const { return folder_ / "configuration.xml"; }
  const std::filesystem::path& folder() const { return folder_; }
  /// Where a file that could not be read is put aside: "configuration.xml.damaged", or the same
  /// with "-2", "-3" ... when there is one already.
  std::filesystem::path damagedCopy() const;

 private:
  bool attemptToSave(std::string& cause);
  bool takeFolder(std::string& cause);
  static void removeLeftovers(const std::filesystem::path& file);
  // What was read, and what of it the next save loses.
  struct Content {
    XmlDocument document;
    UnkeptContent unkept;
  };
  static bool read(const std::filesystem::path& file, host::NamedBy named, Content& content,
                   std::string& cause);
  void take(Content content);

  std::filesystem::path folder_;
  std::chrono::milliseconds patience_;
  FileLock lock_;
  bool loaded_ = false;
  bool recovered_ = false;
  bool sharesIds_ = false;
  UnkeptContent unkept_;
  std::string onDisk_;
};

}  // namespace workbench
