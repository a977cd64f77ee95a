// Gives a fuzz target the inputs of files, one after the other, as any compiler builds it:
//   fuzz_replay TARGET FILE_OR_FOLDER...
// Each input's file is printed before it runs, so that the last line names the one at fault. Ends
// with status 1 where an input takes too long or too much memory, or is none for the target; what a
// target itself finds ends the program as it does under the fuzzer.

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

// One line for each target; the build gives every target's function its own name.
#define LAMP_FUZZ_TARGET(name) \
  extern "C" int lamp_fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "fuzz_targets.inc"
#undef LAMP_FUZZ_TARGET

namespace {

namespace fs = std::filesystem;

constexpr unsigned SlowestInput = 20;  // seconds, as for the fuzzer
constexpr long MostMemory = 2048;      // MiB, as for the fuzzer

using Target = int (*)(const std::uint8_t* data, std::size_t size);

constexpr struct {
  std::string_view name;
  Target run;
} Targets[] = {
#define LAMP_FUZZ_TARGET(name) {#name, lamp_fuzz_##name},
#include "fuzz_targets.inc"
#undef LAMP_FUZZ_TARGET
};

Target targetNamed(std::string_view name) {
  const auto* found = std::find_if(std::begin(Targets), std::end(Targets),
                                   [&](const auto& target) { return target.name == name; });
  return found == std::end(Targets) ? nullptr : found->run;
}

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "FAULT: %s\n", what.c_str());
  std::exit(1);
}

// The files of the folders among @p paths and the others as they stand. A folder has inputs.
std::vector<fs::path> inputs(const std::vector<fs::path>& paths) {
  std::vector<fs::path> files;
  for (const fs::path& path : paths) {
    if (!fs::is_directory(path)) {
      files.push_back(path);
      continue;
    }
    const std::size_t before = files.size();
    std::copy(fs::directory_iterator(path), {}, std::back_inserter(files));
    if (files.size() == before) fail("no inputs in " + path.string());
    std::sort(files.begin() + static_cast<std::ptrdiff_t>(before), files.end());
  }
  return files;
}

std::string content(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream.is_open()) fail("can't read " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

long mostMemoryUsed() {
  rusage used{};
  ::getrusage(RUSAGE_SELF, &used);
  return used.ru_maxrss / 1024;
}

void replay(Target target, const fs::path& file) {
  std::printf("%s\n", file.c_str());
  std::fflush(stdout);
  const std::string input = content(file);
  ::alarm(SlowestInput);
  const int refused = target(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  ::alarm(0);
  if (refused != 0) fail("the target makes nothing of it");
  if (mostMemoryUsed() > MostMemory) fail("takes more than " + std::to_string(MostMemory) + " MiB");
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) fail("usage: fuzz_replay TARGET FILE_OR_FOLDER...");
  const Target target = targetNamed(arguments[0]);
  if (target == nullptr) fail("no target is called " + arguments[0]);
  std::signal(SIGALRM, [](int) {
    constexpr std::string_view Text = "FAULT: the input takes too long\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, Text.data(), Text.size());
    ::_exit(1);
  });
  for (const fs::path& file : inputs({arguments.begin() + 1, arguments.end()}))
    replay(target, file);
}
