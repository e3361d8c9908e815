#include "platform/FtpClient.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/Channel.h"
#include "platform/CurlLibrary.h"
#include "platform/Files.h"
#include "platform/HostAddress.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;

constexpr long kConnectSeconds = 5;
constexpr curl_off_t kLeastRate = 100'000 / 60;  // bytes a second, the patience aside
constexpr int kCancelPollMs = 100;

// FTP reply codes.
constexpr std::size_t kCodeLength = 3;
constexpr int kFileStatus = 213;  // here always the answer to SIZE
constexpr int kPassive = 227;     // what comes next is the file
constexpr int kFirstRefusal = 400;
constexpr int kNotAvailable = 421;
constexpr int kLocalError = 451;
constexpr int kNoSpace = 452;
constexpr int kNoSuchFile = 550;
constexpr int kQuotaExceeded = 552;
constexpr int kNameNotAllowed = 553;

constexpr std::string_view kNameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

// An address typed by a user must not bring a path, a login or another port with it.
bool isPlainHost(const std::string& host) {
  return !host.empty() && host.find_first_not_of(std::string(kNameCharacters) + ".:-") == host.npos;
}

// A trailing slash would ask for the list of a folder, a line end begin another command.
bool isFilePath(const std::string& path) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  return path.size() > 1 && path.front() == '/' && path.back() != '/' &&
         std::none_of(path.begin(), path.end(), isControl);
}

std::string makeUrl(const std::string& host, std::uint16_t port, const std::string& path) {
  const bool isVersion6 = host.find(':') != host.npos;
  std::string url =
      format(isVersion6 ? "ftp://[%s]:%u/%%2F" : "ftp://%s:%u/%%2F", host.c_str(), unsigned{port});
  for (const char c : path.substr(1)) {
    const bool plain =
        c == '/' || c == '.' || c == '-' || c == '_' || kNameCharacters.find(c) != kNameCharacters.npos;
    url += plain ? std::string(1, c) : format("%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
  return url;
}

// The number after a reply's code.
std::optional<std::uint64_t> sizeIn(std::string_view reply) {
  reply.remove_prefix(std::min(reply.size(), kCodeLength + 1));
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(reply.data(), reply.data() + reply.size(), size);
  if (error != std::errc{}) return std::nullopt;
  return size;
}

// The library calls both of its objects `void`, so each needs a type of its own to release it.
struct ReleaseEasy {
  const CurlLibrary& curl;
  void operator()(CURL* easy) const { curl.easyCleanup(easy); }
};
struct ReleaseMulti {
  const CurlLibrary& curl;
  void operator()(CURLM* multi) const { curl.multiCleanup(multi); }
};

struct ReleaseList {
  const CurlLibrary& curl;
  void operator()(curl_slist* list) const { curl.slistFreeAll(list); }
};

}  // namespace

// Where transfers run, and the connection that the last one has left for the next.
class FtpClient::Line {
 public:
  explicit Line(const CurlLibrary& curl) : curl_(curl), multi_(curl.multiInit(), ReleaseMulti{curl}) {}
  // The library would say farewell and wait for the answer, minutes long where the panel has gone silent.
  ~Line() {
    if (isOpen()) cutChannel(static_cast<int>(control_));
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  [[nodiscard]] const CurlLibrary& curl() const { return curl_; }
  [[nodiscard]] CURLM* multi() const { return multi_.get(); }
  [[nodiscard]] bool isOpen() const { return control_ != CURL_SOCKET_BAD; }
  void keep(curl_socket_t control) { control_ = control; }

 private:
  const CurlLibrary& curl_;
  curl_socket_t control_ = CURL_SOCKET_BAD;
  std::unique_ptr<CURLM, ReleaseMulti> multi_;
};

namespace {

// One file on a connection.
template <class Line>
class Transfer {
 public:
  using Result = FtpClient::Result;

  Transfer(Line& line, bool kept, const std::string& url, const FtpClient::Login& login,
           const std::atomic<bool>& cancelled, std::chrono::seconds patience)
      : line_(line),
        curl_(line.curl()),
        kept_(kept),
        wasOpen_(line.isOpen()),
        cancelled_(cancelled),
        patience_(patience),
        easy_(curl_.easyInit(), ReleaseEasy{curl_}) {
    if (!easy_ || line_.multi() == nullptr) return;
    set(CURLOPT_URL, url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "ftp");
    set(CURLOPT_PROXY, "");
    set(CURLOPT_USERNAME, login.user.c_str());
    set(CURLOPT_PASSWORD, login.secret.c_str());
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L);  // giving up must not wait for a name server
    set(CURLOPT_FRESH_CONNECT, kept ? 0L : 1L);
    set(CURLOPT_FORBID_REUSE, kept ? 0L : 1L);
    set(CURLOPT_FTP_USE_EPSV, 0L);
    set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
    set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    set(CURLOPT_FTP_CREATE_MISSING_DIRS, 0L);
    set(CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(patience.count()));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(patience.count()));
    set(CURLOPT_XFERINFOFUNCTION, &Transfer::checkCancelled);
    set(CURLOPT_XFERINFODATA, this);
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_HEADERFUNCTION, &Transfer::hear);
    set(CURLOPT_HEADERDATA, this);
  }

  ~Transfer() {
    if (added_) curl_.multiRemoveHandle(line_.multi(), easy_.get());
  }
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  // The connection was left by the transfer before, and has ended since, without a word or with one: that is
  // no failure of this one, which had not come to its file: the bytes would have had a new connection, too.
  [[nodiscard]] bool cameTooLate(Result result) const {
    const bool ended = result == Result::kCut || result == Result::kFailed || refusal_ == kNotAvailable;
    return ended && reused();
  }

  // The library would believe the size that the server tells, and keep no more than that. So it is asked for
  // here, and compared.
  Result receive(const std::string& remotePath, std::string& bytes) {
    target_ = &bytes;
    bytes.clear();  // of a try before
    const std::unique_ptr<curl_slist, ReleaseList> commands(
        curl_.slistAppend(nullptr, ("*SIZE " + remotePath).c_str()), ReleaseList{curl_});
    set(CURLOPT_PREQUOTE, commands.get());
    set(CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
    set(CURLOPT_WRITEFUNCTION, &Transfer::take);
    set(CURLOPT_WRITEDATA, this);
    const Result result = run();
    set(CURLOPT_PREQUOTE, static_cast<curl_slist*>(nullptr));
    const bool whole = !announced_ || *announced_ == bytes.size();
    return result == Result::kDone && !whole ? Result::kCut : result;
  }

  Result send(std::string_view bytes) {
    source_ = bytes;
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(bytes.size()));
    set(CURLOPT_READFUNCTION, &Transfer::give);
    set(CURLOPT_READDATA, this);
    // The system takes a whole macro at once; that the panel has it is told by the server's answer only.
    const auto size = static_cast<curl_off_t>(bytes.size());
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(patience_.count() + size / kLeastRate));
    return run();
  }

 private:
  template <class Value>
  void set(CURLoption option, Value value) {
    if (easy_ && curl_.easySetopt(easy_.get(), option, value) != CURLE_OK) refused_ = true;
  }

  template <class Value>
  Value info(CURLINFO what) const {
    Value value = 0;
    curl_.easyGetinfo(easy_.get(), what, &value);
    return value;
  }

  Result run() {
    if (!easy_ || line_.multi() == nullptr || refused_) return Result::kFailed;
    added_ = curl_.multiAddHandle(line_.multi(), easy_.get()) == CURLM_OK;
    int running = added_ ? 1 : 0;
    // A reply that comes at once may leave the library (7.88) waiting for nothing before it goes on: so
    // whatever has moved is followed by another look at once.
    int wait = 0;
    while (running > 0) {
      if (cancelled_) return Result::kCancelled;
      if (const auto tooLong = takesTooLong()) return *tooLong;
      if (curl_.multiPerform(line_.multi(), &running) != CURLM_OK) return Result::kFailed;
      int ready = 0;
      if (running > 0) curl_.multiPoll(line_.multi(), nullptr, 0, wait, &ready);
      wait = ready > 0 ? 0 : std::clamp(2 * wait, 1, kCancelPollMs);
    }
    if (kept_) {
      curl_socket_t control = CURL_SOCKET_BAD;
      curl_.easyGetinfo(easy_.get(), CURLINFO_ACTIVESOCKET, &control);
      line_.keep(control);
    }
    int left = 0;
    const CURLMsg* const message = curl_.multiInfoRead(line_.multi(), &left);
    return message && message->msg == CURLMSG_DONE ? result(message->data.result) : Result::kFailed;
  }

  [[nodiscard]] bool reused() const { return wasOpen_ && info<long>(CURLINFO_NUM_CONNECTS) == 0; }

  // The library judges by the average speed of some seconds, so it takes much longer to see that a transfer
  // stopped after its first bytes.
  std::optional<Result> takesTooLong() {
    const curl_off_t moved =
        info<curl_off_t>(CURLINFO_SIZE_DOWNLOAD_T) + info<curl_off_t>(CURLINFO_SIZE_UPLOAD_T);
    const auto now = Clock::now();
    if (moved_ == 0) firstMove_ = now;
    if (std::exchange(moved_, moved) != moved) lastMove_ = now;
    if (moved == 0) return std::nullopt;
    if (now - lastMove_ > patience_) return Result::kStalled;
    if (now - firstMove_ > patience_ + std::chrono::seconds(moved / kLeastRate)) return Result::kTooSlow;
    return std::nullopt;
  }

  Result result(CURLcode code) const {
    if (tooLarge_) return Result::kFailed;
    if (refusal_ == kLocalError && code != CURLE_OK) return Result::kPanelError;
    const bool connected = reused() || info<curl_off_t>(CURLINFO_CONNECT_TIME_T) > 0;
    switch (static_cast<int>(code)) {
      case CURLE_OK:
        return Result::kDone;
      case CURLE_LOGIN_DENIED:
        return Result::kRefusedLogin;
      case CURLE_REMOTE_FILE_NOT_FOUND:
        return Result::kNotFound;
      case CURLE_COULDNT_RESOLVE_HOST:
      case CURLE_COULDNT_CONNECT:
        return Result::kUnreachable;
      case CURLE_OPERATION_TIMEDOUT:
        // The library takes any 421 for this: also one that ends a service in the middle of a file.
        if (refusal_ == kNotAvailable) return passive_ ? Result::kCut : Result::kUnreachable;
        return connected ? Result::kStalled : Result::kUnreachable;
      case CURLE_PARTIAL_FILE:
      case CURLE_SEND_ERROR:
      case CURLE_RECV_ERROR:
      case CURLE_GOT_NOTHING:
        return Result::kCut;
      case CURLE_REMOTE_DISK_FULL:
        return Result::kFull;
      case CURLE_UPLOAD_FAILED:
        if (refusal_ == kNoSpace || refusal_ == kQuotaExceeded) return Result::kFull;
        return refusal_ == kNoSuchFile || refusal_ == kNameNotAllowed ? Result::kNotFound : Result::kFailed;
      case CURLE_ABORTED_BY_CALLBACK:
        return Result::kCancelled;
      default:
        return Result::kFailed;
    }
  }

  // While the library waits for the answer to its farewell it asks only here.
  static int checkCancelled(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    return static_cast<Transfer*>(self)->cancelled_ ? 1 : 0;
  }

  // One line of the server's. The library itself keeps only the last reply, which is the one to its farewell.
  static std::size_t hear(const char* line, std::size_t one, std::size_t count, void* self) {
    const int code = parseInt({line, std::min<std::size_t>(one * count, kCodeLength)});
    auto& transfer = *static_cast<Transfer*>(self);
    if (code >= kFirstRefusal) transfer.refusal_ = code;
    if (code == kPassive) transfer.passive_ = true;
    if (code == kFileStatus) transfer.announced_ = sizeIn({line, one * count});
    return one * count;
  }

  static std::size_t take(const char* bytes, std::size_t one, std::size_t count, void* self) {
    auto& transfer = *static_cast<Transfer*>(self);
    std::string& target = *transfer.target_;
    try {
      // A panel that sends without end must not fill the memory.
      if (target.size() + one * count <= kLargestFile)
        target.append(bytes, one * count);
      else
        transfer.tooLarge_ = true;
    } catch (const std::bad_alloc&) {
      transfer.tooLarge_ = true;
    }
    return transfer.tooLarge_ ? 0 : one * count;
  }

  static std::size_t give(char* space, std::size_t one, std::size_t count, void* self) {
    std::string_view& source = static_cast<Transfer*>(self)->source_;
    const std::size_t given = source.copy(space, one * count);
    source.remove_prefix(given);
    return given;
  }

  Line& line_;
  const CurlLibrary& curl_;
  const bool kept_;     // the connection is left for the next one
  const bool wasOpen_;  // it may be that of the one before
  const std::atomic<bool>& cancelled_;
  const std::chrono::seconds patience_;
  std::unique_ptr<CURL, ReleaseEasy> easy_;
  bool added_ = false;
  bool refused_ = false;  // an option that the library does not take
  std::string* target_ = nullptr;
  std::string_view source_;                 // what is still to be sent
  std::optional<std::uint64_t> announced_;  // bytes, by the server
  int refusal_ = 0;                         // the server's last reply that was one
  bool passive_ = false;                    // the file may have been asked for, or begun
  bool tooLarge_ = false;                   // for the memory
  curl_off_t moved_ = 0;
  Clock::time_point firstMove_, lastMove_;
};

}  // namespace

FtpClient::FtpClient(const std::string& host, std::uint16_t port, Login login, Connections connections)
    : host_(decimalAddress(host)), port_(port), login_(std::move(login)), connections_(connections) {}

FtpClient::~FtpClient() = default;

FtpClient::Result FtpClient::get(const std::string& remotePath, std::string& bytes,
                                 std::chrono::seconds patience) {
  bytes.clear();
  return run(remotePath, patience, [&](auto& transfer) { return transfer.receive(remotePath, bytes); });
}

FtpClient::Result FtpClient::put(std::string_view bytes, const std::string& remotePath) {
  return run(remotePath, kPatience, [&](auto& transfer) { return transfer.send(bytes); });
}

template <class Use>
FtpClient::Result FtpClient::run(const std::string& remotePath, std::chrono::seconds patience,
                                 const Use& use) {
  if (cancelled_) return Result::kCancelled;
  if (!isPlainHost(host_)) return Result::kUnreachable;
  if (!isFilePath(remotePath)) return Result::kNotFound;
  const CurlLibrary* curl = CurlLibrary::get();
  if (curl == nullptr) return Result::kNoLibrary;
  const bool kept = connections_ == Connections::kKept;
  while (true) {
    if (!line_) line_ = std::make_unique<Line>(*curl);
    bool again = false;
    Result result = Result::kFailed;
    {
      Transfer transfer(*line_, kept, makeUrl(host_, port_, remotePath), login_, cancelled_, patience);
      result = use(transfer);
      again = transfer.cameTooLate(result);
    }
    // What has gone wrong once is not built upon.
    if (!kept || (result != Result::kDone && result != Result::kNotFound)) line_.reset();
    if (!again) return result;
  }
}

void FtpClient::cancel() { cancelled_ = true; }

const char* FtpClient::describe(Result result) {
  switch (result) {
    case Result::kDone:
      return "the transfer is done";
    case Result::kRefusedLogin:
      return "the panel refused the login";
    case Result::kNotFound:
      return "the panel has no such file or folder";
    case Result::kUnreachable:
      return "the panel cannot be reached";
    case Result::kStalled:
      return "the panel does not answer";
    case Result::kTooSlow:
      return "the panel is too slow";
    case Result::kCut:
      return "the connection was cut";
    case Result::kPanelError:
      return "the panel broke off with an error of its own (451), such as a file that it cannot read or "
             "write";
    case Result::kFull:
      return "the panel's disk is full";
    case Result::kLocalFile:
      return "the local file cannot be read or written";
    case Result::kUnreadable:
      return "what the panel sent is no macro";
    case Result::kAltered:
      return "the panel stored something else than what was sent";
    case Result::kCancelled:
      return "the transfer was cancelled";
    case Result::kNoLibrary:
      return "the transfer library (libcurl4) cannot be loaded; is it installed?";
    case Result::kFailed:
      return "the transfer failed";
  }
  return "";
}

}  // namespace tessaly
