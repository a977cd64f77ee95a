// What every reader of XML, and every operation on what was read, costs for documents of all
// shapes: shape_costs FOLDER [SHAPE]. Prints "step shape bytes peak" a line, the peak in bytes of
// the heap; under valgrind the instructions of each step are dumped under the same name.
// check_shapes.py runs it.

#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/counted_memory.h"
#include "bench/shapes.h"
#include "host/resources/texts.h"
#include "host/services/setup.h"
#include "host/xml/xml_document.h"
#include "programs/calendar_document.h"
#include "workbench/configuration_store.h"

namespace {

namespace fs = std::filesystem;
using bench::Shape;

constexpr std::size_t Sizes[] = {16 * 1024, 48 * 1024, 144 * 1024};
// Steps of documents whose size is told; a failure would measure a refusal.
void expect(bool good, const char* step, const Shape& shape) {
  if (good) return;
  std::fprintf(stderr, "FAULT: %s refuses the shape %s\n", step, shape.name);
  std::exit(2);
}

template <class Work>
void measure(const char* step, const Shape& shape, std::size_t bytes, Work work) {
  const bench::CountedMemory memory;
  CALLGRIND_TOGGLE_COLLECT;
  work();
  CALLGRIND_TOGGLE_COLLECT;
  const std::size_t peak = memory.peak();
  const std::string line = std::string(step) + " " + shape.name + " " + std::to_string(bytes);
  CALLGRIND_DUMP_STATS_AT(line.c_str());
  std::printf("%s %zu\n", line.c_str(), peak);
}

void write(const fs::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

void readAll(const Shape& shape, std::size_t size, const fs::path& folder) {
  std::string reply = bench::shaped(shape, "reply", size);
  const std::size_t bytes = reply.size();
  measure("reply", shape, bytes, [&] {
    XmlDocument document;
    expect(document.Parse(std::move(reply)), "reply", shape);
  });

  write(folder / "configuration.xml", bench::shaped(shape, "configuration", size));
  measure("configuration", shape, bytes, [&] {
    workbench::ConfigurationStore store(folder);
    std::string cause;
    expect(store.open(cause), "configuration", shape);
    XCMainCfg::Get().Document().Clear();
  });

  write(folder / "calendar", bench::shaped(shape, "calendar", size));
  measure("calendar", shape, bytes, [&] {
    lamp::CalendarDocument calendar(lamp::ProgramKind::clock);
    expect(calendar.load(folder / "calendar"), "calendar", shape);
  });

  write(folder / "shape.xml", bench::shaped(shape, "texts", size));
  measure("texts", shape, bytes, [&] {
    std::string cause;
    expect(host::loadTexts(folder, "shape", cause), "texts", shape);
  });
}

void look(const XmlDocument& document) {
  static const host::XmlName Missing("missing");
  const XmlDocument::XmlNode& root = *document.Root();
  if (root.Node("group?id=%s?", u"missing") != nullptr) std::abort();
  if (root.Node("missing/missing") != nullptr || root.hasAttribute(Missing)) std::abort();
  for (const XmlDocument::XmlNode& child : root.Children())
    if (child.hasAttribute(Missing)) std::abort();
}

void workAll(const Shape& shape, std::size_t size) {
  XmlDocument document;
  XmlDocument other;
  expect(document.Parse(bench::shaped(shape, "reply", size)), "parse", shape);
  const Shape equal{shape.name, shape.equal ? shape.equal : shape.content};
  const std::string text = bench::shaped(equal, "reply", size);
  const std::size_t bytes = text.size();
  expect(other.Parse(text), "parse", shape);

  measure("compare", shape, bytes,
          [&] { expect(*document.Root() == *other.Root(), "compare", shape); });
  measure("look", shape, bytes, [&] { look(document); });
  measure("copy", shape, bytes, [&] {
    XmlDocument copy;
    copy.Create("copy") = *document.Root();
  });
  measure("write", shape, bytes, [&] { document.ToString(); });
  measure("writeIndented", shape, bytes, [&] { document.ToString(XmlDocument::Layout::indented); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const fs::path folder = argv[1];
  for (const Shape& shape : bench::shapes())
    for (const std::size_t size : Sizes) {
      if (argc > 2 && std::string(argv[2]) != shape.name) continue;
      readAll(shape, size, folder);
      workAll(shape, size);
    }
  return 0;
}
