#include "controller/http/event_feed.h"

#include <microhttpd.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace lamp::controller {
namespace {

constexpr std::size_t MostViewers = 800;
constexpr std::chrono::milliseconds Pace{250};
// A comment now and then tells a dead connection from a quiet one.
constexpr int QuietRounds = 40;
constexpr const char* Comment = ": still here\n\n";
constexpr std::size_t PieceBytes = 16UL * 1024;

std::shared_ptr<const std::string> event(const std::string& json) {
  return std::make_shared<const std::string>("data: " + json + "\n\n");
}

}  // namespace

struct EventFeed::Viewer {
  EventFeed& feed;
  MHD_Connection* connection;
  std::uint64_t seen = 0;
  std::shared_ptr<const std::string> sending;
  std::size_t sent = 0;
  bool suspended = false;
};

EventFeed::EventFeed(std::function<News(bool)> source)
    : source_(std::move(source)), thread_([this](const std::stop_token& stop) { work(stop); }) {}

EventFeed::~EventFeed() {
  end();
}

MHD_Response* EventFeed::open(MHD_Connection* connection) {
  const std::lock_guard lock(mutex_);
  if (viewers_.size() >= MostViewers || ended_) return nullptr;
  auto viewer = std::make_unique<Viewer>(Viewer{*this, connection, 0, nullptr, 0, false});
  MHD_Response* response =
      MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, PieceBytes, read, viewer.get(), close);
  if (response == nullptr) return nullptr;
  viewers_.insert(viewer.release());
  waking_.notify_all();
  return response;
}

void EventFeed::end() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    for (Viewer* viewer : viewers_) {
      if (std::exchange(viewer->suspended, false)) MHD_resume_connection(viewer->connection);
    }
  }
  thread_.request_stop();
}

long EventFeed::read(void* viewer, std::uint64_t, char* buffer, std::size_t size) {
  auto* own = static_cast<Viewer*>(viewer);
  return own->feed.give(*own, buffer, size);
}

void EventFeed::close(void* viewer) {
  auto* own = static_cast<Viewer*>(viewer);
  const std::lock_guard lock(own->feed.mutex_);
  own->feed.viewers_.erase(own);
  delete own;
}

// Whoever has everything sleeps until there is more.
long EventFeed::give(Viewer& viewer, char* buffer, std::size_t size) {
  const std::lock_guard lock(mutex_);
  if (ended_) return MHD_CONTENT_READER_END_OF_STREAM;
  if (viewer.sending == nullptr || viewer.sent == viewer.sending->size()) {
    if (whole_ == nullptr || viewer.seen == version_) {
      viewer.sending = nullptr;
      viewer.suspended = true;
      MHD_suspend_connection(viewer.connection);
      return 0;
    }
    viewer.sending = viewer.seen + 1 == version_ ? changed_ : whole_;
    viewer.sent = 0;
    viewer.seen = version_;
  }
  const std::size_t count = std::min(size, viewer.sending->size() - viewer.sent);
  std::memcpy(buffer, viewer.sending->data() + viewer.sent, count);
  viewer.sent += count;
  return static_cast<long>(count);
}

void EventFeed::publish(News news) {
  const std::lock_guard lock(mutex_);
  const bool comments = news.changed.empty() && ++quietRounds_ >= QuietRounds;
  if (news.changed.empty() && !comments) return;
  quietRounds_ = 0;
  changed_ = comments ? std::make_shared<const std::string>(Comment) : event(news.changed);
  if (!comments) whole_ = event(news.whole);
  // The first version is none that anybody could have gone on from.
  version_ += version_ == 0 ? 2 : 1;
  for (Viewer* viewer : viewers_) {
    if (std::exchange(viewer->suspended, false)) MHD_resume_connection(viewer->connection);
  }
}

void EventFeed::work(const std::stop_token& stop) {
  while (!stop.stop_requested()) {
    bool restart = false;
    {
      std::unique_lock lock(mutex_);
      if (viewers_.empty()) whole_ = nullptr;
      if (!waking_.wait(lock, stop, [this] { return !viewers_.empty(); })) return;
      restart = whole_ == nullptr;
    }
    publish(source_(restart));
    std::unique_lock lock(mutex_);
    waking_.wait_for(lock, stop, Pace, [] { return false; });
  }
}

}  // namespace lamp::controller
