#pragma once

#include <map>
#include <string>

namespace test {

/// The system's file operations of this program, one of which can kill it. The program's own
/// definitions stand in front of the C library's, for the shared libraries too; they count while
/// they are armed and pass everything on.
///
/// A moment is one operation about to happen; the writing of a block has a second one, when half of
/// the block is in the file.
class DeadlyCalls {
 public:
  /// From now on this process counts its moments and dies at the one with this number, from 1; 0
  /// for never. What it counted can be read by the process that it was forked from.
  static void arm(long fatalMoment);

  /// What was counted since the last arm(), also in a child process that has died: how often each
  /// operation was about to happen.
  static std::map<std::string, long> counted();
};

}  // namespace test
