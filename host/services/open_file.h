#pragma once

#include <filesystem>
#include <string>

#include "host/export.h"
#include "host/services/descriptor.h"

// The one place in which the programs open files and make folders. What the libraries open by
// themselves is listed in scripts/check_files.py, which sees to it that nothing else does.

namespace host {

/// Who chose the name of a file.
enum class NamedBy {
  /// A person, who may have put a link there: it is followed.
  person,
  /// The program, which never makes links: one that stands there is somebody else's, and nothing
  /// is read or changed through it.
  program,
};

/// What a file is opened for.
enum class FileUse {
  read,
  /// Reading and changing in place; the file is made when it is missing.
  change,
  /// Reading and writing behind its end; the file is made when it is missing.
  append,
  /// Writing a file that must not exist yet.
  create,
};

/// Opens a regular file, and nothing else: a pipe, a device, a socket and a folder are refused
/// without being opened. Never waits. The descriptor does not pass to other programs; a file that
/// is made is readable by its owner alone. A name of the program's own is not changed in place
/// while the same file has a second name elsewhere. The descriptor is not good(), with the reason
/// in @p cause, when the file is not opened.
HOST_API Descriptor openFile(const std::filesystem::path& file, FileUse use, NamedBy named,
                             std::string& cause);

/// Whether a file may be put in the place of what has this name: of another file, or of nothing.
/// What is no file is somebody's, and stays. False with the reason in @p cause.
HOST_API bool mayReplace(const std::filesystem::path& file, std::string& cause);

/// Makes a folder and what is missing above it, open to their owner alone. True also where the
/// folder, or a link to one, was there before. False with the reason in @p cause.
HOST_API bool makeFolder(const std::filesystem::path& folder, std::string& cause);

/// Closes a folder that was there before to everybody but its owner. One that is reached through
/// a link stays as it is. False with the reason in @p cause.
HOST_API bool closeFolderToOthers(const std::filesystem::path& folder, std::string& cause);

/// Has the names of a folder on the disk, as well as its file system can.
HOST_API void flushFolder(const std::filesystem::path& folder);

/// Follows the links that a name stands for to the last one, whose file need not exist. False with
/// the reason in @p cause when they go round in a circle or can't be read.
HOST_API bool followLinks(const std::filesystem::path& name, std::filesystem::path& target,
                          std::string& cause);

/// Keeps the numbers of the standard streams that a program was started without, so that no file
/// gets them: reading from such a stream and writing to it go on failing. False when it can't.
HOST_API bool holdStandardStreams();

}  // namespace host
