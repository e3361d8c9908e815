#include <climits>
#include <gtest/gtest.h>

#include "xctl/JsonLine.h"
#include "xctl/WireText.h"

namespace tessaly {
namespace {

std::string described(std::string_view line) {
  WireMessage message;
  message.name = message.id = "of an earlier one";
  const LineKind kind = parseLine(line, message);
  if (kind != LineKind::kMessage) return kind == LineKind::kBroken ? "broken" : "other";
  std::string text = message.method + " id:" + message.id.value_or("-");
  if (message.name) text += " name:" + *message.name;
  if (message.value) text += " value:" + *message.value;
  if (message.function) text += " function:" + *message.function;
  if (message.parameters) text += " parameters:" + message.parameters->toString();
  return text;
}

TEST(JsonLine, ReadsMessagesAndSetsWrongTypesAside) {
  const std::string start = R"({"jsonrpc":"2.0","method":"m","params":)";
  const std::string call = start + R"({"function":"F","parameters":)";
  const std::vector<std::pair<std::string, std::string>> table = {
      {start + R"({"name":"A","value":"b"}})", "m id:- name:A value:b"},
      {R"({"params":{"value":"\u00fc","name":"A"},"method":"m","id":7,"jsonrpc":"2.0"})",
       "m id:7 name:A value:ü"},
      {R"({"jsonrpc":"2.0","method":"m","id":"x\"y"})", R"(m id:"x\"y")"},
      {R"({"jsonrpc":"2.0","method":"m","id":null})", "m id:null"},
      {start + R"({"name":5,"value":["b"],"other":{"name":"x"}}})", "m id:-"},
      {start + R"({"name":"A","name":null}})", "m id:-"},
      {start + R"(["name","A"]})", "m id:-"},
      {call + R"([]},"params":{}})", "m id:-"},
      {start + R"({"name":"A","value":"b"},"params":{}})", "m id:-"},
      {R"({"jsonrpc":"2.0","method":"m","name":"A","x":{"name":"B"}})", "m id:-"},
      {call + R"([{"name":"REG","value":"007"},{"value":"","name":"NAME"}]}})",
       R"(m id:- function:F parameters:REG="007", NAME="")"},
      {call + "[]}}", "m id:- function:F parameters:"},
      {call + R"([{"name":"REG"}]}})", "m id:- function:F"},
      {call + R"([{"name":"REG","value":7}]}})", "m id:- function:F"},
      {call + R"([{"name":"REG","value":"7"},3]}})", "m id:- function:F"},
      {call + R"([[{"name":"REG","value":"7"}]]}})", "m id:- function:F"},
      {call + R"(["REG"]}})", "m id:- function:F"},
      {call + R"([{"name":"REG","name":5,"value":"7"}]}})", "m id:- function:F"},
      {call + R"([{"name":"REG","value":"7"},{"value":"8"}]}})", "m id:- function:F"},
      {start + R"({"parameters":[],"function":"F"}})", "m id:- function:F parameters:"},
      {call + R"({"name":"REG","value":"7"}}})", "m id:- function:F"},
      {R"({"jsonrpc":"1.0","method":"m"})", "other"},
      {R"({"jsonrpc":"2.0","method":1})", "other"},
      {R"({"jsonrpc":"2.0","result":true,"id":1})", "other"},
      {"[1]", "other"},
      {"7", "other"},
      {"", "broken"},
      {"{\"jsonrpc\":\"2.0\"", "broken"},
      {"{} {}", "broken"},
      {"{\"a\":\"\xfc\"}", "broken"},
      {std::string(16, '[') + std::string(16, ']'), "other"},
      {std::string(17, '[') + std::string(17, ']'), "broken"},
      {std::string(kLongestLine, '['), "broken"},
  };
  for (const auto& [line, expected] : table) EXPECT_EQ(described(line), expected) << line.substr(0, 100);
}

TEST(JsonLine, WhatIsWrittenReadsBackAsUtf8) {
  ParameterList parameters;
  parameters.addString("REG", "007");
  parameters.addString("NAME",
                       "\"Gr\xfc\xdf"
                       "e\"\n\x80");
  EXPECT_EQ(described(callLine("PANEL.X", parameters)),
            "call id:- function:PANEL.X parameters:REG=\"007\", NAME=\"\"Grüße\"\n€\"");
  EXPECT_EQ(described(valueLine(kValueMethod, "N", std::string("a\0ü", 4))),
            std::string("value id:- name:N value:a\0ü", 28));
}

// Overlong, surrogate, cut and stray bytes are no UTF-8 and so are read as Windows-1252.
TEST(JsonLine, TextsAreUtf8OrBecomeIt) {
  for (const char* bytes :
       {"a\xc3\xbc\x7f", "\xc2\x80\xdf\xbf", "\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf",
        "\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"})
    EXPECT_EQ(wireText(bytes), bytes);
  const std::pair<std::string_view, const char*> texts[] = {
      {"\xc1\xbf", "Á¿"},
      {"\xe0\x9f\xbf", "àŸ¿"},
      {"\xed\xa0\x80", "í\u00a0€"},
      {"\xf0\x8f\xbf\xbf", "ð\u008f¿¿"},
      {"\xf4\x90\x80\x80", "ô\u0090€€"},
      {"\xf5\x80\x80\x80", "õ€€€"},
      {"\xe2\x82\x41", "â‚A"},
      {"\xf0\x90\x80", "ð\u0090€"},
      {{"\xc3\xbc", 1}, "Ã"},
      {"\x80", "€"},
      {"\x7f\x80\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8a\x8b\x8c\x8d\x8e\x8f",
       "\x7f€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f"},
      {"\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9a\x9b\x9c\x9d\x9e\x9f\xa0\xff",
       "\u0090‘’“”•–—˜™š›œ\u009džŸ\u00a0ÿ"}};
  for (const auto& [bytes, text] : texts) EXPECT_EQ(wireText(bytes), text);
}

TEST(LineBuffer, GivesTheSameLinesHoweverTheStreamIsCut) {
  const std::string stream = "one\r\n\ntwo\nthree";
  for (std::size_t step = 1; step <= stream.size(); ++step) {
    LineBuffer buffer;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < stream.size(); at += step) {
      buffer.append(std::string_view(stream).substr(at, step));
      while (const auto line = buffer.next()) lines.emplace_back(*line);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "", "two"})) << step;
  }
}

TEST(ParameterValue, IntegersAreStrict) {
  for (const auto& [text, expected] : std::vector<std::pair<std::string, int>>{
           {"0", 0}, {"-1", -1}, {"007", 7}, {"2147483647", INT_MAX}, {"-2147483648", INT_MIN}}) {
    int number = 55;
    EXPECT_TRUE(ParameterValue(text).getIntValue(number)) << text;
    EXPECT_EQ(number, expected);
  }
  for (const char* text : {"", " 1", "1 ", "abc", "1.5", "0x10", "2147483648", "-2147483649", "--1"}) {
    int number = 55;
    EXPECT_FALSE(ParameterValue(text).getIntValue(number)) << text;
    EXPECT_EQ(number, 55) << text;
  }
}

}  // namespace
}  // namespace tessaly
