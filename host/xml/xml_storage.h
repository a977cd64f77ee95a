#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "host/xml/xml_text.h"

// How a document keeps its elements and texts. Internal to host/xml.

namespace host::xml {

/// Texts that documents share: append-only, alive as long as one document refers to it.
class TextPool {
 public:
  XmlText store(std::u16string_view text);
  XmlText store(XmlText text);
  /// Takes the whole buffer over; texts may refer into it.
  std::string& adopt(std::string buffer);
  /// The memory of all its texts.
  std::size_t bytes() const { return bytes_; }

 private:
  void* allocate(std::size_t bytes, std::size_t alignment);

  static constexpr std::size_t ChunkBytes = 16 * 1024;
  std::vector<std::unique_ptr<char[]>> chunks_;
  std::deque<std::string> adopted_;
  char* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t bytes_ = 0;
  // The same value set on many elements in a row is stored once.
  XmlText last_;
};

/// Trivial: a chunk of them costs nothing to make.
struct Attribute {
  std::uint32_t name;
  std::uint32_t sizeAndWidth;
  const void* data;

  XmlText text() const { return {data, sizeAndWidth}; }
  void setText(XmlText text) {
    data = text.data();
    sizeAndWidth = text.sizeAndWidth();
  }
};

struct Storage;

/// A block of elements, aligned to its size so that an element finds its document's storage
/// without carrying a pointer to it.
struct Slab {
  static constexpr std::size_t Bytes = 64 * 1024;
  Storage* owner = nullptr;

  static Slab* of(const void* element) {
    return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(element) & ~(Bytes - 1));
  }
};

/// Everything that a document owns. Elements that were removed keep their place until the document
/// is cleared: rows and dialogs may still refer to them.
struct Storage {
  Storage() = default;
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;
  ~Storage();

  void* allocateNode(std::size_t bytes) {
    if (static_cast<std::size_t>(nodesEnd_ - nextNode_) < bytes) openSlab();
    void* place = nextNode_;
    nextNode_ += bytes;
    return place;
  }
  Attribute* allocateAttributes(std::size_t count) {
    if (attributesLeft_ < count) return openAttributes(count);
    Attribute* place = nextAttribute_;
    nextAttribute_ += count;
    attributesLeft_ -= count;
    return place;
  }
  TextPool& pool() {
    if (!own_) openPool();
    return *own_;
  }
  void share(const Storage& other);
  std::size_t textBytes() const;

 private:
  void openSlab();
  Attribute* openAttributes(std::size_t count);
  void openPool();
  static constexpr std::size_t AttributesPerChunk = 1024;
  std::vector<Slab*> slabs_;
  char* nextNode_ = nullptr;
  char* nodesEnd_ = nullptr;
  std::vector<std::unique_ptr<Attribute[]>> attributeChunks_;
  Attribute* nextAttribute_ = nullptr;
  std::size_t attributesLeft_ = 0;
  std::shared_ptr<TextPool> own_;
  std::vector<std::shared_ptr<TextPool>> shared_;
};

}  // namespace host::xml
