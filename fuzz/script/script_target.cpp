// The scripted user on arbitrary lines: every line is answered with one line of JSON, and the
// session ends with the input whatever is open.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "automation/session.h"
#include "fuzz/dialogs/memory_files.h"
#include "fuzz/dialogs/scratch_folder.h"
#include "fuzz/fault.h"
#include "fuzz/input.h"
#include "fuzz/script/canned_channel.h"
#include "host/services/setup.h"

namespace {

using fuzz::expect;

constexpr std::size_t LongestLine = 4096;
constexpr std::size_t MostLines = 60;

constexpr const char* Configuration = R"(<configuration><commSystem><device>
    <id>{D1}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>
    <name>Main street</name><identifier>LM-0001</identifier><address>192.168.1.20</address>
    <socket>8080</socket></device></commSystem><deviceGroups/><viewSetups/></configuration>)";

const std::string& texts() {
  static const std::string loaded = [] {
    std::ostringstream content;
    content << std::ifstream(LAMP_TEXTS_FOLDER "/en.xml").rdbuf();
    return content.str();
  }();
  return loaded;
}

/// A file in memory, read or written by its descriptor.
class Pipe {
 public:
  explicit Pipe(const std::string& content = {}) : descriptor_(::memfd_create("lines", 0)) {
    expect(descriptor_ >= 0, "there is memory for a file");
    expect(::write(descriptor_, content.data(), content.size()) ==
               static_cast<ssize_t>(content.size()),
           "a file in memory takes everything");
    ::lseek(descriptor_, 0, SEEK_SET);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() { ::close(descriptor_); }

  int descriptor() const { return descriptor_; }
  std::string content() const {
    std::string out(static_cast<std::size_t>(::lseek(descriptor_, 0, SEEK_END)), '\0');
    const ssize_t size = ::pread(descriptor_, out.data(), out.size(), 0);
    expect(size == static_cast<ssize_t>(out.size()), "a file in memory reads back");
    return out;
  }

 private:
  int descriptor_;
};

// The lines as the program reads them, cut to what it may take here.
std::string firstLines(std::string lines) {
  std::size_t end = 0;
  for (std::size_t count = 0; count < MostLines && end < lines.size(); ++count)
    end = std::min(lines.find('\n', end), lines.size() - 1) + 1;
  lines.resize(end);
  return lines;
}

std::size_t countLines(const std::string& text) {
  const auto breaks = std::count(text.begin(), text.end(), '\n');
  return static_cast<std::size_t>(breaks) + (text.empty() || text.back() == '\n' ? 0U : 1U);
}

void checkAnswers(const std::string& answers, std::size_t asked) {
  std::istringstream lines(answers);
  std::size_t count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    const nlohmann::json answer = nlohmann::json::parse(line, nullptr, false);
    expect(answer.is_object() && answer.contains("ok") && answer["ok"].is_boolean() &&
               answer.contains("top"),
           "an answer is an object of JSON that says whether it went well");
    expect(answer["ok"] || (answer.contains("error") && answer["error"].is_string()),
           "a refusal says why");
  }
  expect(count <= asked, "no line is answered twice");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  fuzz::setCannedReply(input.document());
  const std::string lines = firstLines(input.document());

  const std::filesystem::path& folder = fuzz::scratchFolder();
  fuzz::MemoryFiles files(folder);
  files.letReadAnywhere();
  files.put(folder / "texts" / "en.xml", texts());
  files.put(folder / "configuration.xml", Configuration);
  Pipe in(lines);
  Pipe out;
  {
    automation::LineChannel channel(in.descriptor(), out.descriptor(), LongestLine);
    automation::Session session(channel);
    workbench::WorkspaceOptions options;
    options.configuration = folder;
    options.plugin = "linked";
    options.now = XCDateTime(2025, 3, 15, 10, 0, 0);
    workbench::Workspace workspace({folder / "texts", folder, {}}, options);
    std::string cause;
    if (!workspace.open(session, cause)) fuzz::fault("the program does not start: " + cause);
    session.run(workspace);
    expect(session.windows().empty(), "no window is open at the end");
  }
  XCMainCfg::Get().Document().Clear();
  checkAnswers(out.content(), countLines(lines));
  return 0;
}
