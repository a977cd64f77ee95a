#include "tests/support/odd_file.h"

#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr unsigned LongestWait = 30;  // seconds
constexpr uid_t Nobody = 65534;
constexpr off_t Huge = off_t(1) << 40;

void check(bool done, const fs::path& place) {
  if (!done) throw std::runtime_error("can't prepare " + place.string());
}

/// The owner of the test's folders again, as long as it lives.
class Owner {
 public:
  explicit Owner(bool needed) : needed_(needed && ::seteuid(0) == 0) {}
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  ~Owner() {
    if (needed_) static_cast<void>(::seteuid(Nobody) == 0);
  }

 private:
  bool needed_;
};

std::string described(const fs::path& path) {
  struct stat found {};
  if (::lstat(path.c_str(), &found) != 0) return "missing";
  std::string text = std::to_string(found.st_ino) + " mode " + std::to_string(found.st_mode) +
                     " size " + std::to_string(found.st_size) + " changed " +
                     std::to_string(found.st_mtim.tv_sec) + "." +
                     std::to_string(found.st_mtim.tv_nsec);
  if (S_ISLNK(found.st_mode)) text += " to " + fs::read_symlink(path).string();
  return text;
}

}  // namespace

std::string nameOf(Odd odd) {
  switch (odd) {
    case Odd::pipe:
      return "a pipe";
    case Odd::folder:
      return "a folder";
    case Odd::device:
      return "a device";
    case Odd::danglingLink:
      return "a link to nothing";
    case Odd::loopingLink:
      return "a link to itself";
    case Odd::unreadable:
      return "a file of another person";
    case Odd::secondName:
      return "a second name of a stranger's file";
    case Odd::linkToStranger:
      return "a link to a stranger's file";
    case Odd::empty:
      return "an empty file";
    case Odd::truncated:
      return "half a file";
    case Odd::huge:
      return "a huge file";
  }
  return {};
}

OddFile::OddFile(const fs::path& place, Odd odd, std::string_view good) : place_(place), odd_(odd) {
  elsewhere_.write("stranger", good);
  put(good);
  stranger_ = strangerNow();
  thing_ = thingNow();
  if (odd == Odd::unreadable && ::geteuid() == 0) {
    const fs::path folder = place.parent_path();
    check(::chown(folder.c_str(), Nobody, gid_t(-1)) == 0, folder);
    dumpable_ = ::prctl(PR_GET_DUMPABLE);
    otherPerson_ = ::seteuid(Nobody) == 0;
    check(otherPerson_, place);
  }
  ::alarm(LongestWait);
}

OddFile::~OddFile() {
  ::alarm(0);
  if (!otherPerson_) return;
  static_cast<void>(::seteuid(0) == 0);
  ::prctl(PR_SET_DUMPABLE, dumpable_);  // the sanitizers look for leaks at the end
}

void OddFile::put(std::string_view good) const {
  const fs::path stranger = elsewhere_ / "stranger";
  const auto write = [this](std::string_view content) {
    std::ofstream(place_, std::ios::binary) << content;
  };
  switch (odd_) {
    case Odd::pipe:
      return check(::mkfifo(place_.c_str(), 0600) == 0, place_);
    case Odd::folder:
      return check(::mkdir(place_.c_str(), 0700) == 0, place_);
    case Odd::device:
      // Without the right to make one, a link to one that never ends stands for it.
      if (::mknod(place_.c_str(), S_IFCHR | 0600, makedev(1, 5)) != 0)
        fs::create_symlink("/dev/zero", place_);
      return;
    case Odd::danglingLink:
      return fs::create_symlink(elsewhere_ / "nothing", place_);
    case Odd::loopingLink:
      return fs::create_symlink(place_.filename(), place_);
    case Odd::unreadable:
      write(good);
      return check(::chmod(place_.c_str(), 0) == 0, place_);
    case Odd::secondName:
      return fs::create_hard_link(stranger, place_);
    case Odd::linkToStranger:
      return fs::create_symlink(stranger, place_);
    case Odd::empty:
      return write({});
    case Odd::truncated:
      return write(good.substr(0, good.size() / 2));
    case Odd::huge:
      write({});
      return check(::truncate(place_.c_str(), Huge) == 0, place_);
  }
}

std::string OddFile::refusal(host::NamedBy named) const {
  const bool isLink = fs::is_symlink(fs::symlink_status(place_));
  if (isLink && named == host::NamedBy::program) return "It is a link, where none is followed";
  switch (odd_) {
    case Odd::pipe:
      return "It is a pipe, not a file";
    case Odd::folder:
      return "It is a folder";
    case Odd::device:
      return "It is a device, not a file";
    case Odd::danglingLink:
      return "No such file or directory";
    case Odd::loopingLink:
      return "Too many levels of symbolic links";
    case Odd::unreadable:
      return "Permission denied";
    case Odd::huge:
      return "File too large";
    default:
      return {};
  }
}

std::string OddFile::refusalToChange() const {
  if (odd_ == Odd::secondName) return "It has another name, under which it would change, too";
  return odd_ == Odd::huge ? std::string() : refusal(host::NamedBy::program);
}

std::string OddFile::thingNow() const {
  const Owner owner(otherPerson_);
  return described(place_);
}

std::string OddFile::strangerNow() const {
  const Owner owner(otherPerson_);
  const fs::path stranger = elsewhere_ / "stranger";
  // Nothing is made where the link to nothing leads.
  return described(stranger) + "\n" + elsewhere_.read("stranger") + "\n" +
         described(elsewhere_ / "nothing");
}

}  // namespace support
