#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "host/services/open_file.h"
#include "tests/support/temp_folder.h"

namespace support {

/// What may stand where a program expects a file of its own kind.
enum class Odd {
  pipe,
  folder,
  device,
  danglingLink,
  loopingLink,
  unreadable,
  secondName,      ///< of a stranger's file: a hard link
  linkToStranger,  ///< a symbolic link to a stranger's file
  empty,
  truncated,  ///< the first half of a good file
  huge,       ///< a tebibyte that takes no room on the disk
};

inline constexpr std::array AllOdd = {Odd::pipe,         Odd::folder,      Odd::device,
                                      Odd::danglingLink, Odd::loopingLink, Odd::unreadable,
                                      Odd::secondName,   Odd::empty,       Odd::linkToStranger,
                                      Odd::truncated,    Odd::huge};

std::string nameOf(Odd odd);

/// One of them in its place, as long as this lives. A program that waits for it is killed. For
/// something unreadable the test goes on as another person than the owner: where root runs it, the
/// folder is given away.
class OddFile {
 public:
  /// @p good is what a file of that kind holds; the stranger's file holds it too.
  OddFile(const std::filesystem::path& place, Odd odd, std::string_view good);
  OddFile(const OddFile&) = delete;
  OddFile& operator=(const OddFile&) = delete;
  ~OddFile();

  /// Why a file is not read from there, empty where it is.
  std::string refusal(host::NamedBy named) const;
  /// Why a name of the program's own is not changed in place there, empty where it is.
  std::string refusalToChange() const;
  /// Whether the thing is as it was put, and the stranger's file, too.
  bool isUntouched() const { return thingNow() == thing_ && strangerNow() == stranger_; }
  /// Whether the stranger's file is as it was: its content, mode and time.
  bool isStrangerUntouched() const { return strangerNow() == stranger_; }

 private:
  void put(std::string_view good) const;
  std::string thingNow() const;
  std::string strangerNow() const;

  std::filesystem::path place_;
  Odd odd_;
  TempFolder elsewhere_;
  bool otherPerson_ = false;
  int dumpable_ = 1;
  std::string thing_;
  std::string stranger_;
};

}  // namespace support
