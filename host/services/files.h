#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/export.h"
#include "host/services/open_file.h"

namespace host {

/// The file operations that the host uses. Programs use the real one; tests install one that fails.
/// Every operation returns false with the system's reason in @p cause when it fails.
class HOST_API FileSystem {
 public:
  virtual ~FileSystem();

  /// Reads a whole file of at most @p limit bytes, which openFile() opens.
  virtual bool read(const std::filesystem::path& file, NamedBy named, std::size_t limit,
                    std::string& content, std::string& cause);
  /// Makes a new file, readable by its owner alone, writes @p content and flushes it to the disk.
  virtual bool writeNew(const std::filesystem::path& file, std::string_view content,
                        std::string& cause);
  /// Keeps a file's content under a second name, readable by its owner alone; an existing one is
  /// replaced at once.
  virtual bool keep(const std::filesystem::path& file, const std::filesystem::path& copy,
                    std::string& cause);
  /// Renames over an existing file, but over nothing else, and flushes the folder.
  virtual bool replace(const std::filesystem::path& from, const std::filesystem::path& to,
                       std::string& cause);
  virtual bool remove(const std::filesystem::path& file, std::string& cause);
  /// See host::makeFolder.
  virtual bool makeFolder(const std::filesystem::path& folder, std::string& cause);
  /// False only where it is certain that nothing has the name; a link has it, wherever it leads.
  virtual bool exists(const std::filesystem::path& file);
  /// See host::followLinks.
  virtual bool followLinks(const std::filesystem::path& name, std::filesystem::path& target,
                           std::string& cause);
  /// The files of a folder whose name ends in @p ending, in the order that the system gives.
  virtual std::vector<std::filesystem::path> list(const std::filesystem::path& folder,
                                                  std::string_view ending);
};

/// The file system in force.
HOST_API FileSystem& fileSystem();

/// Puts another one in force, which must outlive its use; null restores the real one.
HOST_API void setFileSystem(FileSystem* replacement);

/// Reads a whole file of at most @p limit bytes. False with the reason in @p cause when it can't;
/// the reason does not name the file, which the caller's own text does.
HOST_API bool readFile(const std::filesystem::path& file, std::size_t limit, std::string& content,
                       std::string& cause, NamedBy named = NamedBy::person);

/// Writes @p content to a new file in the same folder, flushes it, and renames it over @p file; the
/// version before stays beside it as keptCopy(file). At every moment the name holds the old content
/// or the new one, whole. Where a person has put a link, the file that it leads to is replaced so,
/// and the link stays. False with the reason in @p cause, without the file's name, when it can't;
/// the old content then stays.
HOST_API bool saveWhole(const std::filesystem::path& file, std::string_view content,
                        std::string& cause, NamedBy named = NamedBy::person);

/// As saveWhole; the version before stays as @p copy, beside @p file or the link to it.
HOST_API bool saveWholeKeeping(const std::filesystem::path& file, std::string_view content,
                               const std::filesystem::path& copy, std::string& cause,
                               NamedBy named = NamedBy::person);

/// As saveWhole for a name of the program's own, without keeping the version before.
HOST_API bool replaceWhole(const std::filesystem::path& file, std::string_view content,
                           std::string& cause);

/// Where saveWhole keeps the version before: the file's name with ".previous" behind it.
HOST_API std::filesystem::path keptCopy(const std::filesystem::path& file);

/// A file's name with @p ending behind it. Where that is longer than a name may be, the name is cut
/// and a checksum of the whole of it put in, so that two names never make one.
HOST_API std::filesystem::path sibling(const std::filesystem::path& file, std::string_view ending);

}  // namespace host
