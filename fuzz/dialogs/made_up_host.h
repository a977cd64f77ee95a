#pragma once

#include <string>

#include "fuzz/dialogs/memory_files.h"
#include "fuzz/dialogs/random_user.h"
#include "fuzz/input.h"
#include "host/services/services.h"
#include "workbench/device_catalogue.h"

namespace fuzz {

/// A controller that answers reads with the documents of an input, or fails, as the input says.
/// What is sent to it must be XML and properly addressed.
class MadeUpController : public host::CommandChannel {
 public:
  /// The first two documents of @p input are the replies.
  explicit MadeUpController(Input& input);
  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;
  /// A reply, 0 or 1, as it is read; one that is no XML has no root.
  XmlDocument reply(std::size_t number) const;
  /// The same as it stands in the input.
  const std::string& text(std::size_t number) const { return replies_[number]; }
  /// How many writes came.
  int writes() const { return writes_; }

 private:
  Input& input_;
  std::string replies_[2];
  int writes_ = 0;
};

/// The services of a program without a window, for one input: a user and a controller as the input
/// says, a clock that stands, ids that count, a configuration with one lamp manager, and a disk in
/// memory.
class MadeUpHost {
 public:
  /// @p folder is the one of the configuration.
  explicit MadeUpHost(Input& input, const std::filesystem::path& folder = "/made/up/configuration");
  MadeUpHost(const MadeUpHost&) = delete;
  MadeUpHost& operator=(const MadeUpHost&) = delete;
  ~MadeUpHost();

  /// Opens a dialog. One that ended with Cancel must have sent nothing since.
  void show(XCBaseDlg& dialog);

  /// The lamp manager's element.
  XmlDocument::XmlNode* device();
  void setClock(const XCDateTime& time) { clock_.time = time; }
  MemoryFiles& files() { return files_; }
  RandomUser& user() { return user_; }
  MadeUpController& controller() { return controller_; }

 private:
  // Loaded from the real disk, once, before the one in memory takes its place.
  struct Texts {
    Texts();
  };
  class StandingClock : public host::Clock {
   public:
    XCDateTime now() const override { return time; }
    XCDateTime time{2024, 2, 29, 10, 0, 0};
  };
  class CountingIds : public host::IdSource {
    std::array<std::uint8_t, 16> next() override;
    std::uint32_t given_ = 0;
  };
  class Settings : public host::EditorSettings {
    bool verifyConnection(bool) const override { return true; }
  };

  Texts texts_;
  MadeUpController controller_;
  RandomUser user_;
  MemoryFiles files_;
  StandingClock clock_;
  CountingIds ids_;
  Settings settings_;
  workbench::DeviceCatalogue catalogue_;
  int writesWhenClosed_ = 0;
};

}  // namespace fuzz
