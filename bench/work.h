#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace bench {

/// What a document page does with a node table, one step a function. Every step can be repeated.
class Work {
 public:
  virtual ~Work() = default;
  /// Reads the reply.
  virtual void parse() = 0;
  /// Makes the untouched and the working copy.
  virtual void copy() = 0;
  /// Sets the reference of every node of the working copy.
  virtual void change() = 0;
  /// Compares the untouched copy with the reply: they are equal, and looked at to their end.
  virtual bool compare() = 0;
  /// Compares the untouched with the working copy: they differ early on.
  virtual bool changed() = 0;
  /// Copies the section under a new root.
  virtual void section() = 0;
  /// Writes the request and returns its size.
  virtual std::size_t write() = 0;

  /// All steps, as from opening the page to OK.
  std::size_t whole() {
    parse();
    copy();
    change();
    const bool send = changed();
    section();
    return write() + (send ? 1U : 0U);
  }
};

/// On the bare XML library.
std::unique_ptr<Work> bareWork(std::size_t nodes);
/// On the host's XML model.
std::unique_ptr<Work> hostWork(std::size_t nodes);

}  // namespace bench
