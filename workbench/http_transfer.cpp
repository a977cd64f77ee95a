#include "workbench/http_transfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>
#include <system_error>

#include "workbench/sha256.h"
#include "workbench/wire/media_type.h"

namespace workbench {
namespace {

// A window is served at least this often while nothing moves.
constexpr int PumpMilliseconds = 10;
constexpr int WaitMilliseconds = 1'000;
// As much of an error's body as its text of 2,000 characters can need.
constexpr std::size_t ErrorBytes = 8'000;
constexpr long Ok = 200;
// Headers that go on without end are no answer either.
constexpr std::size_t HeaderBytes = 256 * 1024;

class Library {
 public:
  Library() { curl_global_init(CURL_GLOBAL_DEFAULT); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { curl_global_cleanup(); }
};

struct EasyCloser {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiCloser {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
struct ListCloser {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

// One POST on handles of its own: an exchange that a window starts while another runs does not
// disturb it.
class Transfer {
 public:
  Transfer(const HttpPost& post, ExchangeProgress* progress) : post_(post), progress_(progress) {}
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  ~Transfer() {
    if (multi_ && easy_) curl_multi_remove_handle(multi_.get(), easy_.get());
  }

  HttpAnswer run();

 private:
  bool prepare();
  void setRequest();
  void setRules();
  bool looksAtCertificate() const { return post_.onlyLook || !post_.onlyCertificate.empty(); }
  void takeFingerprint();
  bool perform();
  void tellProgress();
  HttpAnswer finish(CURLcode code);
  HttpAnswer::End endOf(CURLcode code) const;
  long status() const;
  long systemError() const;

  static int prerequisite(void* self, char*, char*, int, int);
  static std::size_t header(char* data, std::size_t size, std::size_t count, void* self);
  static std::size_t receive(char* data, std::size_t size, std::size_t count, void* self);
  bool take(std::string_view piece);
  static int progress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);

  const HttpPost& post_;
  ExchangeProgress* progress_;
  std::unique_ptr<curl_slist, ListCloser> headers_;
  std::unique_ptr<CURL, EasyCloser> easy_;
  std::unique_ptr<CURLM, MultiCloser> multi_;
  char error_[CURL_ERROR_SIZE] = {};
  std::string body_;
  std::size_t received_ = 0;
  std::size_t headerBytes_ = 0;
  curl_off_t sentNow_ = 0;
  curl_off_t receivedNow_ = 0;
  std::string fingerprint_;
  bool refusedCertificate_ = false;
  bool headersEnded_ = false;
  bool moved_ = false;
  bool tooLarge_ = false;
  bool noMemory_ = false;
  bool enoughOfError_ = false;
  bool cancelled_ = false;
};

bool Transfer::prepare() {
  static const Library library;
  multi_.reset(curl_multi_init());
  easy_.reset(curl_easy_init());
  for (const char* header : {"Content-Type: application/xml", "Expect:"}) {
    curl_slist* longer = curl_slist_append(headers_.get(), header);
    if (longer == nullptr) return false;
    static_cast<void>(headers_.release());
    headers_.reset(longer);
  }
  if (!multi_ || !easy_) return false;
  setRequest();
  setRules();
  return curl_multi_add_handle(multi_.get(), easy_.get()) == CURLM_OK;
}

void Transfer::setRequest() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, error_);
  curl_easy_setopt(easy, CURLOPT_URL, post_.url.c_str());
  curl_easy_setopt(easy, CURLOPT_POST, 1L);
  curl_easy_setopt(easy, CURLOPT_POSTFIELDS, post_.body.data());  // not copied
  curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(post_.body.size()));
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers_.get());
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Transfer::header);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::receive);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &Transfer::progress);
  curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
  curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
}

void Transfer::setRules() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
  // Neither the environment nor a netrc file has a say.
  curl_easy_setopt(easy, CURLOPT_PROXY, "");
  curl_easy_setopt(easy, CURLOPT_NOPROXY, "*");
  curl_easy_setopt(easy, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(post_.connectTime.count()));
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(post_.wholeTime.count()));
  // A name that the resolver is still looking for does not hold up a cancelled exchange.
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  curl_easy_setopt(easy, CURLOPT_TCP_NODELAY, 1L);
  curl_easy_setopt(easy, CURLOPT_FRESH_CONNECT, 1L);
  curl_easy_setopt(easy, CURLOPT_FORBID_REUSE, 1L);
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
  if (looksAtCertificate()) {
    // The certificate is compared by prerequisite(), when it is there and before a byte is sent.
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 0L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 0L);
    curl_easy_setopt(easy, CURLOPT_CERTINFO, 1L);
    curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, &Transfer::prerequisite);
    curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
  }
  if (!post_.authorities.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, post_.authorities.c_str());
}

// Of the first certificate, the controller's own, as the library tells it.
void Transfer::takeFingerprint() {
  constexpr std::string_view Name = "Cert:";
  curl_certinfo* chain = nullptr;
  if (curl_easy_getinfo(easy_.get(), CURLINFO_CERTINFO, &chain) != CURLE_OK || chain == nullptr ||
      chain->num_of_certs < 1)
    return;
  for (const curl_slist* entry = chain->certinfo[0]; entry != nullptr; entry = entry->next)
    if (const std::string_view text(entry->data); text.starts_with(Name))
      fingerprint_ = certificateFingerprint(text);
}

int Transfer::prerequisite(void* self, char*, char*, int, int) {
  auto& transfer = *static_cast<Transfer*>(self);
  try {
    transfer.takeFingerprint();
  } catch (const std::bad_alloc&) {
    transfer.noMemory_ = true;
    return CURL_PREREQFUNC_ABORT;
  }
  transfer.refusedCertificate_ = transfer.post_.onlyLook || transfer.fingerprint_.empty() ||
                                 transfer.fingerprint_ != transfer.post_.onlyCertificate;
  return transfer.refusedCertificate_ ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

long Transfer::status() const {
  long code = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &code);
  return code;
}

// The library takes headers that break off for an answer: it has one when their empty line came.
std::size_t Transfer::header(char* data, std::size_t size, std::size_t count, void* self) {
  const std::string_view line(data, size * count);
  auto& transfer = *static_cast<Transfer*>(self);
  // An interim answer is followed by another; lines behind a chunked body change nothing.
  if (line.starts_with("HTTP/")) transfer.headersEnded_ = false;
  if (line == "\r\n" || line == "\n") transfer.headersEnded_ = true;
  transfer.headerBytes_ += line.size();
  transfer.tooLarge_ = transfer.headerBytes_ > HeaderBytes;
  if (transfer.tooLarge_) return line.size() + 1;
  return line.size();
}

long Transfer::systemError() const {
  long error = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &error);
  return error;
}

std::size_t Transfer::receive(char* data, std::size_t size, std::size_t count, void* self) {
  const std::size_t bytes = size * count;
  // Anything but the number of bytes given makes the library stop.
  return static_cast<Transfer*>(self)->take({data, bytes}) ? bytes : bytes + 1;
}

bool Transfer::take(std::string_view piece) {
  try {
    if (status() != Ok) {
      body_ += piece.substr(0, ErrorBytes - body_.size());
      enoughOfError_ = body_.size() >= ErrorBytes;
      return !enoughOfError_;
    }
    received_ += piece.size();
    tooLarge_ = received_ > post_.replyBytes;
    if (!tooLarge_ && post_.keepBody) body_ += piece;
    return !tooLarge_;
  } catch (const std::bad_alloc&) {
    noMemory_ = true;
    return false;
  }
}

int Transfer::progress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) {
  auto& transfer = *static_cast<Transfer*>(self);
  transfer.moved_ =
      transfer.moved_ || received != transfer.receivedNow_ || sent != transfer.sentNow_;
  transfer.receivedNow_ = received;
  transfer.sentNow_ = sent;
  return 0;
}

void Transfer::tellProgress() {
  if (!moved_) return;
  moved_ = false;
  progress_->moved(static_cast<std::uint64_t>(sentNow_), post_.body.size(),
                   static_cast<std::uint64_t>(receivedNow_));
}

// Runs the transfer to its end. False when it was cancelled or the library failed.
bool Transfer::perform() {
  int running = 1;
  for (;;) {
    if (curl_multi_perform(multi_.get(), &running) != CURLM_OK) return false;
    if (progress_ != nullptr) {
      tellProgress();
      cancelled_ = !progress_->pump();
      if (cancelled_) return false;
    }
    if (running == 0) return true;
    const int wait = progress_ != nullptr ? PumpMilliseconds : WaitMilliseconds;
    if (curl_multi_poll(multi_.get(), nullptr, 0, wait, nullptr) != CURLM_OK) return false;
  }
}

HttpAnswer::End Transfer::endOf(CURLcode code) const {
  using End = HttpAnswer::End;
  if (refusedCertificate_) return End::otherCertificate;
  if (tooLarge_) return End::tooLarge;
  if (noMemory_) return End::noMemory;
  if (enoughOfError_) return End::complete;
  switch (code) {
    case CURLE_OK:
      return headersEnded_ ? End::complete : End::closed;
    case CURLE_COULDNT_CONNECT:
      // No way to the host is not the host's refusal.
      return systemError() == ECONNREFUSED ? End::refused : End::failed;
    case CURLE_COULDNT_RESOLVE_HOST:
      return End::hostNotFound;
    case CURLE_OPERATION_TIMEDOUT:
      return End::timedOut;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
      return End::closed;
    case CURLE_PEER_FAILED_VERIFICATION:
      return End::certificate;
    case CURLE_URL_MALFORMAT:
      return End::address;
    default:
      return End::failed;
  }
}

HttpAnswer Transfer::finish(CURLcode code) {
  HttpAnswer answer;
  answer.end = endOf(code);
  answer.cause = error_[0] != '\0' ? error_ : curl_easy_strerror(code);
  if (code == CURLE_COULDNT_CONNECT && systemError() != 0)
    answer.cause = std::generic_category().message(static_cast<int>(systemError()));
  answer.fingerprint = fingerprint_;
  answer.status = static_cast<int>(status());
  const char* type = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_TYPE, &type);
  answer.plainText = type != nullptr && isMediaType(type, "text/plain");
  answer.body = std::move(body_);
  return answer;
}

HttpAnswer Transfer::run() {
  if (!prepare()) return {.cause = "there is not enough memory"};
  const bool ran = perform();
  if (cancelled_) return {.end = HttpAnswer::End::cancelled};
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
  if (!ran || message == nullptr) return {.cause = "the network library failed"};
  return finish(message->data.result);
}

}  // namespace

HttpAnswer httpPost(const HttpPost& post, ExchangeProgress* progress) {
  return Transfer(post, progress).run();
}

}  // namespace workbench
