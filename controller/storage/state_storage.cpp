#include "controller/storage/state_storage.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "controller/storage/checksum.h"
#include "controller/storage/journal_frame.h"
#include "controller/storage/random_text.h"

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

// The state's first line is a processing instruction of XML: its document is none the wiser.
constexpr std::string_view kLineBegin = "<?journal ";
constexpr std::string_view kLineEnd = "?>\n";
constexpr const char* kRestore = "; put back the files as they were saved together";

std::string checksumText(std::string_view bytes) {
  char text[16];
  std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(checksumOf(bytes)));
  return text;
}

// Number 0 where the state was written without a journal.
JournalName nameIn(std::string_view state) {
  JournalName name;
  const std::size_t end = state.substr(0, 256).find(kLineEnd);
  if (!state.starts_with(kLineBegin) || end == std::string_view::npos) return name;
  const std::string_view words = state.substr(kLineBegin.size(), end - kLineBegin.size());
  const std::size_t blank = words.find(' ');
  std::from_chars(words.data(), words.data() + words.size(), name.number);
  if (blank != std::string_view::npos) name.tag = words.substr(blank + 1);
  // A checksum of all that follows stands behind the tag, but for states of older programs.
  name.tag = name.tag.substr(0, name.tag.find(' '));
  return name;
}

// Whether the state is as it was written.
bool isWhole(std::string_view state) {
  const std::size_t end = state.substr(0, 256).find(kLineEnd);
  if (!state.starts_with(kLineBegin) || end == std::string_view::npos) return true;
  const std::string_view line = state.substr(0, end);
  if (std::count(line.begin(), line.end(), ' ') < 3) return true;
  return line.substr(line.rfind(' ') + 1) == checksumText(state.substr(end + kLineEnd.size()));
}

std::string numbered(std::uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

StateStorage::StateStorage(Disk& disk, fs::path file)
    : disk_(disk), file_(std::move(file)), beside_(file_.string() + ".new") {}

std::string StateStorage::load(KeptState& kept) {
  std::vector<std::string> names;
  if (std::string fault = disk_.list(folderOf(file_), names); !fault.empty()) return fault;
  kept.found = std::find(names.begin(), names.end(), file_.filename().string()) != names.end();
  JournalName first;
  if (kept.found) {
    if (std::string fault = disk_.read(file_, kept.state); !fault.empty()) return fault;
    if (!isWhole(kept.state)) {
      return file_.string() + " is damaged: its checksum is not that of what stands in it" +
             kRestore;
    }
    first = nameIn(kept.state);
  }
  std::string fault = readJournals(disk_, file_, first, kept.journal);
  if (!fault.empty()) return fault;
  if (!kept.found && kept.journal.present) {
    return "its changes are there (" + journalPath(file_, kept.journal.last.number).string() +
           "), but " + file_.string() + " itself is missing; put it back, or move them away";
  }
  if (kept.journal.brokenBytes > 0) {
    kept.notice = "the last " + numbered(kept.journal.brokenBytes, "byte", "bytes") + " of " +
                  journalPath(file_, kept.journal.last.number).string() +
                  " were never written whole and are cut off; they were not confirmed";
  } else if (first.number > 0 && !kept.journal.present) {
    return journalPath(file_, first.number).string() +
           " is missing, and with it the changes that were confirmed since " + file_.string() +
           " was written" + kRestore;
  }
  return "";
}

std::string StateStorage::resume(const KeptState& kept) {
  stateBytes_ = kept.state.size();
  name_ = kept.journal.last;
  std::string fault = disk_.remove(beside_);
  for (const fs::path& journal : kept.journal.abandoned) {
    if (fault.empty()) fault = disk_.remove(journal);
  }
  if (!fault.empty() || !kept.journal.present) return fault;
  journal_ = disk_.open(journalPath(file_, name_.number), fault);
  frames_ = kept.journal.frames;
  journalBytes_ = kept.journal.wholeBytes;
  overhangs_ = kept.journal.brokenBytes > 0;
  return fault.empty() ? cutOverhang() : fault;
}

std::string StateStorage::cutOverhang() {
  if (!overhangs_) return "";
  std::string fault = journal_->cut(journalBytes_);
  if (fault.empty()) fault = journal_->flush();
  overhangs_ = !fault.empty();
  return fault;
}

std::string StateStorage::append(std::string_view change) {
  if (!journal_) return "there is no journal at " + file_.string();
  if (std::string fault = cutOverhang(); !fault.empty()) return fault;
  const std::string frame = journalFrame(frames_, change);
  std::string fault = journal_->append(frame);
  if (fault.empty()) fault = journal_->flush();
  if (!fault.empty()) {
    overhangs_ = true;
    cutOverhang();
    return fault;
  }
  ++frames_;
  journalBytes_ += frame.size();
  return "";
}

std::string StateStorage::beginJournal() {
  JournalHead head{{name_.number + 1, randomHex(2)}, name_.tag, journalBytes_};
  const fs::path path = journalPath(file_, head.name.number);
  // One that was given up may be there; it holds no change.
  std::string fault = disk_.remove(path);
  std::unique_ptr<DiskFile> journal = fault.empty() ? disk_.create(path, fault) : nullptr;
  if (!journal) return fault;
  const std::string frame = journalFrame(0, printHead(head));
  fault = journal->append(frame);
  if (fault.empty()) fault = journal->flush();
  if (fault.empty()) fault = disk_.flushFolder(folderOf(file_));
  if (!fault.empty()) {
    disk_.remove(path);
    return fault;
  }
  journal_ = std::move(journal);
  name_ = std::move(head.name);
  frames_ = 1;
  journalBytes_ = frame.size();
  overhangs_ = false;
  return "";
}

std::string StateStorage::writeState(std::string_view document, const JournalName& journal) {
  const std::string state = std::string(kLineBegin) + std::to_string(journal.number) + " " +
                            journal.tag + " " + checksumText(document) + std::string(kLineEnd) +
                            std::string(document);
  if (std::string fault = writeFileSafely(disk_, file_, beside_, state); !fault.empty()) {
    return fault;
  }
  stateBytes_ = state.size();
  std::vector<std::uint64_t> numbers;
  std::string fault = findJournals(disk_, file_, numbers);
  for (const std::uint64_t number : numbers) {
    if (fault.empty() && number < journal.number) fault = disk_.remove(journalPath(file_, number));
  }
  return fault;
}

}  // namespace lamp::controller
