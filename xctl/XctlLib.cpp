#include "xctl/XctlLib.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <exception>
#include <iostream>
#include <thread>

#include "platform/ThreadAnnotations.h"
#include "xctl/JsonLine.h"
#include "xctl/Session.h"

using tessaly::Mutex;
using tessaly::MutexLock;
using tessaly::Session;

namespace {

// No exception leaves the library: what cannot be done for lack of memory or threads counts as refused.
template <typename Attempt>
bool done(const Attempt& attempt) {
  try {
    return attempt();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

// Sockets of this system need no start-up; the maker's library does.
void xctlInit() {}

bool ParameterValue::getIntValue(int& value) const {
  int number = 0;
  const char* end = text_.data() + text_.size();
  const auto [stop, error] = std::from_chars(text_.data(), end, number);
  if (error != std::errc{} || stop != end) return false;
  value = number;
  return true;
}

void ParameterList::addString(const std::string& name, const std::string& value) {
  items_.emplace_back(name, value);
}

std::string ParameterList::toString() const {
  std::string text;
  for (const auto& [name, value] : items_) {
    if (!text.empty()) text += ", ";
    text += name + "=\"" + value + "\"";
  }
  return text;
}

void ParameterList::print() const { std::cout << toString(); }

class XCTLConnection::Impl {
 public:
  explicit Impl(ETransport transport) : transport_(transport) {}
  ~Impl();

  bool connect(const std::string& host, std::uint16_t port, IXCTLClient* client);
  void disconnect();
  std::shared_ptr<Session> current();

 private:
  struct Running {
    std::shared_ptr<Session> session;
    std::thread thread;
  };

  std::shared_ptr<Session> start(const std::string& host, std::uint16_t port, IXCTLClient* client);
  void finish(Session& session);
  void joinEnded();

  const ETransport transport_;
  Mutex mutex_;  // held for these containers only
  std::shared_ptr<Session> current_ GUARDED_BY(mutex_);
  std::vector<Running> running_ GUARDED_BY(mutex_);  // every session whose thread has not been joined
};

XCTLConnection::Impl::~Impl() {
  disconnect();
  std::vector<Running> left;
  {
    const MutexLock guard(mutex_);
    left.swap(running_);
  }
  for (Running& running : left) {
    running.session->end();
    running.thread.join();
  }
}

std::shared_ptr<Session> XCTLConnection::Impl::current() {
  const MutexLock guard(mutex_);
  return current_;
}

bool XCTLConnection::Impl::connect(const std::string& host, std::uint16_t port, IXCTLClient* client) {
  if (transport_ != kXctlTransportTcp || client == nullptr) return false;
  disconnect();
  const std::shared_ptr<Session> session = start(host, port, client);
  return session && session->waitOpen();
}

// Of two attempts at once the later one stays; nothing for the one that gave way. A thread starts only once
// the end of every earlier session has been reported, so that the statuses come in order.
std::shared_ptr<Session> XCTLConnection::Impl::start(const std::string& host, std::uint16_t port,
                                                     IXCTLClient* client) {
  auto session = std::make_shared<Session>(client);
  std::shared_ptr<Session> earlier;
  {
    const MutexLock guard(mutex_);
    earlier = std::exchange(current_, session);
  }
  while (true) {
    if (earlier) finish(*earlier);
    const MutexLock guard(mutex_);
    if (current_ != session) return nullptr;
    const auto busy = std::find_if(running_.begin(), running_.end(),
                                   [](const Running& running) { return !running.session->endReported(); });
    if (busy == running_.end()) {
      running_.reserve(running_.size() + 1);
      running_.push_back({session, std::thread([session, host, port] { session->run(host, port); })});
      return session;
    }
    earlier = busy->session;
  }
}

void XCTLConnection::Impl::disconnect() {
  std::shared_ptr<Session> session;
  {
    const MutexLock guard(mutex_);
    session = std::exchange(current_, nullptr);
  }
  if (session) finish(*session);
  joinEnded();
}

// Ends a session and sees to it that status 1 has been reported. On the session's own thread that is done
// here and now, since the thread cannot wait for itself. In the callback of another session the wait is for
// the report alone, so that two callbacks never wait for each other to return; elsewhere it is for the whole
// end.
void XCTLConnection::Impl::finish(Session& session) {
  bool started = false, own = false, inCallback = false;
  {
    const MutexLock guard(mutex_);
    for (const Running& running : running_) {
      const bool here = running.thread.get_id() == std::this_thread::get_id();
      const bool same = running.session.get() == &session;
      inCallback = inCallback || here;
      started = started || same;
      own = own || (here && same);
    }
  }
  session.end();
  if (own) {
    session.close();
  } else if (started) {
    session.waitEnd(inCallback);
  }
}

void XCTLConnection::Impl::joinEnded() {
  std::vector<Running> ended;
  {
    const MutexLock guard(mutex_);
    const auto first =
        std::partition(running_.begin(), running_.end(), [current = current_](const auto& running) {
          return running.session == current || !running.session->done() ||
                 running.thread.get_id() == std::this_thread::get_id();
        });
    std::move(first, running_.end(), std::back_inserter(ended));
    running_.erase(first, running_.end());
  }
  for (Running& running : ended) running.thread.join();
}

XCTLConnection::XCTLConnection(ETransport transport) : impl_(std::make_unique<Impl>(transport)) {}

XCTLConnection::~XCTLConnection() = default;

bool XCTLConnection::connect(const std::string& host, std::uint16_t port, IXCTLClient* client) {
  return done([&] {
    std::string address = host;
    const std::size_t colon = host.find(':');
    if (colon != std::string::npos && host.find(':', colon + 1) == std::string::npos) {
      const char* end = host.data() + host.size();
      const auto [stop, error] = std::from_chars(host.data() + colon + 1, end, port);
      if (error != std::errc{} || stop != end) return false;
      address.resize(colon);
    }
    return impl_->connect(address, port, client);
  });
}

void XCTLConnection::disconnect() {
  done([this] { return impl_->disconnect(), true; });
}

bool XCTLConnection::subscribe(const std::string& name) {
  return done([&] {
    const auto session = impl_->current();
    return session && session->subscribe(name);
  });
}

std::string XCTLConnection::endReason() {
  const auto session = impl_->current();
  return session ? session->endReason() : std::string();
}

bool XCTLConnection::callFunctionId(const std::string& functionId, const ParameterList& parameters) {
  return done([&] {
    const auto session = impl_->current();
    return session && session->send(tessaly::callLine(functionId, parameters));
  });
}
