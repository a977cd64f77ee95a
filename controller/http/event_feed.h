#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_set>

struct MHD_Connection;
struct MHD_Response;

namespace lamp::controller {

/// What has become new since the last time.
struct News {
  std::string changed;  ///< for those who have what came before; empty where nothing is new
  std::string whole;    ///< for those who have nothing
};

/// Sends the same events to many viewers: what is new is made once, by a thread of the feed's own,
/// however many there are, and only while there are any.
class EventFeed {
 public:
  using Source = std::function<News()>;

  /// `source` is asked four times a second, and afresh (everything is new) where `restart` says so.
  explicit EventFeed(std::function<News(bool restart)> source);
  ~EventFeed();
  EventFeed(const EventFeed&) = delete;
  EventFeed& operator=(const EventFeed&) = delete;

  /// The stream of one more viewer; null where there are too many.
  MHD_Response* open(MHD_Connection* connection);
  /// Ends every stream, those to come too.
  void end();

 private:
  struct Viewer;
  static long read(void* viewer, std::uint64_t position, char* buffer, std::size_t size);
  static void close(void* viewer);
  void work(const std::stop_token& stop);
  void publish(News news);
  long give(Viewer& viewer, char* buffer, std::size_t size);

  std::function<News(bool)> source_;
  std::mutex mutex_;
  std::condition_variable_any waking_;
  std::unordered_set<Viewer*> viewers_;
  std::uint64_t version_ = 0;
  std::shared_ptr<const std::string> changed_;
  std::shared_ptr<const std::string> whole_;  // null while nobody looks
  int quietRounds_ = 0;
  bool ended_ = false;
  std::jthread thread_;
};

}  // namespace lamp::controller
