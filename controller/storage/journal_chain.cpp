#include "controller/storage/journal_chain.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "controller/storage/journal_frame.h"

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr const char* kMark = ".journal-";
constexpr const char* kTitle = "lamp-controller-journal";
constexpr const char* kRemedy =
    "; put back the files as they were saved together, or move the journals away to go on with the "
    "state as it was when it was last written whole";

// One journal as it stands on the disk.
struct Journal {
  std::uint64_t number = 0;
  fs::path path;
  std::string_view bytes;
  JournalScan scan;
  JournalHead head;

  bool readable() const { return !scan.payloads.empty(); }
  std::size_t records() const { return readable() ? scan.payloads.size() - 1 : 0; }
};

std::string damaged(const Journal& journal) {
  return journal.path.string() + " is damaged at byte " + std::to_string(journal.scan.wholeBytes) +
         kRemedy;
}

std::string readOne(Disk& disk, const fs::path& state, std::uint64_t number, JournalChain& chain,
                    Journal& journal) {
  journal.number = number;
  journal.path = journalPath(state, number);
  std::string& bytes = chain.contents.emplace_back();
  if (std::string fault = disk.read(journal.path, bytes); !fault.empty()) return fault;
  journal.bytes = bytes;
  journal.scan = scanJournal(journal.bytes);
  if (!journal.readable()) return "";
  const bool own = readHead(journal.scan.payloads[0], journal.head);
  return own && journal.head.name.number == number ? "" : damaged(journal);
}

// A journal that was begun and never written to may have been given up, and what was appended
// meanwhile stands in the one before it. The one that the state names is never given up.
void dropUnused(std::uint64_t first, std::vector<Journal>& journals, JournalChain& chain) {
  while (!journals.empty() && journals.back().number > first && journals.back().records() == 0 &&
         !journals.back().scan.damaged) {
    chain.abandoned.push_back(journals.back().path);
    journals.pop_back();
  }
}

// Cuts every journal but the last to what the next one follows: what stands behind that was never
// confirmed.
std::string joinJournals(std::vector<Journal>& journals) {
  for (std::size_t i = 0; i + 1 < journals.size(); ++i) {
    Journal& journal = journals[i];
    const JournalHead& next = journals[i + 1].head;
    if (journals[i + 1].number != journal.number + 1 || next.followedTag != journal.head.name.tag) {
      return journals[i + 1].path.string() + " does not follow " + journal.path.string() + kRemedy;
    }
    journal.scan =
        scanJournal(journal.bytes.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(
                                                next.followedBytes, journal.bytes.size()))));
    if (!journal.readable() || journal.scan.wholeBytes != next.followedBytes) {
      return damaged(journal);
    }
  }
  return journals.back().scan.damaged ? damaged(journals.back()) : "";
}

std::string checkBeginning(const fs::path& state, const JournalName& first,
                           const Journal& journal) {
  const std::uint64_t wanted = std::max<std::uint64_t>(first.number, 1);
  if (journal.number != wanted) {
    return journalPath(state, wanted).string() + " is missing, but " + journal.path.string() +
           " follows it" + kRemedy;
  }
  if (!journal.readable()) return damaged(journal);
  const std::string& tag = first.number == 0 ? journal.head.followedTag : journal.head.name.tag;
  if (tag == first.tag) return "";
  return journal.path.string() + " belongs to another state than " + state.string() + kRemedy;
}

}  // namespace

fs::path journalPath(const fs::path& state, std::uint64_t number) {
  return state.string() + kMark + std::to_string(number);
}

std::string printHead(const JournalHead& head) {
  const std::string followed = head.followedTag.empty() ? "-" : head.followedTag;
  return std::string(kTitle) + " " + std::to_string(head.name.number) + " " + head.name.tag + " " +
         followed + " " + std::to_string(head.followedBytes) + "\n";
}

bool readHead(std::string_view text, JournalHead& head) {
  std::istringstream in{std::string(text)};
  std::string title;
  in >> title >> head.name.number >> head.name.tag >> head.followedTag >> head.followedBytes;
  if (head.followedTag == "-") head.followedTag.clear();
  return !in.fail() && title == kTitle;
}

std::string findJournals(Disk& disk, const fs::path& state, std::vector<std::uint64_t>& numbers) {
  std::vector<std::string> names;
  if (std::string fault = disk.list(folderOf(state), names); !fault.empty()) return fault;
  const std::string mark = state.filename().string() + kMark;
  numbers.clear();
  for (const std::string& name : names) {
    if (!name.starts_with(mark)) continue;
    std::uint64_t number = 0;
    const char* end = name.data() + name.size();
    const auto result = std::from_chars(name.data() + mark.size(), end, number);
    if (result.ec == std::errc() && result.ptr == end && number > 0) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return "";
}

std::string readJournals(Disk& disk, const fs::path& state, const JournalName& first,
                         JournalChain& chain) {
  std::vector<std::uint64_t> numbers;
  if (std::string fault = findJournals(disk, state, numbers); !fault.empty()) return fault;
  std::vector<Journal> journals;
  for (const std::uint64_t number : numbers) {
    if (number < first.number) {
      chain.abandoned.push_back(journalPath(state, number));
      continue;
    }
    Journal& journal = journals.emplace_back();
    if (std::string fault = readOne(disk, state, number, chain, journal); !fault.empty()) {
      return fault;
    }
  }
  chain.last = first;
  dropUnused(first.number, journals, chain);
  if (journals.empty()) return "";
  if (std::string fault = checkBeginning(state, first, journals[0]); !fault.empty()) return fault;
  if (std::string fault = joinJournals(journals); !fault.empty()) return fault;
  for (const Journal& journal : journals) {
    chain.changes.insert(chain.changes.end(), journal.scan.payloads.begin() + 1,
                         journal.scan.payloads.end());
  }
  const Journal& last = journals.back();
  chain.present = true;
  chain.last = last.head.name;
  chain.frames = last.scan.payloads.size();
  chain.wholeBytes = last.scan.wholeBytes;
  chain.brokenBytes = last.bytes.size() - last.scan.wholeBytes;
  return "";
}

}  // namespace lamp::controller
