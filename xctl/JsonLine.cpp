#include "xctl/JsonLine.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "xctl/WireText.h"

namespace tessaly {
namespace {

using Json = nlohmann::json;

std::string jsonText(std::string_view bytes) { return Json(wireText(bytes)).dump(); }

std::string methodStart(std::string_view method) {
  return R"({"jsonrpc":"2.0","method":")" + std::string(method) + R"(","params":{)";
}

// Picks the members that messages have out of the events of the parser, so that no tree is built: nesting,
// size and unknown members cost nothing.
class MessageReader final : public Json::json_sax_t {
 public:
  explicit MessageReader(WireMessage& message) : message_(message) {}

  [[nodiscard]] bool isMessage() const { return object_ && version_ && hasMethod_; }

  bool null() override { return scalar("null"); }
  bool boolean(bool) override { return scalar({}); }
  bool number_integer(number_integer_t number) override { return scalar(std::to_string(number)); }
  bool number_unsigned(number_unsigned_t number) override { return scalar(std::to_string(number)); }
  bool number_float(number_float_t, const string_t&) override { return scalar({}); }
  bool binary(binary_t&) override { return scalar({}); }
  bool string(string_t& text) override;
  bool key(string_t& name) override;
  bool start_object(std::size_t) override { return enter(true); }
  bool end_object() override;
  bool start_array(std::size_t) override { return enter(false); }
  bool end_array() override { return leave(); }
  bool parse_error(std::size_t, const std::string&, const Json::exception&) override { return false; }

 private:
  // Depths: 1 the message, 2 "params", 3 "parameters", 4 one of them.
  [[nodiscard]] bool inParams() const { return keys_[0] == "params"; }
  [[nodiscard]] bool inParameters() const { return inParams() && keys_[1] == "parameters"; }
  bool scalar(std::string id);
  void wrongType();
  void clearMember();
  bool enter(bool object);
  bool leave();

  WireMessage& message_;
  std::string keys_[4];  // the key at each depth; empty inside an array
  std::size_t depth_ = 0;
  bool object_ = false, version_ = false, hasMethod_ = false, badParameter_ = false;
  std::optional<std::string> itemName_, itemValue_;
};

bool MessageReader::key(string_t& name) {
  if (depth_ <= 4) keys_[depth_ - 1] = std::move(name);
  clearMember();
  return true;
}

// Of a repeated member the last one counts.
void MessageReader::clearMember() {
  if (depth_ == 1) {
    const std::string& name = keys_[0];
    if (name == "jsonrpc") version_ = false;
    if (name == "method") hasMethod_ = false;
    if (name == "id") message_.id.reset();
    if (name == "params") {
      message_.name = message_.value = message_.function = std::nullopt;
      message_.parameters.reset();
    }
  } else if (depth_ == 2 && inParams()) {
    const std::string& name = keys_[1];
    if (name == "name") message_.name.reset();
    if (name == "value") message_.value.reset();
    if (name == "function") message_.function.reset();
    if (name == "parameters") message_.parameters.reset();
  } else if (depth_ == 4 && inParameters()) {
    if (keys_[3] == "name") itemName_.reset();
    if (keys_[3] == "value") itemValue_.reset();
  }
}

bool MessageReader::string(string_t& text) {
  if (depth_ == 1) {
    const std::string& name = keys_[0];
    if (name == "jsonrpc") version_ = text == "2.0";
    if (name == "id") message_.id = jsonText(text);
    if (name == "method") {
      message_.method = std::move(text);
      hasMethod_ = true;
    }
  } else if (depth_ == 2 && inParams()) {
    const std::string& name = keys_[1];
    if (name == "name")
      message_.name = std::move(text);
    else if (name == "value")
      message_.value = std::move(text);
    else if (name == "function")
      message_.function = std::move(text);
  } else if (depth_ == 4 && inParameters()) {
    if (keys_[3] == "name")
      itemName_ = std::move(text);
    else if (keys_[3] == "value")
      itemValue_ = std::move(text);
  } else {
    wrongType();
  }
  return true;
}

bool MessageReader::scalar(std::string id) {
  if (depth_ == 1 && keys_[0] == "id" && !id.empty()) message_.id = std::move(id);
  wrongType();
  return true;
}

void MessageReader::wrongType() {
  if (depth_ == 3 && inParameters()) badParameter_ = true;
}

bool MessageReader::enter(bool object) {
  if (depth_ == 0) object_ = object;
  if (depth_ == 2 && inParameters() && !object) {
    message_.parameters.emplace();
    badParameter_ = false;
  }
  if (depth_ == 3) {
    itemName_ = itemValue_ = std::nullopt;
    if (!object) wrongType();
  }
  ++depth_;
  if (depth_ <= 4) keys_[depth_ - 1].clear();
  return depth_ <= kDeepestMessage;
}

bool MessageReader::leave() {
  --depth_;
  if (depth_ == 2 && inParameters() && badParameter_) message_.parameters.reset();
  return true;
}

bool MessageReader::end_object() {
  if (depth_ == 4 && inParameters() && message_.parameters) {
    if (itemName_ && itemValue_) {
      message_.parameters->addString(*itemName_, *itemValue_);
    } else {
      badParameter_ = true;
    }
  }
  return leave();
}

}  // namespace

LineKind parseLine(std::string_view line, WireMessage& message) {
  message = {};
  MessageReader reader(message);
  if (!Json::sax_parse(line.begin(), line.end(), &reader)) return LineKind::kBroken;
  return reader.isMessage() ? LineKind::kMessage : LineKind::kOther;
}

std::string helloLine(std::string_view panel) {
  return methodStart(kHelloMethod) + R"("panel":)" + jsonText(panel) + ",\"protocol\":1}}\n";
}

std::string valueLine(std::string_view method, std::string_view name, std::string_view value) {
  return methodStart(method) + R"("name":)" + jsonText(name) + R"(,"value":)" + jsonText(value) + "}}\n";
}

std::string subscribeLine(std::string_view name) {
  return methodStart(kSubscribeMethod) + R"("name":)" + jsonText(name) + "}}\n";
}

std::string callLine(std::string_view function, const ParameterList& parameters) {
  std::string line = methodStart(kCallMethod) + R"("function":)" + jsonText(function) + R"(,"parameters":[)";
  bool first = true;
  for (const auto& [name, value] : parameters.items()) {
    line += first ? "" : ",";
    line += R"({"name":)" + jsonText(name) + R"(,"value":)" + jsonText(value) + "}";
    first = false;
  }
  return line + "]}}\n";
}

std::string answerLine(std::string_view id) {
  return R"({"jsonrpc":"2.0","result":true,"id":)" + std::string(id) + "}\n";
}

std::string errorLine(std::string_view id, int code, std::string_view text) {
  return R"({"jsonrpc":"2.0","error":{"code":)" + std::to_string(code) + R"(,"message":)" + jsonText(text) +
         R"(},"id":)" + std::string(id) + "}\n";
}

void LineBuffer::append(std::string_view bytes) {
  bytes_.erase(0, start_);
  scanned_ -= start_;
  start_ = 0;
  bytes_.append(bytes);
}

std::optional<std::string_view> LineBuffer::next() {
  const std::size_t end = bytes_.find('\n', scanned_);
  if (end == std::string::npos) {
    scanned_ = bytes_.size();
    return std::nullopt;
  }
  std::string_view line(bytes_.data() + start_, end - start_);
  start_ = scanned_ = end + 1;
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace tessaly
