#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// What a document page does with a section of a reply, one step a function. Every step can be
/// repeated, in any order after the first whole().
class Work {
 public:
  virtual ~Work() = default;
  /// Reads the reply.
  virtual void parse() = 0;
  /// Makes the untouched and the working copy.
  virtual void copy() = 0;
  /// Sets the attribute of every node of the working copy.
  virtual void change() = 0;
  /// Walks over the rows and looks at the attribute of each; whether none is empty.
  virtual bool check() = 0;
  /// Compares the untouched copy with the reply: they are equal, and looked at to their end.
  virtual bool compare() = 0;
  /// Copies the section under a new root.
  virtual void section() = 0;
  /// Writes the request and returns its size.
  virtual std::size_t write() = 0;

  /// All steps, as from opening the page to OK.
  std::size_t whole() {
    parse();
    copy();
    change();
    const bool send = check() && compare();
    section();
    return write() + (send ? 1U : 0U);
  }
};

/// What a work works on.
struct Task {
  std::string reply;               ///< the XML
  std::string section;             ///< the name below "reply/ZelLamp"
  std::string attribute;           ///< the one that is set
  std::vector<std::string> texts;  ///< what it is set to, one a node, ASCII
};

/// The node table with one new reference a node.
Task nodeTableTask(std::size_t nodes);

/// On the bare XML library as it is packaged, a shared library.
std::unique_ptr<Work> sharedWork(Task task);
/// On the same library compiled in, all of it in a header. None when the benchmark was built
/// without the library's source.
[[gnu::visibility("default")]] std::unique_ptr<Work> headerWork(Task task);
/// On the host's XML model.
std::unique_ptr<Work> hostWork(Task task);

}  // namespace bench
