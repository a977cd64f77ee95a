#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/services/files.h"
#include "programs/calendar_document.h"
#include "programs/calendar_store.h"
#include "tests/programs/calendar_fixture.h"

// Two editors are two processes: nothing but the file system stands between them.

namespace {

using lamp::ProgramKind;

constexpr int Editors = 3;
constexpr int LeastReadings = 400;
constexpr int MostReadings = 200'000;

/// Tells the processes of a test that it is over: when the test closes its end, or dies.
class EndSignal {
 public:
  EndSignal() {
    if (::pipe(ends_) != 0) throw std::runtime_error("no pipe");
  }
  EndSignal(const EndSignal&) = delete;
  EndSignal& operator=(const EndSignal&) = delete;
  ~EndSignal() { ::close(ends_[0]); }

  void give() { ::close(ends_[1]); }
  bool wasGiven() const {
    pollfd waiting{ends_[0], POLLIN, 0};
    return ::poll(&waiting, 1, 0) > 0;
  }

 private:
  int ends_[2];
};

class CalendarConcurrency : public support::Calendars {
 protected:
  /// Starts a process that saves its own calendar under one name until the end. It returns 0 when
  /// every save worked.
  pid_t startEditor(char16_t digit) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    end_.give();  // the child's copy of the test's end
    lamp::CalendarDocument calendar(ProgramKind::interval);
    bool allSaved = true;
    do {
      calendar.setYear(std::u16string(366, digit));
      allSaved = calendar.save(fileOf("Shared"), XCBasicString(u"Shared")) && allSaved;
    } while (!end_.wasGiven());
    ::_exit(allSaved ? 0 : 1);
  }
  static bool endedWell(pid_t child) {
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  /// The year string of the stored calendar, empty when the file is not whole.
  std::string storedYear(const std::filesystem::path& file) {
    XmlDocument calendar;
    if (!lamp::readCalendar(file, calendar)) return {};
    if (calendar.Root()->Value("name") != u"Shared") return {};
    return calendar.Root()->Value("year").ToUtf8();
  }
  static bool isOneOfTheirs(const std::string& year) {
    return year.size() == 366 && year == std::string(366, year[0]) && year[0] >= '1' &&
           year[0] < '1' + Editors;
  }

  EndSignal end_;
};

TEST_F(CalendarConcurrency, EditorsThatSaveOneNameAtOnceLeaveOneOfTheirCalendarsWhole) {
  lamp::CalendarDocument first(ProgramKind::interval);
  first.setYear(std::u16string(366, u'1'));
  ASSERT_TRUE(first.save(fileOf("Shared"), XCBasicString(u"Shared")));

  std::vector<pid_t> editors;
  for (int editor = 0; editor < Editors; ++editor)
    editors.push_back(startEditor(static_cast<char16_t>(u'1' + editor)));
  std::set<std::string> seen;
  int torn = 0;
  for (int reading = 0; reading < MostReadings; ++reading) {
    const std::string year = storedYear(fileOf("Shared"));
    torn += isOneOfTheirs(year) ? 0 : 1;
    seen.insert(year);
    if (reading >= LeastReadings && seen.size() == Editors) break;
  }
  end_.give();
  EXPECT_TRUE(std::all_of(editors.begin(), editors.end(), &endedWell))
      << "nobody's save fails because another one saves";
  EXPECT_EQ(torn, 0) << "at every moment the name holds a whole calendar";
  EXPECT_EQ(seen.size(), std::size_t(Editors)) << "they did save at the same time";
  EXPECT_TRUE(isOneOfTheirs(storedYear(fileOf("Shared"))));

  std::set<std::string> left;
  for (const auto& entry : std::filesystem::directory_iterator(lamp::calendarFolder()))
    left.insert(entry.path().filename().string());
  EXPECT_EQ(left, (std::set<std::string>{"Shared.xclmc", "Shared.xclmc.previous"}))
      << "one file and the version before it";
  EXPECT_TRUE(isOneOfTheirs(storedYear(host::keptCopy(fileOf("Shared")))));
}

}  // namespace
